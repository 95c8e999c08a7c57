// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/AppDefs.h"

#include <vector>

/// Where the connection of a chart outside the application stands, and what follows from what happens to it. It starts
/// nothing and asks nobody: ServerConnection does what this says. One thread at a time.
///
/// Attempts to connect are made elsewhere, meanwhile anything may happen. Each has a number, and only what the newest
/// one tells counts. If the application was heard to go during an attempt, its success is none: what has answered may
/// be what has gone since.
class ConnectionState {
public:
    enum class Phase {
        kOff,       ///< no connection is wanted
        kAsking,    ///< the first attempt is made, which may start the application
        kConnected, ///< the application has agreed to send samples
        kWaiting    ///< attempts are made at intervals; they start nothing
    };

    Phase Now() const { return fPhase; }
    /// The application's team while connected, else -1.
    team_id Team() const { return fPhase == Phase::kConnected ? fTeam : -1; }

    /// A connection is wanted, also a new one in place of that which is there.
    /// @return whether to ask; false while that is under way
    bool Want();
    /// No connection is wanted any more.
    /// @return whether there is anything to end
    bool Unwant();

    /// @return the number of the attempt, never 0; 0 if none is to be made
    uint32 AttemptBegins();
    bool IsCurrent(uint32 attempt) const { return attempt != 0 && attempt == fAttempt; }
    /// @return whether it is connected now; if not, and it was the newest attempt, others are to follow
    bool AttemptSucceeded(uint32 attempt, team_id team);
    /// @return whether it was the newest attempt
    bool AttemptFailed(uint32 attempt);

    /// The application has said that it goes.
    /// @return whether to make attempts at intervals from now on
    bool ServerGone();
    /// The same for a team that has ended or does not answer; it may be any.
    bool TeamGone(team_id team);

private:
    Phase fPhase = Phase::kOff;
    team_id fTeam = -1;
    uint32 fAttempt = 0; ///< the number of the one under way; 0 for none
    uint32 fLastAttempt = 0;
    bool fIsDoubtful = false;        ///< the application has said since the attempt began that it goes
    std::vector<team_id> fGoneTeams; ///< since then
};
