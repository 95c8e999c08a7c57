// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/AppDefs.h"

#include <vector>

/// The state of the connection of a chart outside the application, and what follows from each event. It starts nothing
/// and queries nothing: ServerConnection carries out its decisions. One thread at a time.
///
/// Attempts to connect are made elsewhere, and anything may happen meanwhile. Each has a number, and only the outcome
/// of the newest one counts. If a report during an attempt says that the application is gone, a success of that attempt
/// does not count: the application that answered may be the one that has gone since.
class ConnectionState {
public:
    enum class Phase {
        kOff,       ///< no connection is wanted
        kAsking,    ///< the first attempt is running, which may start the application
        kConnected, ///< the application has agreed to send samples
        kWaiting    ///< attempts are made at intervals; they start nothing
    };

    Phase Now() const { return fPhase; }
    /// The application's team while connected, otherwise -1.
    team_id Team() const { return fPhase == Phase::kConnected ? fTeam : -1; }

    /// A connection is wanted, possibly a new one in place of the present one.
    /// @return whether to ask; false while that is under way
    bool Want();
    /// No connection is wanted any more.
    /// @return whether there is anything to end
    bool Unwant();

    /// @return the number of the attempt, never 0; 0 if none should be made
    uint32 AttemptBegins();
    bool IsCurrent(uint32 attempt) const { return attempt != 0 && attempt == fAttempt; }
    /// @return whether it is connected now; if not, and it was the newest attempt, others follow
    bool AttemptSucceeded(uint32 attempt, team_id team);
    /// @return whether it was the newest attempt
    bool AttemptFailed(uint32 attempt);

    /// The application has said that it is going.
    /// @return whether to make attempts at intervals from now on
    bool ServerGone();
    /// Does the same for a team that has ended or does not answer; it may be any team.
    bool TeamGone(team_id team);

private:
    Phase fPhase = Phase::kOff;
    team_id fTeam = -1;
    uint32 fAttempt = 0; ///< the number of the current attempt; 0 for none
    uint32 fLastAttempt = 0;
    bool fIsDoubtful = false;        ///< the application has said since the beginning of the attempt that it is going
    std::vector<team_id> fGoneTeams; ///< since the beginning of the attempt
};
