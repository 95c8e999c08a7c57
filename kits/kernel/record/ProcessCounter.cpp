// SPDX-License-Identifier: MIT
#include "kits/kernel/record/ProcessCounter.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>

namespace kits {

namespace {

bool IsNumber(const char* name)
{
    const char* next = name;
    while (*next >= '0' && *next <= '9')
        ++next;
    return next != name && *next == '\0';
}

} // namespace

ProcessCounter::ProcessCounter(std::string folder, bool isRecorded)
    : fPath(std::move(folder))
    , fIsRecorded(isRecorded)
{
}

void ProcessCounter::Calibrate()
{
    if (!fFolder.IsOpen())
        fFolder = FileDescriptor(open(fPath.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (fIsRecorded)
        return;
    // Processes come and go while they are counted: a count is correct if the link count is the same before and after.
    constexpr int kMostTries = 5;
    for (int tries = 0; tries < kMostTries; ++tries) {
        const auto before = LinkCount();
        const auto entries = CountEntries();
        const auto after = LinkCount();
        if (!before.has_value() || !entries.has_value() || !after.has_value())
            return;
        fBesidesProcesses = (*before + *after) / 2 - *entries;
        if (*before == *after)
            return;
    }
}

std::optional<int64> ProcessCounter::Count()
{
    if (fIsRecorded)
        return CountEntries();
    const auto links = LinkCount();
    if (!links.has_value() || !fBesidesProcesses.has_value())
        return std::nullopt;
    return std::max<int64>(*links - *fBesidesProcesses, 0);
}

std::optional<int64> ProcessCounter::LinkCount() const
{
    struct stat status;
    if (!fFolder.IsOpen() || fstat(fFolder.Get(), &status) != 0)
        return std::nullopt;
    return static_cast<int64>(status.st_nlink);
}

std::optional<int64> ProcessCounter::CountEntries() const
{
    if (!fFolder.IsOpen() || lseek(fFolder.Get(), 0, SEEK_SET) != 0)
        return std::nullopt;
    int64 count = 0;
    alignas(dirent64) char entries[8192];
    while (true) {
        const ssize_t size = getdents64(fFolder.Get(), entries, sizeof(entries));
        if (size < 0)
            return std::nullopt;
        if (size == 0)
            return count;
        for (ssize_t at = 0; at < size;) {
            const auto* entry = reinterpret_cast<const dirent64*>(entries + at);
            if (IsNumber(entry->d_name))
                ++count;
            at += entry->d_reclen;
        }
    }
}

} // namespace kits
