// SPDX-License-Identifier: MIT
#include "tests/src/sampling/MachineOverTime.h"

#include "kits/kernel/Threads.h"
#include "tests/support/Await.h"
#include "tests/support/RecordedMachine.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <vector>

namespace {

constexpr int64 kTotalPages = 1000000;

/// The folder, which exists before anything in the program asks for a figure.
class Tree : public RecordedMachine {
public:
    Tree()
        : RecordedMachine(MachineOverTime::kProcessors)
    {
        WriteTexts();
        setenv("KITS_ROOT", Root(), 1);
    }

    /// Files that no test has to set.
    void WriteTexts() const
    {
        Write("sys/devices/system/cpu/online", "0-9\n");
        Write("proc/loadavg", "0.00 0.00 0.00 1/321 4711\n");
        Write("proc/net/sockstat", "sockets: used 77\n");
        Write("proc/sys/kernel/pid_max", "4096\n");
        Write("proc/sys/kernel/threads-max", "8192\n");
        Write("proc/sys/kernel/sem", "32000 1024 500 128\n");
        Write("proc/sys/fs/file-max", "10000\n");
        Write("proc/sysvipc/sem", "key semid perms nsems uid gid cuid cgid otime ctime\n0 0 600 12 0 0 0 0 0 0\n");
    }
};

const Tree sTree;
std::atomic<bigtime_t> sNow;
/// Hundredths of a second for which each processor was active since the program began.
std::array<int64, MachineOverTime::kProcessors> sTicks;

} // namespace

MachineOverTime::MachineOverTime()
{
    // A step is a hundredth of a second, and no processor may be active for longer than has passed since it was last
    // read. So the clock continues from where another test left it, or from the machine's own.
    sNow = std::max<bigtime_t>(sNow, system_time()) + 1000000;
    sTree.WriteTexts();
    WriteStat();
    SetUsedPages(250000);
    SetPageFaults(0);
    kits::SetClockSource(this);
}

MachineOverTime::~MachineOverTime()
{
    kits::SetClockSource(nullptr);
}

void MachineOverTime::Advance(bigtime_t microseconds)
{
    for (size_t i = 0; i < fLoads.size(); i++)
        sTicks[i] += fOffline[i] ? 0 : microseconds / 10000 * fLoads[i] / 100;
    WriteStat();
    sNow += microseconds;
}

void MachineOverTime::ResetCounts()
{
    sTicks = {};
    WriteStat();
}

void MachineOverTime::Pass(bigtime_t microseconds)
{
    sNow += microseconds;
}

void MachineOverTime::Write(const std::string& file, const std::string& text) const
{
    sTree.Write(file, text);
}

std::string MachineOverTime::Text(const std::string& file) const
{
    return sTree.Text(file);
}

bigtime_t MachineOverTime::Now() const
{
    return sNow;
}

bigtime_t MachineOverTime::SystemTime()
{
    return sNow;
}

bigtime_t MachineOverTime::WallTime()
{
    return 1700000000LL * 1000000 + sNow;
}

void MachineOverTime::SetUsedPages(int64 pages)
{
    sTree.Write("proc/meminfo", "MemTotal: " + std::to_string(kTotalPages * 4) + " kB\nMemFree: 0 kB\nMemAvailable: " +
                                    std::to_string((kTotalPages - pages) * 4) + " kB\n");
}

void MachineOverTime::SetPageFaults(int64 faults)
{
    sTree.Write("proc/vmstat", "nr_free_pages 0\npgfault " + std::to_string(faults) + "\n");
}

void MachineOverTime::WriteStat() const
{
    std::vector<long long> ticks(sTicks.begin(), sTicks.end());
    for (size_t i = 0; i < ticks.size(); i++)
        if (fOffline[i])
            ticks[i] = -1;
    sTree.WriteProcessors(ticks);
}

void AwaitSamplerAsleep()
{
    EXPECT_TRUE(test::Await([] {
        thread_info info;
        return get_thread_info(find_thread("Sysinfo sampler"), &info) == B_OK && info.state == B_THREAD_ASLEEP;
    }));
}
