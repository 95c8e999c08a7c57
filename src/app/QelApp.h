// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Application.h"
#include "kits/application/Field.h"
#include "src/app/Uptimes.h"

#include <memory>

class AboutWindow;
class Autosave;
class DesktopKeeper;
class SmartWindow;
class Sysinfo;

// Fields of the user's store, besides the sampler's settings.

inline const kits::Field<BMessage> kMainWindowField("MainWindow");
inline const kits::Field<BMessage> kGlobalPrefsWindowField("GlobalPrefsWindow");
inline const kits::Field<bool> kWindowOpenField("CWOpen");

/// In B_QUIT_REQUESTED: the request was sent again, behind all waiting messages.
inline const kits::Field<bool> kLastRequestField("LastRequest");

/// The application: owns the sampler and the windows, keeps the table of uptimes, and serves samples to charts in its
/// window and in other processes.
///
/// Everything here runs on the main thread, under the interface lock.
///
/// Messages besides the platform's:
/// - `MSG_SET_DELAY` ("Delay" int64, microseconds) and `MSG_SET_NODES_TO_KEEP` ("NodesToKeep" int16, at least 2):
///   change the sampler; ignored without their field or with an unusable value.
/// - `MSG_LAUNCHED_BY_REPLICANT`, before `ReadyToRun`: the window starts minimised.
/// - `MSG_CONNECT`, `MSG_DISCONNECT` ("Messenger"): the messenger gets samples, or no longer gets them, see
///   ConnectionRequest.h.
/// - `B_SILENT_RELAUNCH`, from a second start of the program: brings the main window to the current workspace and to
///   the front, and an open alert in front of it; the alert even if there is no window yet.
/// - `B_SOME_APP_DIED`: restarts the program that shows charts on the desktop, if that has died.
/// - `B_SOME_APP_LAUNCHED`, `B_REPLICANT_TAKEN`: tells that program which of its charts the window has, see
///   DesktopKeeper.
/// - `MSG_OPEN_GLOBAL_PREFS`: opens the sampler's preferences, or brings them to the front.
/// - `MSG_WINDOW_CLOSED`: stores the window's archive; that of the main window also quits the application.
class QelApp : public BApplication {
public:
    /// How the program runs.
    enum class Mode {
        kSession, ///< the user's arrangement is stored
        kPicture, ///< only for a picture of the window: nothing is stored
    };

    /// Makes the executable's folder the working directory. Other processes can find a session, and there is one at a
    /// time: InitCheck() is `B_ALREADY_RUNNING` for a second one, which should end.
    explicit QelApp(Mode mode = Mode::kSession);

    /// Puts the windows' archives into the user's store; does not write that.
    ~QelApp() override;

    void ReadyToRun() override;
    void MessageReceived(BMessage* message) override;
    /// Every ten minutes: saves the uptimes and all changes.
    void Pulse() override;
    /// Shows the about window, or brings it to the front.
    void AboutRequested() override;
    /// Also true once the main window has closed: the request to quit is on its way then.
    bool IsAboutToEnd() const override;
    /// Cleans up; never refuses, but first lets messages that were sent before be handled.
    bool QuitRequested() override;

    /// Ends the sampler, then archives and closes the windows, then removes the temporary files of the about window.
    void CleanUp();

    /// Updates the table in memory; does nothing while the clock is plainly wrong.
    void UpdateUptimes();
    /// Updates the common store too; does nothing while the clock is plainly wrong.
    void SaveUptimes();

    const UptimeTable& Uptimes() const { return fUptimes; }
    /// `system_time()` at the construction of the application object.
    bigtime_t StartTime() const { return fStartTime; }
    /// Null before `ReadyToRun` and after `CleanUp`.
    Sysinfo* Sampler() const { return fSampler.get(); }
    /// The main window, or null.
    SmartWindow* Window() const { return fMainWindow; }
    /// The preferences of the sampler; null while they are not open.
    SmartWindow* PreferencesWindow() const { return fPrefsWindow; }

    /// Puts everything that the windows and the sampler would store at the end into the user's store; does not write
    /// that.
    /// @return the first error
    status_t StoreArrangement();

private:
    void WindowClosed(BMessage* message);
    void BringToFront();
    void OpenMainWindow();
    void OpenPrefsWindow();
    static void Close(SmartWindow* window, BMessage* archive);

    Mode fMode;
    AboutWindow* fAboutWindow = nullptr; // clears this itself
    SmartWindow* fMainWindow = nullptr;  // clears this itself
    SmartWindow* fPrefsWindow = nullptr; // clears this itself
    bigtime_t fStartTime;
    std::unique_ptr<Sysinfo> fSampler;
    UptimeTable fUptimes;
    BMessage fPrefsWindowArchive;
    BMessage fMainWindowArchive;
    bool fShowMainWindow = true;
    std::unique_ptr<Autosave> fAutosave;
    std::unique_ptr<DesktopKeeper> fDesktopKeeper; // of a running session
};
