#include "kits/application/Application.h"

#include "kits/application/EventLoop.h"
#include "kits/application/InterfaceLock.h"
#include "kits/application/MainThreadPrivate.h"
#include "kits/application/Message.h"
#include "kits/application/Timer.h"
#include "kits/application/delivery/PostOffice.h"
#include "kits/application/teams/Launch.h"
#include "kits/application/teams/TeamPort.h"
#include "kits/storage/Resources.h"

using kits::PostOffice;

BApplication* be_app = nullptr;
BMessenger be_app_messenger;

namespace {

constexpr bigtime_t kLongestWaitForLaunch = 30000000;
constexpr bigtime_t kLongestWaitForOthers = 1000000;

/// Held from the end of an application that is single until its process has written what it writes at its end: who
/// starts it again waits for that.
kits::LaunchLock sEnding;

} // namespace

BApplication::BApplication(const char* mimeType, status_t* error, kits::Presence presence)
    : BLooper(mimeType)
    , fSignature(mimeType != nullptr ? mimeType : "")
    , fInitStatus(be_app != nullptr                           ? B_NOT_ALLOWED
                  : kits::TeamFolder::IsSignature(fSignature) ? B_OK
                                                              : B_BAD_VALUE)
    , fPulse(std::make_unique<kits::Timer>([this] {
        if (fIsReady)
            DeliverNow(std::make_unique<BMessage>(B_PULSE), this);
    }))
{
    kits::InterfaceLock::Get().Lock();
    if (be_app == nullptr) {
        be_app = this;
        be_app_messenger = BMessenger(this);
        PostOffice::Get().SetApplication(Token());
    }
    if (fInitStatus == B_OK && presence != kits::Presence::kHidden)
        fInitStatus = MakePresent(presence);
    if (error != nullptr)
        *error = fInitStatus;
}

status_t BApplication::MakePresent(kits::Presence presence)
{
    kits::LaunchGrant grant = kits::TakeLaunchGrant();
    AddLaunchMessage(std::move(grant.message));
    sEnding = kits::LaunchLock();
    kits::TeamFolder folder;
    kits::LaunchLock lock;
    if (presence == kits::Presence::kSingle && folder.Open() == B_OK) {
        // Whoever has started this program has the lock for it.
        if (!grant.isLaunched)
            lock.Take(folder, fSignature, kLongestWaitForLaunch);
        const BMessenger running(fSignature.c_str());
        if (running.IsValid() && running.SendMessage(B_SILENT_RELAUNCH) == B_OK)
            return B_ALREADY_RUNNING;
    }
    fPresence = presence;
    kits::TeamPort::Get().SetSignature(fSignature);
    return B_OK;
}

void BApplication::EndPresence()
{
    if (fPresence == kits::Presence::kSingle) {
        kits::TeamFolder folder;
        if (folder.Open() == B_OK)
            sEnding.Take(folder, fSignature, kLongestWaitForOthers);
    }
    if (fPresence != kits::Presence::kHidden)
        kits::TeamPort::Get().SetSignature("");
    fPresence = kits::Presence::kHidden;
}

BApplication::~BApplication()
{
    fPulse = nullptr;
    PostOffice::Get().Close(Token());
    if (be_app == this) {
        EndPresence();
        kits::RunLeftOverActions();
        for (const kits::token_t token : PostOffice::Get().RunningLoopers()) {
            BLooper* looper = PostOffice::Get().LooperAt(token);
            // One may have taken another with it.
            if (looper != nullptr)
                looper->Quit();
        }
        kits::RunLeftOverActions();
        kits::TakeQuitSignal(); // was meant for this one
        kits::TeamPort::Get().Close();
        PostOffice::Get().SetApplication(0);
        be_app = nullptr;
    }
    kits::InterfaceLock::Get().Unlock();
}

thread_id BApplication::Run()
{
    if (fInitStatus != B_OK)
        return B_NO_INIT;
    if (fHasRun)
        return B_ALREADY_RUNNING;
    fHasRun = true;
    kits::InstallQuitSignals();

    for (size_t i = 0; i < fLaunchMessages.size(); ++i)
        DeliverNow(std::move(fLaunchMessages[i]), this);
    fIsLaunched = true;
    fLaunchMessages.clear();
    DeliverNow(std::make_unique<BMessage>(B_READY_TO_RUN), this);
    fIsReady = true;
    BLooper::Run();
    kits::EventLoop::Current().Run();
    return Thread();
}

void BApplication::Quit()
{
    // It handles no message that comes behind the one that ended it.
    if (PostOffice::Get().Close(Token())) {
        EndPresence();
        kits::RunAtOutermostLoop([] { kits::EventLoop::Current().Quit(); });
    }
}

bool BApplication::QuitRequested()
{
    for (const kits::token_t token : PostOffice::Get().RunningLoopers()) {
        BLooper* looper = PostOffice::Get().LooperAt(token);
        if (looper == nullptr || looper == this || !PostOffice::Get().IsOpen(token))
            continue;
        if (!looper->QuitRequested())
            return false;
        looper->Quit();
    }
    return true;
}

void BApplication::ReadyToRun() {}

void BApplication::AboutRequested() {}

void BApplication::ArgvReceived(int32, char**) {}

void BApplication::Pulse() {}

void BApplication::SetPulseRate(bigtime_t rate)
{
    const kits::InterfaceLocker locker;
    if (rate > 0)
        fPulse->Start(rate);
    else
        fPulse->Stop();
}

bigtime_t BApplication::PulseRate() const
{
    const kits::InterfaceLocker locker;
    return fPulse->IsRunning() ? fPulse->Interval() : 0;
}

void BApplication::DispatchMessage(BMessage* message, BHandler* handler)
{
    if (handler != this) {
        BLooper::DispatchMessage(message, handler);
        return;
    }
    switch (message->what) {
    case B_READY_TO_RUN:
        // From anyone but Run it would be a second time.
        if (!message->WasDelivered())
            ReadyToRun();
        break;
    case B_ABOUT_REQUESTED:
        AboutRequested();
        break;
    case B_PULSE:
        Pulse();
        break;
    case B_ARGV_RECEIVED:
        HandleArguments(*message);
        break;
    default:
        BLooper::DispatchMessage(message, handler);
    }
}

void BApplication::HandleArguments(const BMessage& message)
{
    std::vector<std::string> texts;
    std::string text;
    while (message.FindString("argv", static_cast<int32>(texts.size()), &text) == B_OK)
        texts.push_back(text);
    if (texts.empty())
        return;
    std::vector<char*> arguments;
    for (std::string& argument : texts)
        arguments.push_back(argument.data());
    arguments.push_back(nullptr);
    ArgvReceived(static_cast<int32>(texts.size()), arguments.data());
}

status_t BApplication::GetAppInfo(app_info* info) const
{
    return be_roster->GetRunningAppInfo(kits::TeamIdOf(kits::ThisTeam()), info);
}

BResources* BApplication::AppResources()
{
    static BResources sResources;
    return &sResources;
}

void BApplication::AddLaunchMessage(std::unique_ptr<BMessage> message)
{
    if (!fIsLaunched && message != nullptr)
        fLaunchMessages.push_back(std::move(message));
}
