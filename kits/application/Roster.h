// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/AppDefs.h"
#include "kits/application/Field.h"
#include "kits/application/Messenger.h"
#include "kits/storage/Entry.h"

#include <string>

/// A running application.
struct app_info {
    thread_id thread = -1; ///< its main thread; -1 for another process
    team_id team = -1;
    entry_ref ref;         ///< its executable
    std::string signature; ///< empty while it has no application object
};

namespace kits {

// Fields of the messages to the watchers of applications.

inline const Field<team_id> kTeamField("team", 0, kMostNumber, -1);
inline const Field<std::string> kSignatureField("signature", 0, 1024);

} // namespace kits

// What can be watched, see BRoster::StartWatching.
enum : uint32 {
    B_REQUEST_LAUNCHED = 1,
    B_REQUEST_QUIT = 2,
    B_REQUEST_DIED = 4 ///< it was killed or crashed: the process may still exist for a moment
};

/// The reason why the user's applications cannot find or start each other from here.
struct app_obstacle {
    std::string text; ///< names the faulty file: "/run/user/1000/kits is a link"; empty if there is no obstacle
    bool isToStartsOnly = false; ///< they find each other, but none can start another
};

/// Finds, starts and watches applications, and opens files. Applications are found by their signature, in all processes
/// of the user whose application object is not hidden (see kits::Presence), this one too. Any thread.
class BRoster {
public:
    /// The team of an application; of several, the one that was started first.
    /// @return `B_NAME_NOT_FOUND` if there is none
    team_id TeamFor(const char* application) const;
    bool IsRunning(const char* application) const { return TeamFor(application) >= 0; }
    /// The application of this team, hidden or not, or of another one that is not hidden.
    /// @return `B_BAD_VALUE` if no application of this team is known, or for null
    status_t GetRunningAppInfo(team_id team, app_info* info) const;

    /// Starts the application of a signature, and waits until it can be found: some milliseconds, half a minute at
    /// most. Of several simultaneous calls one starts it, and the others wait for it. The program of
    /// "application/x-vnd.MAKER-NAME" is "name", beside this program or in $PATH.
    /// A waiting thread can be killed. Not for the main thread, nor with a looper locked.
    /// @param message  reaches the application before its ReadyToRun(); null for none
    /// @param team     when not null, gets its team, also with `B_ALREADY_RUNNING`
    /// @return `B_ALREADY_RUNNING`, after the message was sent to it; `B_LAUNCH_FAILED` if there is no such program or
    ///         it ended before it could be found; `B_TIMED_OUT`; `B_BAD_VALUE` for an invalid signature; or the reason
    ///         why other processes cannot be reached
    status_t Launch(const char* application, const BMessage* message = nullptr, team_id* team = nullptr) const;

    /// Opens a file as the user's desktop would. For a file with an address ("META:url") it opens the address; for one
    /// with a sender ("MAIL:from", perhaps "MAIL:subject") a new mail to the sender. Returns when the program has been
    /// started or could not be; does not wait for it.
    /// @return `B_BAD_VALUE` for null, `B_ENTRY_NOT_FOUND` if there is no such file, `B_LAUNCH_FAILED` if nothing
    ///         could be started
    status_t Launch(const entry_ref* ref) const;

    /// From now on, sends the target B_SOME_APP_LAUNCHED, B_SOME_APP_QUIT and B_SOME_APP_DIED, with "team" (int32) and
    /// "signature", for every application that comes or goes. One that ends in any way, or does not answer for two
    /// seconds, counts as quit; one that answers again as launched.
    /// @param events  any of the three requests
    status_t StartWatching(BMessenger target, uint32 events = B_REQUEST_LAUNCHED | B_REQUEST_QUIT) const;
    /// @return `B_BAD_VALUE` if the target does not watch
    status_t StopWatching(BMessenger target) const;

    /// @param application  signature of one with kits::Presence::kSingle; null to ask only if any can be found
    app_obstacle FindObstacle(const char* application = nullptr) const;
};

/// Never null.
extern const BRoster* be_roster;
