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
/// It keeps what it shows in a store of its own, as "Replicant" messages with each view's archive and places, and
/// writes the store within five seconds of a change. While there is something to show, an autostart entry starts it
/// with the session.
///
/// Message: MSG_SHOW_ON_DESKTOP ("Archive" message, optionally "Where" point, the top left corner on the screen): shows
/// another one. The reply's code is 0, or 0xffffffff if the archive is not of a view that may stand on the desktop, or
/// there are too many. The message comes from other programs and may contain anything. A request with an identity
/// ("Request", string) that was already performed, by this process or an earlier one, is answered and not performed
/// again: a sender that gets no answer may send it as often as necessary. The last kMostRequests identities are stored
/// with the charts.
///
/// Message: B_REPLICANT_TAKEN (any number of "Identity", strings): takes the charts with these identities off the
/// desktop. The application sends it when it has stored what it has taken, and again whenever one of the two has
/// started.
class DesktopApp : public BApplication {
public:
    /// The most charts that are shown.
    static constexpr size_t kMost = kits::bounds::kMostReplicants;
    /// The most bytes of all of them together: they are stored in one message.
    static constexpr ssize_t kMostBytes = kits::bounds::kMostArchives;

    static constexpr size_t kMostRequests = kits::bounds::kMostRequests;

    /// @param status  as BApplication's: B_ALREADY_RUNNING if there is one in this session
    explicit DesktopApp(status_t* status);
    ~DesktopApp() override;

    /// Shows the contents of the store; call it before Run().
    void Restore();

    /// Ends if there is nothing to show, and nothing to report about the store.
    void ReadyToRun() override;
    void MessageReceived(BMessage* message) override;
    /// Saves everything, then ends. If the user pressed the key for it, asks the application to quit instead, and the
    /// charts stay: the user cannot see that this window belongs to another program.
    bool QuitRequested() override;

    /// Takes a window off the desktop, for good.
    void Remove(ReplicantWindow* window);
    /// Gives the keyboard focus to the window that was shown after this one, or before it.
    void ActivateNext(const ReplicantWindow* window, bool back);

    size_t CountReplicants() const { return fWindows.size(); }
    ReplicantWindow* ReplicantAt(size_t index) const { return fWindows[index]; }

    /// Something has changed: it is saved in a moment.
    void Changed();
    /// Waits until everything is written. Reports a failure on stderr, in one line; that of the autostart entry only if
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
    kits::Identities fDone{kMostRequests};           // requests that were performed
    std::vector<BMessage> fForeign;                  // may be from a newer version; kept unchanged
    ssize_t fBytes = 0;                              // of the stored charts, approximately
    AutostartJob fAutostartJob;                      // the last one; the thread owns it while it runs
    std::unique_ptr<FireAndForgetThread> fAutostart; // writes the entry, or has written it
    Autosave fAutosave;
    bool fHasTold = false; // that there are too many
    bool fIsEnding = false;
};
