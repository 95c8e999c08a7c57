// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/teams/TeamFolder.h"
#include "kits/kernel/FileDescriptor.h"

#include <sys/types.h>

namespace kits {

// The sockets of teams. All are of Unix, streams, never wait, and are closed in programs that are started.

/// Makes this team's socket in the folder and listens. It gets its name only when it can be connected to.
status_t Listen(const TeamFolder& folder, const TeamFolder::Entry& entry, FileDescriptor* socket);

/// Connects to a team, and makes sure that it is that team of this user.
/// @return `B_BAD_HANDLER` if it is not there, `B_WOULD_BLOCK` if it has too many who wait for it,
///         `B_PERMISSION_DENIED` if another one has taken its place, `B_NO_MORE_FDS` if none is left for connections,
///         or what the system said
status_t Connect(const TeamFolder& folder, team_address team, FileDescriptor* socket);

/// Whether connections may take one more file descriptor: enough are left for all else (bounds::kReservedDescriptors).
bool HasDescriptorForConnection();

/// The process at the other end. False unless it is of this user.
bool IsOfThisUser(int socket, pid_t* process);

} // namespace kits
