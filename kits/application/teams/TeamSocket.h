// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/teams/TeamFolder.h"
#include "kits/kernel/FileDescriptor.h"

#include <sys/types.h>

namespace kits {

// The sockets of teams: Unix stream sockets that never wait, and are closed in started programs.

/// Makes this team's socket in the folder and listens. The socket gets its name only when others can connect to it.
status_t Listen(const TeamFolder& folder, const TeamFolder::Entry& entry, FileDescriptor* socket);

/// Connects to a team, and checks that it is this team and of this user.
/// @return `B_BAD_HANDLER` if it is not there, `B_WOULD_BLOCK` if too many connections wait for it already,
///         `B_PERMISSION_DENIED` if another process has taken its place, `B_NO_MORE_FDS` if no descriptor is left for
///         connections, or the system's error
status_t Connect(const TeamFolder& folder, team_address team, FileDescriptor* socket);

/// True if connections may use one more file descriptor, so that bounds::kReservedDescriptors are left for the rest.
bool HasDescriptorForConnection();

/// Returns the process at the other end. Returns false unless it belongs to this user.
bool IsOfThisUser(int socket, pid_t* process);

} // namespace kits
