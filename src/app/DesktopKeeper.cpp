// SPDX-License-Identifier: MIT
#include "src/app/DesktopKeeper.h"

#include "kits/application/AppDefs.h"
#include "kits/application/Application.h"
#include "kits/application/Message.h"
#include "kits/application/Roster.h"
#include "kits/kernel/Clock.h"
#include "kits/kernel/Threads.h"
#include "src/chart/DesktopCharts.h"
#include "src/prefs/store/Autosave.h"
#include "src/support/MessageFields.h"
#include "src/support/Qel.h"

#include <string>

namespace {

constexpr bigtime_t kMinute = 60'000'000;
constexpr bigtime_t kPause = 50'000;
constexpr int kMostPauses = 100;
constexpr bigtime_t kLookInterval = 50'000;

bool IsOfTheDesktop(const BMessage& notice)
{
    return kits::kSignatureField.Get(notice) == kDesktopSignature;
}

} // namespace

DesktopKeeper::DesktopKeeper(Autosave& autosave)
    : fAutosave(autosave)
    , fTellSoon([this] { TellWhenStored(); })
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
    if (IsOfTheDesktop(notice) && MayRestart())
        Launch(true);
}

void DesktopKeeper::AppLaunched(const BMessage& notice)
{
    if (IsOfTheDesktop(notice))
        Taken(BMessage());
}

void DesktopKeeper::Taken(const BMessage& notice)
{
    for (int32 i = 0; i < kIdentityField.Count(notice); ++i)
        fTaken.Add(kIdentityField.Get(notice, i));
    BMessenger source;
    if (kMessengerField.Find(notice, &source) && fSources.size() < ChartShelf::kMostTaken)
        fSources.push_back(source);
    if (fTaken.All().empty() && fSources.empty())
        return;
    fAutosave.Save();
    fTellSoon.Start(kLookInterval);
}

void DesktopKeeper::TellWhenStored()
{
    if (!fAutosave.HasWrittenAll())
        return;
    fTellSoon.Stop();
    for (const BMessenger& source : fSources)
        source.SendMessage(B_REPLICANT_TAKEN);
    fSources.clear();
    const BMessenger desktop(kDesktopSignature);
    BMessage taken(B_REPLICANT_TAKEN);
    for (const std::string& identity : fTaken.All())
        kIdentityField.Add(&taken, identity);
    desktop.SendMessage(&taken);
}

bool DesktopKeeper::MayRestart()
{
    const bigtime_t now = system_time();
    while (!fRestarts.empty() && fRestarts.front() + kMinute < now)
        fRestarts.pop_front();
    if (fRestarts.size() >= kMostRestarts)
        return false;
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
        be_roster->StartWatching(be_app_messenger, B_REQUEST_DIED | B_REQUEST_LAUNCHED);
        // A host that has started just before is not reported.
        be_app_messenger.SendMessage(B_REPLICANT_TAKEN);
    }
    // A process closes its connections before it is gone. One that stays has only given up a connection.
    for (int i = 0; again && i < kMostPauses && be_roster->IsRunning(kDesktopSignature); ++i)
        snooze(kPause);
    if (!be_roster->IsRunning(kDesktopSignature) && HasDesktopCharts())
        be_roster->Launch(kDesktopSignature);
}
