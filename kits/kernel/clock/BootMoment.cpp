// SPDX-License-Identifier: MIT
#include "kits/kernel/clock/BootMoment.h"

#include "kits/kernel/Bounds.h"
#include "kits/kernel/Errors.h"
#include "kits/kernel/FileDescriptor.h"

#include <fcntl.h>
#include <stdio.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <chrono>
#include <cinttypes>
#include <thread>

namespace kits {

namespace {

constexpr std::string_view kBootLine = "boot ";
constexpr std::string_view kMomentLine = "\nmoment ";
/// No machine boots twice within this time.
constexpr bigtime_t kShortestBoot = 1000000;
/// The maximum difference between the clocks of two boots that begin at the same moment.
constexpr bigtime_t kSameBeginning = 60 * kShortestBoot;
/// The year 10000: later times, and those before 1970, are not believed.
constexpr bigtime_t kEndOfTimes = 253402300800LL * 1000000;

uint64 CheckSum(std::string_view text)
{
    uint64 sum = 0xcbf29ce484222325u;
    for (char c : text)
        sum = (sum ^ static_cast<uint8>(c)) * 0x100000001b3u;
    return sum;
}

std::string FolderOf(const std::string& path)
{
    const size_t slash = path.rfind('/');
    if (slash == std::string::npos)
        return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

/// The holder of this lock decides about the file. A process that is stopped while holding it must not stop the others.
status_t LockFolder(int folder)
{
    using namespace std::chrono_literals;
    for (int tries = 0; flock(folder, LOCK_EX | LOCK_NB) != 0; ++tries) {
        if (errno != EWOULDBLOCK && errno != EINTR)
            return StatusFromErrno(errno);
        if (tries == 200)
            return B_TIMED_OUT;
        std::this_thread::sleep_for(5ms);
    }
    return B_OK;
}

status_t WriteWhole(const std::string& path, const std::string& text)
{
    FileDescriptor file(open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_NOFOLLOW | O_CLOEXEC, 0644));
    if (!file.IsOpen())
        return StatusFromErrno(errno);
    for (size_t done = 0; done < text.size();) {
        const ssize_t count = write(file.Get(), text.data() + done, text.size() - done);
        if (count > 0)
            done += static_cast<size_t>(count);
        else if (count == 0 || errno != EINTR)
            return count == 0 ? B_IO_ERROR : StatusFromErrno(errno);
    }
    if (fsync(file.Get()) != 0)
        return StatusFromErrno(errno);
    return file.Close() ? B_OK : StatusFromErrno(errno);
}

} // namespace

std::string FormatBootMoment(const BootMoment& boot)
{
    std::string text;
    text.append(kBootLine).append(boot.bootId).append(kMomentLine).append(std::to_string(boot.moment)).append("\n");
    char sum[32];
    snprintf(sum, sizeof(sum), "check %016" PRIx64 "\n", CheckSum(text));
    return text + sum;
}

std::optional<BootMoment> ParseBootMoment(std::string_view text)
{
    if (!text.starts_with(kBootLine))
        return std::nullopt;
    const size_t moment = text.find(kMomentLine);
    if (moment == std::string_view::npos)
        return std::nullopt;
    BootMoment boot;
    boot.bootId = text.substr(kBootLine.size(), moment - kBootLine.size());
    const char* number = text.data() + moment + kMomentLine.size();
    if (std::from_chars(number, text.data() + text.size(), boot.moment).ec != std::errc())
        return std::nullopt;
    if (boot.moment < 0 || boot.moment >= kEndOfTimes || FormatBootMoment(boot) != text)
        return std::nullopt;
    return boot;
}

status_t LoadBootMoment(const std::string& path, BootMoment* boot)
{
    FileDescriptor file(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    if (!file.IsOpen())
        return StatusFromErrno(errno);
    char text[bounds::kMostBootFile];
    const ssize_t size = pread(file.Get(), text, sizeof(text), 0);
    if (size < 0)
        return StatusFromErrno(errno);
    auto found = ParseBootMoment(std::string_view(text, static_cast<size_t>(size)));
    if (!found.has_value())
        return B_BAD_VALUE;
    *boot = std::move(*found);
    return B_OK;
}

status_t KeepBootMoment(const std::string& path, BootMoment* boot)
{
    FileDescriptor folder(open(FolderOf(path).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!folder.IsOpen())
        return StatusFromErrno(errno);
    if (status_t status = LockFolder(folder.Get()); status != B_OK)
        return status;
    BootMoment next = *boot;
    BootMoment kept;
    if (LoadBootMoment(path, &kept) == B_OK) {
        if (kept.bootId == boot->bootId) {
            *boot = std::move(kept);
            return B_OK;
        }
        const bigtime_t later = boot->moment - kept.moment;
        if (later > -kSameBeginning && later < kShortestBoot)
            next.moment = kept.moment + kShortestBoot;
    }
    // One name for all is enough under the lock, and a killed process leaves no more than one file behind.
    const std::string temporary = path + ".new";
    status_t status = WriteWhole(temporary, FormatBootMoment(next));
    if (status == B_OK && rename(temporary.c_str(), path.c_str()) != 0)
        status = StatusFromErrno(errno);
    if (status != B_OK) {
        unlink(temporary.c_str());
        return status;
    }
    if (fsync(folder.Get()) != 0)
        return StatusFromErrno(errno);
    *boot = std::move(next);
    return B_OK;
}

} // namespace kits
