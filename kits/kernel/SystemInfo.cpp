#include "kits/kernel/SystemInfo.h"

#include "kits/kernel/Clock.h"
#include "kits/kernel/SystemReader.h"

#include <cstdlib>
#include <mutex>

namespace {

/// The reader of the whole process: the active times of all callers come from one place, so they fit together.
struct SharedReader {
    std::mutex mutex;
    kits::SystemReader reader{std::getenv("KITS_ROOT")};
};

SharedReader& Shared()
{
    static SharedReader* const sShared = new SharedReader;
    return *sShared;
}

} // namespace

status_t get_system_info(system_info* info)
{
    return get_system_info_at(system_time(), info, nullptr, 0);
}

status_t get_system_info_at(bigtime_t now, system_info* info, bigtime_t* activeTimes, int32 capacity)
{
    if (info == nullptr || capacity < 0 || (activeTimes == nullptr && capacity > 0))
        return B_BAD_VALUE;
    SharedReader& shared = Shared();
    std::lock_guard lock(shared.mutex);
    shared.reader.Read(now, info, activeTimes, capacity);
    return B_OK;
}
