// SPDX-License-Identifier: MIT
#include "kits/kernel/Clock.h"

#include "kits/kernel/Errors.h"
#include "kits/kernel/FileDescriptor.h"
#include "kits/kernel/clock/BootMoment.h"

#include <fcntl.h>
#include <time.h>
#include <unistd.h>

#include <atomic>
#include <mutex>

namespace kits {

namespace {

/// The first moment of 2001.
constexpr bigtime_t kFirstPlausibleTime = 978307200LL * 1000000;

bigtime_t ReadClock(clockid_t clock)
{
    timespec now;
    clock_gettime(clock, &now);
    return static_cast<bigtime_t>(now.tv_sec) * 1000000 + now.tv_nsec / 1000;
}

class MachineClocks : public ClockSource {
public:
    bigtime_t SystemTime() override { return ReadClock(CLOCK_BOOTTIME); }
    bigtime_t WallTime() override { return ReadClock(CLOCK_REALTIME); }
    std::string BootId() override
    {
        FileDescriptor file(open("/proc/sys/kernel/random/boot_id", O_RDONLY | O_CLOEXEC));
        char text[64];
        const ssize_t size = file.IsOpen() ? read(file.Get(), text, sizeof(text)) : 0;
        const std::string_view id(text, size > 0 ? static_cast<size_t>(size) : 0);
        return std::string(id.substr(0, id.find('\n')));
    }
};

/// Not destroyed: threads may ask for the time to the very end.
ClockSource& TheMachine()
{
    static MachineClocks* const sClocks = new MachineClocks;
    return *sClocks;
}

std::atomic<ClockSource*> sSource = nullptr;

ClockSource& Source()
{
    ClockSource* source = sSource.load(std::memory_order_acquire);
    return source != nullptr ? *source : TheMachine();
}

/// The moment of boot that is valid in this process.
struct KeptMoment {
    std::mutex mutex; ///< guards the members except `moment`, which may be read without the lock once `isKnown`
    std::atomic<bool> isKnown = false;
    std::atomic<bigtime_t> moment = 0;
    std::string path; ///< where to store it; empty once that is done

    void Set(bigtime_t value)
    {
        moment = value;
        isKnown.store(true, std::memory_order_release);
    }
};

KeptMoment& Kept()
{
    static KeptMoment* const sKept = new KeptMoment;
    return *sKept;
}

bool IsPlausible(bigtime_t wallTime)
{
    return wallTime >= kFirstPlausibleTime;
}

bigtime_t MeasureMoment(ClockSource& source)
{
    return source.WallTime() - source.SystemTime();
}

/// Sets the moment if the clock is plausible, and stores it if that is requested. Called with the mutex held.
status_t SettleMoment(KeptMoment& kept, ClockSource& source)
{
    BootMoment boot{source.BootId(), MeasureMoment(source)};
    if (!IsPlausible(boot.moment + source.SystemTime()))
        return B_NO_INIT;
    status_t status = B_OK;
    if (!kept.path.empty()) {
        status = boot.bootId.empty() ? B_NAME_NOT_FOUND : KeepBootMoment(kept.path, &boot);
        kept.path.clear();
    }
    kept.Set(boot.moment);
    return status;
}

} // namespace

void SetClockSource(ClockSource* source)
{
    KeptMoment& kept = Kept();
    std::lock_guard lock(kept.mutex);
    sSource.store(source, std::memory_order_release);
    kept.isKnown = false;
    kept.path.clear();
}

status_t SetBootMomentFile(const char* path, bool mayWrite)
{
    if (path == nullptr || *path == '\0')
        return B_BAD_VALUE;
    ClockSource& source = Source();
    KeptMoment& kept = Kept();
    std::lock_guard lock(kept.mutex);
    BootMoment boot;
    status_t status = LoadBootMoment(path, &boot);
    if (status == B_OK && boot.bootId == source.BootId()) {
        kept.path.clear();
        kept.Set(boot.moment);
        return B_OK;
    }
    kept.isKnown = false;
    kept.path = mayWrite ? path : "";
    const status_t settled = SettleMoment(kept, source);
    if (mayWrite || settled != B_OK)
        return settled;
    return status != B_OK ? status : B_ENTRY_NOT_FOUND;
}

bigtime_t MomentOfBoot()
{
    KeptMoment& kept = Kept();
    ClockSource& source = Source();
    if (!kept.isKnown.load(std::memory_order_acquire)) {
        std::lock_guard lock(kept.mutex);
        if (!kept.isKnown && SettleMoment(kept, source) == B_NO_INIT)
            return MeasureMoment(source);
    }
    return kept.moment;
}

bool ClockIsPlausible()
{
    return IsPlausible(real_time_clock_usecs());
}

} // namespace kits

bigtime_t system_time()
{
    return kits::Source().SystemTime();
}

bigtime_t real_time_clock_usecs()
{
    return kits::MomentOfBoot() + system_time();
}
