// SPDX-License-Identifier: MIT
#include "kits/application/teams/Launch.h"

#include "kits/application/Message.h"
#include "kits/application/messages/MessageFormat.h"
#include "kits/application/teams/DetachedProcess.h"
#include "kits/kernel/Clock.h"
#include "kits/kernel/Threads.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cctype>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <utility>

namespace kits {

namespace {

constexpr bigtime_t kPause = 5000;
constexpr const char* kGrantVariable = "KITS_LAUNCH";
constexpr int kSeals = F_SEAL_WRITE | F_SEAL_SHRINK | F_SEAL_GROW | F_SEAL_SEAL;

/// Makes a piece of memory into a file that nobody can change any more.
status_t MakeSealed(const BMessage* message, FileDescriptor* file)
{
    std::string flat;
    if (message != nullptr) {
        const status_t status = WriteMessage(*message, &flat);
        if (status != B_OK)
            return status;
    }
    FileDescriptor memory(memfd_create("launch", MFD_CLOEXEC | MFD_ALLOW_SEALING));
    if (!memory.IsOpen())
        return StatusFromErrno(errno);
    for (size_t written = 0; written < flat.size();) {
        const ssize_t size =
            pwrite(memory.Get(), flat.data() + written, flat.size() - written, static_cast<off_t>(written));
        if (size <= 0)
            return size == 0 ? B_DEVICE_FULL : StatusFromErrno(errno);
        written += static_cast<size_t>(size);
    }
    if (fcntl(memory.Get(), F_ADD_SEALS, kSeals) != 0)
        return StatusFromErrno(errno);
    *file = std::move(memory);
    return B_OK;
}

std::unique_ptr<BMessage> ReadSealed(int descriptor)
{
    struct stat info;
    if (fstat(descriptor, &info) != 0 || info.st_size <= 0 ||
        static_cast<size_t>(info.st_size) > BMessage::kMaxFlattenedSize)
        return nullptr;
    std::string flat(static_cast<size_t>(info.st_size), '\0');
    if (pread(descriptor, flat.data(), flat.size(), 0) != info.st_size)
        return nullptr;
    auto message = std::make_unique<BMessage>();
    return message->Unflatten(flat.data(), info.st_size) == B_OK ? std::move(message) : nullptr;
}

std::string LockName(const std::string& signature)
{
    return signature.substr(signature.rfind('/') + 1) + ".lock";
}

FileDescriptor OpenLock(const TeamFolder& folder, const std::string& signature)
{
    return FileDescriptor(openat(folder.Descriptor(), LockName(signature).c_str(),
                                 O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0600));
}

bool IsPipe(int descriptor)
{
    struct stat info;
    return fstat(descriptor, &info) == 0 && S_ISFIFO(info.st_mode);
}

} // namespace

std::string LaunchLock::ObstacleTo(const TeamFolder& folder, const std::string& signature)
{
    if (OpenLock(folder, signature).IsOpen())
        return {};
    const int error = errno;
    return folder.Path() + "/" + LockName(signature) +
           (error == ELOOP ? " is a link"
                           : std::string(" cannot be opened (") + StatusText(StatusFromErrno(error)) + ")");
}

status_t LaunchLock::Take(const TeamFolder& folder, const std::string& signature, bigtime_t timeout)
{
    FileDescriptor file = OpenLock(folder, signature);
    if (!file.IsOpen())
        return StatusFromErrno(errno);
    const bigtime_t end = system_time() + timeout;
    while (flock(file.Get(), LOCK_EX | LOCK_NB) != 0) {
        if (errno != EWOULDBLOCK && errno != EINTR)
            return StatusFromErrno(errno);
        if (system_time() >= end)
            return B_TIMED_OUT;
        snooze(kPause);
    }
    fFile = std::move(file);
    return B_OK;
}

std::string ProgramOfSignature(const std::string& signature)
{
    constexpr std::string_view kStart = "application/x-vnd.";
    const size_t place = signature.find('-', kStart.size());
    if (!signature.starts_with(kStart) || place == std::string::npos || place + 1 == signature.size())
        return {};
    std::string name = signature.substr(place + 1);
    for (char& c : name)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    std::error_code error;
    const std::filesystem::path own = std::filesystem::read_symlink("/proc/self/exe", error);
    const std::string beside = (own.parent_path() / name).string();
    return !error && access(beside.c_str(), X_OK) == 0 ? beside : name;
}

status_t StartProgram(const std::string& program, const BMessage* message, FileDescriptor* alive)
{
    FileDescriptor memory;
    status_t status = MakeSealed(message, &memory);
    if (status != B_OK)
        return status;
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0)
        return StatusFromErrno(errno);
    *alive = FileDescriptor(ends[0]);
    const FileDescriptor held(ends[1]);
    const std::string grant = std::to_string(memory.Get()) + "," + std::to_string(held.Get());
    return StartDetached({program}, {{memory.Get(), held.Get()}, kGrantVariable, grant});
}

LaunchGrant TakeLaunchGrant()
{
    static bool sIsTaken = false;
    LaunchGrant grant;
    const char* text = std::exchange(sIsTaken, true) ? nullptr : getenv(kGrantVariable);
    int memory, alive;
    if (text == nullptr || sscanf(text, "%d,%d", &memory, &alive) != 2 || memory < 0 || alive < 0 ||
        fcntl(memory, F_GET_SEALS) != kSeals || !IsPipe(alive))
        return grant; // the variable was not meant for this process
    const FileDescriptor file(memory);
    grant.alive = FileDescriptor(alive);
    fcntl(alive, F_SETFD, FD_CLOEXEC);
    grant.message = ReadSealed(memory);
    grant.isLaunched = true;
    return grant;
}

} // namespace kits
