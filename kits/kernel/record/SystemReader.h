// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/SystemInfo.h"
#include "kits/kernel/record/ActiveClock.h"
#include "kits/kernel/record/MachineLimits.h"
#include "kits/kernel/record/ProcFile.h"
#include "kits/kernel/record/ProcessCounter.h"

#include <optional>
#include <string>
#include <vector>

namespace kits {

/// Reads the figures of a machine, the one that it runs on or a recorded one. `get_system_info` uses one of its
/// own for the whole process; tests and benchmarks make theirs. Not for two threads at once.
///
/// cpu_count     the highest processor online when the reader was made, plus one, at most kMaxProcessors.
/// active_time   user, nice, system, irq, softirq and steal time of `/proc/stat` in microseconds; the kernel counts in
///               steps of 10 ms. It never goes back, and never advances by more than the time since this processor was
///               last read; what is left over is carried on, up to one second. A processor that goes offline keeps its
///               value and goes on from there when it is back. One that is first seen later starts at 0 if it is below
///               `cpu_count`, and is not counted otherwise.
/// max_pages     MemTotal; used_pages: MemTotal less MemAvailable. In pages of 4096 bytes; 64 bits of each are in
///               SystemFigures.
/// page_faults   pgfault of `/proc/vmstat`, its low 32 bits.
/// max_teams     the lowest limit that stops the user: kernel.pid_max, pids.max of the control group of this process
///               and of those above it, RLIMIT_NPROC (not for root). used_teams: processes, from the link count of
///               `/proc`.
/// max_threads   the same limits and kernel.threads-max; used_threads: `/proc/loadavg`.
/// max_sems      SEMMNS, at most 32000; used_sems: System V semaphores.
/// max_ports     fs.file-max, at most 65536; used_ports: sockets in use.
///
/// Maxima are at least 1, and at least what is in use: a limit may hold for this user alone, while what is in use is
/// the whole machine's. A figure that cannot be read (no such file or field, a file cut or full of anything) keeps its
/// last value, at first 0. A figure too large for its 32 bits becomes the largest number.
///
/// Files stay open and are read from their beginning each time. The reader tries again each second to open files that
/// it could not open, and reads limits every ten seconds. Each minute it measures what the link count includes besides
/// processes, and looks for control groups and missing files of limits. All these times are those of the `now` that the
/// caller passes. A reading allocates nothing, unless the process was moved to another control group.
class SystemReader {
public:
    /// @param root  null, "" or "/": this machine. Otherwise the folder of a recorded one, with `proc/` and `sys/` as
    ///              files; then semaphores come from `proc/sys/kernel/sem` and `proc/sysvipc/sem`, and processes from
    ///              counting the numbered entries of `proc/`. Change such a file in place.
    explicit SystemReader(const char* root = nullptr);
    SystemReader(const SystemReader&) = delete;
    SystemReader& operator=(const SystemReader&) = delete;

    /// @param now          the moment of this reading, microseconds; if it lies before the last one, no active time
    ///                     advances
    /// @param info         filled completely, not null
    /// @param activeTimes  receives the active times of the first processors; may be null if `capacity` is 0
    /// @param capacity     number of elements of `activeTimes`
    void Read(bigtime_t now, system_info* info, bigtime_t* activeTimes, int32 capacity);

    /// Sets the figures of the last reading that the record has no room for; leaves `time` alone.
    void GetFigures(SystemFigures* figures) const;

private:
    static constexpr bigtime_t kSecond = 1000000;
    // Limits hardly ever change, and reading one of their files costs as much as reading a file of figures.
    static constexpr bigtime_t kBetweenLimits = 10 * kSecond;

    /// Decides whether to repeat an action after a time; a clock that goes back is no reason to wait.
    class Interval {
    public:
        explicit Interval(bigtime_t length)
            : fLength(length)
        {
        }
        bool IsDue(bigtime_t now)
        {
            if (fLast.has_value() && now >= *fLast && static_cast<uint64>(now) - static_cast<uint64>(*fLast) < fLength)
                return false;
            fLast = now;
            return true;
        }

    private:
        const uint64 fLength;
        std::optional<bigtime_t> fLast;
    };

    /// @param statText  the text of `proc/stat`
    SystemReader(const std::string& root, const std::string& statText);
    void ReadProcessors(bigtime_t now);
    void ReadMemory();
    void ReadCounts();
    void ReadLimits(bigtime_t now);
    void SetMaxima();

    system_info fInfo{};
    int64 fMaxPages = 1;
    int64 fUsedPages = 0;
    ActiveClock fActiveClock;
    std::vector<ProcessorTime> fTimes;
    std::vector<char> fBuffer; ///< shared by all files
    ProcFile fStat;
    ProcFile fMemInfo;
    ProcFile fVmStat;
    ProcFile fLoadAvg;
    ProcFile fSockStat;
    std::optional<ProcFile> fSemaphores; ///< a recorded machine's; this machine's are queried
    ProcessCounter fProcesses;
    LimitReader fLimitReader;
    MachineLimits fLimits;
    Interval fEachSecond{kSecond};
    Interval fLimitsDue{kBetweenLimits};
    Interval fEachMinute{60 * kSecond};
    size_t fPageFaultsHint = 0;
};

} // namespace kits
