// SPDX-License-Identifier: MIT
#include "src/sampling/ConnectionState.h"

#include <algorithm>

namespace {

// As many as can really end in the seconds of an attempt; anybody can send messages that claim it.
constexpr size_t kMostGoneTeams = 64;

} // namespace

bool ConnectionState::Want()
{
    if (fPhase == Phase::kAsking)
        return false;
    fPhase = Phase::kAsking;
    fAttempt = 0;
    return true;
}

bool ConnectionState::Unwant()
{
    const bool wasWanted = fPhase != Phase::kOff;
    fPhase = Phase::kOff;
    fAttempt = 0;
    return wasWanted;
}

uint32 ConnectionState::AttemptBegins()
{
    if (fPhase != Phase::kAsking && fPhase != Phase::kWaiting)
        return 0;
    if (++fLastAttempt == 0)
        fLastAttempt = 1;
    fIsDoubtful = false;
    fGoneTeams.clear();
    return fAttempt = fLastAttempt;
}

bool ConnectionState::AttemptSucceeded(uint32 attempt, team_id team)
{
    if (!IsCurrent(attempt))
        return false;
    if (fIsDoubtful || std::find(fGoneTeams.begin(), fGoneTeams.end(), team) != fGoneTeams.end()) {
        AttemptFailed(attempt);
        return false;
    }
    fAttempt = 0;
    fPhase = Phase::kConnected;
    fTeam = team;
    return true;
}

bool ConnectionState::AttemptFailed(uint32 attempt)
{
    if (!IsCurrent(attempt))
        return false;
    fAttempt = 0;
    fPhase = Phase::kWaiting;
    return true;
}

bool ConnectionState::ServerGone()
{
    fIsDoubtful = true;
    if (fPhase != Phase::kConnected)
        return false;
    fPhase = Phase::kWaiting;
    return true;
}

bool ConnectionState::TeamGone(team_id team)
{
    if (fPhase == Phase::kConnected)
        return team == fTeam && ServerGone();
    if (fAttempt != 0 && fGoneTeams.size() < kMostGoneTeams)
        fGoneTeams.push_back(team);
    else
        fIsDoubtful = true;
    return false;
}
