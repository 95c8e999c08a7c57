// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/AppDefs.h"

#include <functional>

namespace kits {

/// Names a handler, a looper or a thread that waits for an answer, in one process; never used twice. Positive; 0 names
/// nothing.
using token_t = int64;

/// Names the application object of a team, whatever its own token is.
inline constexpr token_t kApplicationToken = 1;

/// Names a process, uniquely within a boot. 0 names none.
using team_address = uint64;

/// The address of a message's target, in any process of this user and boot. A plain value.
struct Address {
    team_address team = 0;
    token_t token = 0;

    bool IsSet() const { return token > 0; }
    bool operator==(const Address&) const = default;
};

/// The address of this process.
team_address ThisTeam();
/// The process id in an address.
team_id TeamIdOf(team_address team);
/// The address of an existing process, which may be a zombie; 0 if there is none.
team_address TeamOfProcess(team_id process);
/// True if the process with this address exists and is not a zombie.
bool IsTeamAlive(team_address team);

} // namespace kits

template <> struct std::hash<kits::Address> {
    std::size_t operator()(const kits::Address& address) const noexcept
    {
        return std::hash<kits::team_address>()(address.team) * 31 + std::hash<kits::token_t>()(address.token);
    }
};
