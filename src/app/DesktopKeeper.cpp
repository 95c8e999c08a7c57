#include "src/app/DesktopKeeper.h"

#include "kits/application/AppDeath.h"
#include "kits/application/Application.h"
#include "kits/application/Message.h"
#include "kits/application/Roster.h"
#include "kits/kernel/Clock.h"
#include "kits/kernel/Threads.h"
#include "src/chart/DesktopCharts.h"
#include "src/support/Qel.h"

#include <string>

namespace {

constexpr bigtime_t kMinute = 60'000'000;
constexpr bigtime_t kPause = 50'000;
constexpr int kMostPauses = 100;

} // namespace

DesktopKeeper::DesktopKeeper()
{
    Launch(false);
}

DesktopKeeper::~DesktopKeeper()
{
    fThread.reset();
    be_roster->StopWatching(be_app_messenger);
}

void DesktopKeeper::AppDied(const BMessage& notice)
{
    const char* name = nullptr;
    if (notice.FindString("signature", &name) == B_OK && std::string(name) == kDesktopSignature && MayRestart()) {
        Launch(true);
    }
}

bool DesktopKeeper::MayRestart()
{
    const bigtime_t now = system_time();
    while (!fRestarts.empty() && fRestarts.front() + kMinute < now) {
        fRestarts.pop_front();
    }
    if (fRestarts.size() >= kMostRestarts) {
        return false;
    }
    fRestarts.push_back(now);
    return true;
}

void DesktopKeeper::Launch(bool again)
{
    fThread.reset();
    fThread = FireAndForgetThread::Launch(std::make_unique<OneParamFunctionObject<bool>>(Start, again),
                                          "Charts on the desktop", B_NORMAL_PRIORITY);
}

void DesktopKeeper::Start(bool again)
{
    if (!again) {
        be_roster->StartWatching(be_app_messenger, B_REQUEST_DIED);
    }
    // Its connections end before the process is gone. One that stays has only given up a connection.
    for (int i = 0; again && i < kMostPauses && be_roster->IsRunning(kDesktopSignature); ++i) {
        snooze(kPause);
    }
    if (!be_roster->IsRunning(kDesktopSignature) && HasDesktopCharts()) {
        be_roster->Launch(kDesktopSignature);
    }
}
