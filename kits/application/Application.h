// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Looper.h"
#include "kits/application/Roster.h"

#include <memory>

class BResources;

namespace kits {

class Timer;

/// How other processes of the user find an application by its signature.
enum class Presence {
    kHidden, ///< not at all
    kListed, ///< through BRoster and BMessenger
    kSingle  ///< the same, one at a time: the next one starts when the process of the previous one has ended
};

} // namespace kits

/// The application: the looper of the process. One at a time, made on the main thread, which from then on holds the
/// interface lock except while it waits in the event loop.
///
/// Run() handles the launch messages, calls ReadyToRun(), and handles messages until Quit(). The
/// destructor ends all remaining loopers. Messages posted before Run() wait until ReadyToRun() has
/// returned.
class BApplication : public BLooper {
public:
    /// @param mimeType  its signature: "application/x-vnd." and a name
    /// @param error     when not null, gets what InitCheck returns
    /// @param presence  if a kSingle runs already, it gets B_SILENT_RELAUNCH, and InitCheck is `B_ALREADY_RUNNING`:
    ///                  this process should then end with success, unless OtherDisplay() tells that the user cannot see
    ///                  the other one. The constructor waits for one that is ending, half a minute at most, or that
    ///                  asks its user something before its Run(), and takes its place. One that neither answers for
    ///                  five seconds nor ends gives `B_TIMED_OUT`. Where other processes cannot be reached (see
    ///                  BRoster::FindObstacle) the application is hidden.
    explicit BApplication(const char* mimeType, status_t* error = nullptr,
                          kits::Presence presence = kits::Presence::kHidden);
    /// Quits every looper that still runs, and runs the actions that wait for the main thread. Needs no event loop.
    /// Destroy loopers that are not on the heap before.
    ~BApplication() override;

    /// `B_OK`; `B_BAD_VALUE` for an invalid signature, `B_NOT_ALLOWED` if this process already has an application,
    /// `B_ALREADY_RUNNING` if a kSingle one runs in another process, `B_TIMED_OUT` if that one hangs.
    status_t InitCheck() const { return fInitStatus; }
    /// With `B_ALREADY_RUNNING`: the name of the display on which the running application was started, if this process
    /// was started on another one; otherwise empty.
    const std::string& OtherDisplay() const { return fOtherDisplay; }
    const char* Signature() const { return fSignature.c_str(); }

    /// Runs the application on the calling (the main) thread; returns when it has quit. From now on SIGTERM, SIGINT and
    /// SIGHUP post B_QUIT_REQUESTED to it; after this has returned they do nothing, so that the program finishes its
    /// last writes.
    /// @return the main thread's id, or `B_NO_INIT`, `B_ALREADY_RUNNING`
    thread_id Run() override;
    /// Makes Run() return when the outermost loop is reached; does not delete the application. From now on it gets no
    /// messages, and can neither be locked nor found.
    void Quit() override;
    /// Calls QuitRequested() of every other running looper, and quits it if it agrees.
    /// @return false if one refused; those after it are not asked
    bool QuitRequested() override;

    /// Called when another start of a kSingle application has found this one. If true, the other one waits for the end
    /// of this process and then continues, and this one gets no B_SILENT_RELAUNCH.
    /// @return this implementation: true if a signal or message that asks it to quit waits to be handled
    virtual bool IsAboutToEnd() const;

    /// Hook: the launch messages have been handled.
    virtual void ReadyToRun();
    /// Handles B_ABOUT_REQUESTED.
    virtual void AboutRequested();
    /// Called at the pulse rate (see kits::Timer), but not before ReadyToRun() has returned.
    virtual void Pulse();
    /// @param rate  microseconds between pulses; 0 or less: none, as initially
    void SetPulseRate(bigtime_t rate);
    /// For tests, which look at the application through it.
    bigtime_t PulseRate() const;

    void DispatchMessage(BMessage* message, BHandler* handler) override;

    status_t GetAppInfo(app_info* info) const;
    /// Returns the resources of the executable; never null.
    static BResources* AppResources();

    /// For the kits: adds a message that the application handles before ReadyToRun(), in the order of the calls. Has no
    /// effect after that.
    void AddLaunchMessage(std::unique_ptr<BMessage> message);

private:
    status_t MakePresent(kits::Presence presence);
    /// Tells the running application that it was started again, or only asks for its state.
    /// @return `B_OK` if there is none, `B_BAD_HANDLER` if it is about to end, `B_BUSY` if it does not run yet
    status_t TellRunning(bool onlyAsks);
    void EndPresence();

    const std::string fSignature;
    status_t fInitStatus;
    std::string fOtherDisplay;
    kits::Presence fPresence = kits::Presence::kHidden; ///< at this moment
    bool fHasRun = false;
    bool fIsLaunched = false; ///< the launch messages have been handled
    bool fIsReady = false;    ///< ReadyToRun has returned
    std::vector<std::unique_ptr<BMessage>> fLaunchMessages;
    std::unique_ptr<kits::Timer> fPulse;
};

/// The application of this process, or null.
extern BApplication* be_app;
/// The same as a messenger, for threads that may outlive the application.
extern BMessenger be_app_messenger;
