// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Application.h"
#include "kits/application/Message.h"
#include "kits/kernel/Bounds.h"
#include "kits/support/Identity.h"
#include "src/prefs/store/Autosave.h"
#include "src/prefs/store/Preferences.h"
#include "src/sampling/ThreadMagic.h"

#include <memory>
#include <string>
#include <vector>

class BView;
class ReplicantWindow;

/// The program that shows charts on the desktop. There is one in a session, as long as there is something to show.
///
/// What it shows is kept in a store of its own, "Replicant" messages with each view's archive and places, which is
/// written within five seconds of a change. While there is something to show an autostart entry starts it with the
/// session.
///
/// Message: MSG_SHOW_ON_DESKTOP ("Archive" message, perhaps "Where" point, the left top corner on the screen): shows
/// another one. The reply's code is 0; 0xffffffff when that is none of a view that may stand on the desktop, or there
/// are too many. It comes from other programs and may be anything. One with an identity ("Request", string) that was
/// performed already, by this process or by one before it, is answered and not performed again: who gets no answer may
/// send it as often as need be. The last kMostRequests of them are stored with the charts.
///
/// Message: B_REPLICANT_TAKEN (any number of "Identity", strings): takes those that have one of them off the desktop.
/// The application sends it when it has stored what it has taken, and again whenever one of the two has started.
class DesktopApp : public BApplication {
public:
    /// More are not shown.
    static constexpr size_t kMost = kits::bounds::kMostReplicants;
    /// Nor when all of them together would be larger than this, in bytes: what is stored is one message.
    static constexpr ssize_t kMostBytes = kits::bounds::kMostArchives;

    static constexpr size_t kMostRequests = kits::bounds::kMostRequests;

    /// @param status  as BApplication's: B_ALREADY_RUNNING when there is one in this session
    explicit DesktopApp(status_t* status);
    ~DesktopApp() override;

    /// Shows what the store holds; before Run().
    void Restore();

    /// Ends when there is nothing to show, and nothing to be told of the store.
    void ReadyToRun() override;
    void MessageReceived(BMessage* message) override;
    /// Keeps everything, then ends. When the key for it was pressed the application is asked to quit instead, and the
    /// charts stay: a window of this program does not look like one of another program's.
    bool QuitRequested() override;

    /// Takes a window off the desktop, for good.
    void Remove(ReplicantWindow* window);
    /// Gives the keyboard to the window that was shown after this one, or before it.
    void ActivateNext(const ReplicantWindow* window, bool back);

    size_t CountReplicants() const { return fWindows.size(); }
    ReplicantWindow* ReplicantAt(size_t index) const { return fWindows[index]; }

    /// Something changed: it is saved in a moment.
    void Changed();
    /// Waits until everything is written. A failure is said on stderr, in one line; that of the autostart entry only if
    /// the charts could be saved.
    /// @return why the charts could not be saved
    status_t Drain();

    Preferences* Store() { return &fStore; }

private:
    status_t Archive();
    bool Add(BMessage* request, std::string* why);
    bool Perform(BMessage* request);
    void RemoveTaken(const BMessage& notice);
    void Show(std::unique_ptr<BView> view, BRect frame, const BMessage* places);
    void RestoreOne(BMessage* saved);
    void UpdateAutostart();
    void FinishAutostart();
    bool IsEmpty() const { return fWindows.empty() && fForeign.empty(); }

    struct AutostartJob {
        bool enable = false;
        status_t status = B_OK;
    };
    static void WriteAutostart(AutostartJob* job);
    void PrintAutostartError() const;

    Preferences fStore;
    std::vector<ReplicantWindow*> fWindows;          // each deletes itself
    kits::Identities fDone{kMostRequests};           // what was asked for and is shown, or was
    std::vector<BMessage> fForeign;                  // what a newer version may have stored; kept as it is
    ssize_t fBytes = 0;                              // of what is stored, about
    AutostartJob fAutostartJob;                      // the last one; the thread's while that is at work
    std::unique_ptr<FireAndForgetThread> fAutostart; // at work on the entry, or done
    Autosave fAutosave;
    bool fHasTold = false; // that there are too many
    bool fIsEnding = false;
};
