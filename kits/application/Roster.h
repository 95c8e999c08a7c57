#pragma once

#include "kits/application/AppDefs.h"
#include "kits/application/Messenger.h"
#include "kits/storage/Entry.h"

#include <string>

/// What is known of a running application.
struct app_info {
    thread_id thread = -1; ///< its main thread; -1 for another process
    team_id team = -1;
    entry_ref ref;         ///< its executable
    std::string signature; ///< empty while it has no application object
};

/// Finds and starts programs. Any thread.
class BRoster {
public:
    /// Opens a file as the user's desktop would. A file that carries an address ("META:url") opens that instead; one
    /// that carries a sender ("MAIL:from", perhaps "MAIL:subject") a new mail to there. Returns when the program
    /// that opens it has been started or could not be; does not wait for it.
    /// @return `B_BAD_VALUE` for null, `B_ENTRY_NOT_FOUND` if there is no such file, `B_LAUNCH_FAILED` if nothing
    ///         could be started
    status_t Launch(const entry_ref* ref) const;

    /// @return `B_BAD_VALUE` if no application of this team is known, or for null
    status_t GetRunningAppInfo(team_id team, app_info* info) const;
};

/// Always there.
extern const BRoster* be_roster;
