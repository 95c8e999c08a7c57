// SPDX-License-Identifier: MIT
#include "kits/kernel/SystemInfo.h"

#include "kits/kernel/Clock.h"
#include "kits/kernel/record/ProcFile.h"
#include "kits/kernel/record/SystemReader.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstdlib>
#include <mutex>

namespace {

/// The reader of the whole process: the active times of all callers come from one place, so they are consistent.
struct SharedReader {
    std::mutex mutex;
    kits::SystemReader reader{std::getenv(kits::kRootVariable)};
};

SharedReader& Shared()
{
    static SharedReader* const sShared = new SharedReader;
    return *sShared;
}

} // namespace

status_t get_system_info(system_info* info)
{
    kits::SystemFigures figures;
    return kits::ReadSystem(info, &figures, nullptr, 0);
}

status_t kits::ReadSystem(system_info* info, SystemFigures* figures, bigtime_t* activeTimes, int32 capacity)
{
    if (info == nullptr || figures == nullptr || capacity < 0 || (activeTimes == nullptr && capacity > 0))
        return B_BAD_VALUE;
    SharedReader& shared = Shared();
    std::lock_guard lock(shared.mutex);
    // Under the lock: a time taken before could be older than a reading that another thread makes meanwhile.
    figures->time = system_time();
    shared.reader.Read(figures->time, info, activeTimes, capacity);
    shared.reader.GetFigures(figures);
    return B_OK;
}

status_t kits::CheckSystem(std::string* missing)
{
    const char* root = std::getenv(kRootVariable);
    if (root == nullptr || *root == '\0')
        return B_OK;
    for (const std::string& folder : {std::string(root), std::string(root) + "/proc"}) {
        struct stat status;
        *missing = folder;
        if (stat(folder.c_str(), &status) != 0)
            return StatusFromErrno(errno);
        if (!S_ISDIR(status.st_mode))
            return B_NOT_A_DIRECTORY;
    }
    missing->clear();
    return B_OK;
}
