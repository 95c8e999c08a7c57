// SPDX-License-Identifier: MIT
#include "kits/application/teams/TeamSocket.h"

#include "kits/kernel/Bounds.h"
#include "kits/kernel/Errors.h"

#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>

namespace kits {

namespace {

// The system's default limit: this many may connect before the first one is accepted.
constexpr int kBacklog = 4096;

FileDescriptor MakeSocket()
{
    return FileDescriptor(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
}

sockaddr_un SocketAddress(const TeamFolder& folder, const std::string& name)
{
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    const std::string path = folder.PathOf(name);
    static_assert(sizeof(address.sun_path) >= sizeof("/proc/self/fd/1234567/") + 64 + 17);
    strncpy(address.sun_path, path.c_str(), sizeof(address.sun_path) - 1);
    return address;
}

/// Returns whether a new descriptor leaves the reserve free: the system gives the lowest free number, so all numbers
/// below it are taken.
bool IsFree(int descriptor)
{
    rlimit limit;
    if (getrlimit(RLIMIT_NOFILE, &limit) != 0)
        return true;
    const rlim_t reserve = std::min<rlim_t>(bounds::kReservedDescriptors, limit.rlim_cur / 4);
    return static_cast<rlim_t>(descriptor) < limit.rlim_cur - reserve;
}

} // namespace

bool HasDescriptorForConnection()
{
    const FileDescriptor probe = MakeSocket();
    return probe.IsOpen() && IsFree(probe.Get());
}

status_t Listen(const TeamFolder& folder, const TeamFolder::Entry& entry, FileDescriptor* socket)
{
    FileDescriptor made = MakeSocket();
    if (!made.IsOpen())
        return StatusFromErrno(errno);
    const std::string name = TeamFolder::MakeName(entry);
    const std::string firstName = ".new" + TeamFolder::MakeName({"", entry.team});
    unlinkat(folder.Descriptor(), firstName.c_str(), 0);
    const sockaddr_un address = SocketAddress(folder, firstName);
    if (bind(made.Get(), reinterpret_cast<const sockaddr*>(&address), sizeof(address)) != 0)
        return StatusFromErrno(errno);
    if (listen(made.Get(), kBacklog) != 0 ||
        renameat(folder.Descriptor(), firstName.c_str(), folder.Descriptor(), name.c_str()) != 0) {
        const status_t status = StatusFromErrno(errno);
        unlinkat(folder.Descriptor(), firstName.c_str(), 0);
        return status;
    }
    *socket = std::move(made);
    return B_OK;
}

status_t Connect(const TeamFolder& folder, team_address team, FileDescriptor* socket)
{
    // The process id alone is not enough: one process could use a name for every possible start time. And there is no
    // point in looking for a process that does not exist.
    if (TeamOfProcess(TeamIdOf(team)) != team)
        return B_BAD_HANDLER;
    const std::string name = folder.NameOf(team);
    if (name.empty())
        return B_BAD_HANDLER;
    FileDescriptor made = MakeSocket();
    if (!made.IsOpen())
        return StatusFromErrno(errno);
    if (!IsFree(made.Get()))
        return B_NO_MORE_FDS;
    const sockaddr_un address = SocketAddress(folder, name);
    if (connect(made.Get(), reinterpret_cast<const sockaddr*>(&address), sizeof(address)) != 0)
        return errno == EAGAIN ? B_WOULD_BLOCK : B_BAD_HANDLER;
    pid_t process;
    if (!IsOfThisUser(made.Get(), &process) || process != TeamIdOf(team))
        return B_PERMISSION_DENIED;
    *socket = std::move(made);
    return B_OK;
}

bool IsOfThisUser(int socket, pid_t* process)
{
    ucred credentials = {};
    socklen_t size = sizeof(credentials);
    if (getsockopt(socket, SOL_SOCKET, SO_PEERCRED, &credentials, &size) != 0 || credentials.uid != geteuid())
        return false;
    *process = credentials.pid;
    return true;
}

} // namespace kits
