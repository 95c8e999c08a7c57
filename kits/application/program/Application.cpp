// SPDX-License-Identifier: MIT
#include "kits/application/Application.h"

#include "kits/application/EventLoop.h"
#include "kits/application/Field.h"
#include "kits/application/InterfaceLock.h"
#include "kits/application/Timer.h"
#include "kits/application/delivery/MainThreadPrivate.h"
#include "kits/application/delivery/PostOffice.h"
#include "kits/application/teams/Launch.h"
#include "kits/application/teams/TeamPort.h"
#include "kits/kernel/Bounds.h"
#include "kits/kernel/Clock.h"
#include "kits/kernel/Threads.h"
#include "kits/storage/Resources.h"

#include <cstdlib>

using kits::PostOffice;

BApplication* be_app = nullptr;
BMessenger be_app_messenger;

namespace {

constexpr bigtime_t kLongestWaitForLaunch = 30000000;
constexpr bigtime_t kLongestWaitForAnswer = 5000000;
/// How long to wait for another start that ends to release the lock: it may first have to wait for its user's answer.
constexpr bigtime_t kLongestWaitForOthers = kits::bounds::kLongestWaitToQuit;
constexpr bigtime_t kPauseForTheEnd = 20000;
constexpr bigtime_t kPauseForTheUser = 100000;

// The fields of B_SILENT_RELAUNCH and of its answer.
const kits::Field<bool> kOnlyAsksField("only_asks");
const kits::Field<bool> kIsReadyField("is_ready", true);

constexpr const char* kDisplayVariables[] = {"WAYLAND_DISPLAY", "DISPLAY"};

/// Held from the end of a single-launch application until its process has written its last files: another start waits
/// for that.
kits::LaunchLock sEnding;

/// Returns the display in an environment variable; empty for none. All screens of an X server are one display.
std::string DisplayIn(const char* variable)
{
    const char* name = getenv(variable);
    const std::string display = name != nullptr ? name : "";
    const size_t screen = display.find('.', display.rfind(':'));
    return variable == std::string("DISPLAY") ? display.substr(0, screen) : display;
}

void AddDisplays(BMessage* message)
{
    for (const char* variable : kDisplayVariables)
        message->AddString(variable, DisplayIn(variable));
}

/// Returns the display of the sender, if this process uses none of the sender's displays.
std::string OtherDisplayIn(const BMessage& message)
{
    std::string other;
    for (const char* variable : kDisplayVariables) {
        std::string display;
        if (message.FindString(variable, &display) != B_OK || display.empty())
            continue;
        if (display == DisplayIn(variable))
            return {};
        if (other.empty())
            other = display;
    }
    return other;
}

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
        PostOffice::Get().SetApplication(Token(), fSignature);
        // From here on messages reach other teams.
        kits::TeamPort::Get();
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
        bigtime_t end = system_time() + kLongestWaitForLaunch;
        status_t status;
        bool isTold = false;
        do {
            // The process that has started this program holds the lock for it.
            if (!grant.isLaunched)
                lock.Take(folder, fSignature, kLongestWaitForLaunch);
            status = TellRunning(isTold);
            if (status == B_ALREADY_RUNNING || status == B_TIMED_OUT)
                return status;
            // The other start is ending and needs the lock for that, or its user thinks about an answer and may end it.
            if (status != B_OK)
                lock = kits::LaunchLock();
            if (status == B_BAD_HANDLER) {
                snooze(kPauseForTheEnd);
            } else if (status == B_BUSY) {
                isTold = true;
                snooze(kPauseForTheUser);
                end = system_time() + kLongestWaitForLaunch;
            }
        } while (status != B_OK && system_time() < end);
        if (status != B_OK)
            return B_TIMED_OUT;
    }
    fPresence = presence;
    kits::TeamPort::Get().SetSignature(fSignature);
    return B_OK;
}

status_t BApplication::TellRunning(bool onlyAsks)
{
    const BMessenger running(fSignature.c_str());
    if (!running.IsValid())
        return B_OK;
    BMessage again(B_SILENT_RELAUNCH);
    kOnlyAsksField.Add(&again, onlyAsks);
    BMessage reply;
    const status_t status = running.SendMessage(&again, &reply, kLongestWaitForAnswer, kLongestWaitForAnswer);
    if (status == B_TIMED_OUT || status == B_WOULD_BLOCK)
        return B_TIMED_OUT;
    // A program that is ending does not answer.
    if (status != B_OK || reply.what != B_REPLY)
        return B_BAD_HANDLER;
    fOtherDisplay = OtherDisplayIn(reply);
    return kIsReadyField.Get(reply) || !fOtherDisplay.empty() ? B_ALREADY_RUNNING : B_BUSY;
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
        // The port closes first; otherwise other teams could queue work while the leftover actions run.
        const kits::TeamPort::Shutter shutter;
        kits::RunLeftOverActions();
        for (const kits::token_t token : PostOffice::Get().RunningLoopers()) {
            BLooper* looper = PostOffice::Get().LooperAt(token);
            // Destroying one looper may destroy another.
            if (looper != nullptr)
                looper->Quit();
        }
        kits::RunLeftOverActions();
        kits::TakeQuitSignal(); // the quit was meant for this application
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
    // Repeated below: getting ready starts threads, and may show windows before it ends.
    kits::KeepQuitSignals();

    for (size_t i = 0; i < fLaunchMessages.size(); ++i)
        DeliverNow(std::move(fLaunchMessages[i]), this);
    fIsLaunched = true;
    fLaunchMessages.clear();
    DeliverNow(std::make_unique<BMessage>(B_READY_TO_RUN), this);
    fIsReady = true;
    kits::KeepQuitSignals();
    BLooper::Run();
    kits::EventLoop::Current().Run();
    return Thread();
}

void BApplication::Quit()
{
    // It handles no message after the one that ended it.
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

bool BApplication::IsAboutToEnd() const
{
    return kits::IsQuitSignalWaiting() || IsQuitRequestWaiting();
}

void BApplication::ReadyToRun() {}

void BApplication::AboutRequested() {}

void BApplication::Pulse() {}

bigtime_t BApplication::PulseRate() const
{
    return fPulse->IsRunning() ? fPulse->Interval() : 0;
}

void BApplication::SetPulseRate(bigtime_t rate)
{
    const kits::InterfaceLocker locker;
    if (rate > 0)
        fPulse->Start(rate);
    else
        fPulse->Stop();
}

void BApplication::DispatchMessage(BMessage* message, BHandler* handler)
{
    if (handler != this) {
        BLooper::DispatchMessage(message, handler);
        return;
    }
    switch (message->what) {
    case B_READY_TO_RUN:
        // From anyone but Run this would be a second call.
        if (!message->WasDelivered())
            ReadyToRun();
        break;
    case B_ABOUT_REQUESTED:
        AboutRequested();
        break;
    case B_PULSE:
        Pulse();
        break;
    case B_SILENT_RELAUNCH: {
        // Without an answer, the other start waits for the end of this process.
        if (IsAboutToEnd())
            break;
        if (!kOnlyAsksField.Get(*message))
            BLooper::DispatchMessage(message, handler);
        BMessage reply(B_REPLY);
        AddDisplays(&reply);
        kIsReadyField.Add(&reply, fIsReady);
        message->SendReply(&reply);
        break;
    }
    default:
        BLooper::DispatchMessage(message, handler);
    }
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
