// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Looper.h"
#include "kits/application/Roster.h"

#include <memory>

class BResources;

namespace kits {

class Timer;

/// Whether other processes of the user find an application, by its signature.
enum class Presence {
    kHidden, ///< they do not
    kListed, ///< they do
    kSingle  ///< they do, and there is one at a time: the next one starts when the process of the one before has ended
};

} // namespace kits

/// The application: the looper of the process. One at a time, made on the main thread, which from here on holds the
/// interface lock but while it waits in the event loop.
///
/// Its life: made; Run(), which handles launch messages, then calls ReadyToRun(), then handles messages until Quit();
/// destroyed, with all loopers that are left. Messages that are posted before Run() wait until ReadyToRun() has
/// returned.
class BApplication : public BLooper {
public:
    /// @param mimeType  its signature: "application/x-vnd." and a name
    /// @param error     when not null, gets what InitCheck returns
    /// @param presence  a kSingle that runs already gets B_SILENT_RELAUNCH, and InitCheck is `B_ALREADY_RUNNING`: this
    ///                  process should then end, as if all were well, unless OtherDisplay() says that the user sees
    ///                  nothing of that here. One that ends is waited for, half a minute at most. While the other one
    ///                  asks its user something before its Run(), the constructor waits, and takes its place when it
    ///                  ends there. One that neither answers for five seconds nor ends gives `B_TIMED_OUT`. Where other
    ///                  processes cannot be reached (see BRoster::FindObstacle) it is hidden all the same.
    explicit BApplication(const char* mimeType, status_t* error = nullptr,
                          kits::Presence presence = kits::Presence::kHidden);
    /// Ends what is left: quits every looper that has run, and runs what waits to be run on the main thread. Needs no
    /// loop any more. Loopers that are not on the heap have to go before.
    ~BApplication() override;

    /// `B_OK`; `B_BAD_VALUE` for a signature that is none, `B_NOT_ALLOWED` if this process has an application already,
    /// `B_ALREADY_RUNNING` if another one has it that is to be the only one, `B_TIMED_OUT` if that one hangs.
    status_t InitCheck() const { return fInitStatus; }
    /// With `B_ALREADY_RUNNING`: the name of the display that the running one was started on, when this process was
    /// started on another one; else empty.
    const std::string& OtherDisplay() const { return fOtherDisplay; }
    const char* Signature() const { return fSignature.c_str(); }

    /// Runs the application on the calling (the main) thread; returns when it has quit. SIGTERM, SIGINT and SIGHUP post
    /// B_QUIT_REQUESTED to it from now on, also after this returned: then without effect, so that what is written at
    /// the end is written.
    /// @return the main thread's id, or `B_NO_INIT`, `B_ALREADY_RUNNING`
    thread_id Run() override;
    /// Makes Run() return, when the outermost loop is reached; does not delete the application. It gets no more
    /// messages, cannot be locked, and is not found any more.
    void Quit() override;
    /// Asks every other looper that runs by its QuitRequested(), and quits it; the first that refuses ends this, and
    /// it is refused.
    bool QuitRequested() override;

    /// Asked when another start of a kSingle application has found this one. If true, the other one waits for the end
    /// of this process and goes on then; it is not told that it runs already, and this one gets no B_SILENT_RELAUNCH.
    /// @return here, whether a signal or message that asks it to quit waits to be handled
    virtual bool IsAboutToEnd() const;

    /// The launch messages have been handled.
    virtual void ReadyToRun();
    /// B_ABOUT_REQUESTED has come.
    virtual void AboutRequested();
    /// B_ARGV_RECEIVED has come: the arguments of a start, the first being the program.
    virtual void ArgvReceived(int32 argc, char** argv);
    /// Called at the pulse rate (see kits::Timer), but not before ReadyToRun() has returned.
    virtual void Pulse();
    /// @param rate  microseconds between pulses; 0 or less: none, as at the beginning
    void SetPulseRate(bigtime_t rate);
    bigtime_t PulseRate() const;

    void DispatchMessage(BMessage* message, BHandler* handler) override;

    status_t GetAppInfo(app_info* info) const;
    /// The resources of the executable. Never null.
    static BResources* AppResources();

    /// For the kits: handed to the application before ReadyToRun(), in the order of the calls. Has no effect after
    /// that.
    void AddLaunchMessage(std::unique_ptr<BMessage> message);

private:
    void HandleArguments(const BMessage& message);
    status_t MakePresent(kits::Presence presence);
    /// That the user wants it again, or only asks it how far it is.
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

/// The application of this process; null while there is none.
extern BApplication* be_app;
/// The same as a messenger: for threads that may outlive the application.
extern BMessenger be_app_messenger;
