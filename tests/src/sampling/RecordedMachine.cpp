// SPDX-License-Identifier: MIT
#include "tests/src/sampling/RecordedMachine.h"

#include "kits/kernel/Threads.h"

#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace {

namespace fs = std::filesystem;

constexpr int64 kTotalPages = 1000000;

/// The folder, which exists before anything in the program asks for a figure.
class Tree {
public:
    Tree()
        : fRoot(fs::temp_directory_path() / ("recorded-machine-" + std::to_string(getpid())))
    {
        WriteTexts();
        setenv("KITS_ROOT", fRoot.c_str(), 1);
    }
    ~Tree()
    {
        std::error_code ignored;
        fs::remove_all(fRoot, ignored);
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

    void Write(const std::string& file, const std::string& text) const
    {
        fs::create_directories((fRoot / file).parent_path());
        std::ofstream(fRoot / file) << text;
    }

    std::string Text(const std::string& file) const
    {
        std::ostringstream text;
        text << std::ifstream(fRoot / file).rdbuf();
        return text.str();
    }

private:
    fs::path fRoot;
};

const Tree sTree;
std::atomic<bigtime_t> sNow;
/// Hundredths of a second for which each processor was active since the program began.
std::array<int64, RecordedMachine::kProcessors> sTicks;

} // namespace

RecordedMachine::RecordedMachine()
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

RecordedMachine::~RecordedMachine()
{
    kits::SetClockSource(nullptr);
}

void RecordedMachine::Advance(bigtime_t microseconds)
{
    for (size_t i = 0; i < fLoads.size(); i++)
        sTicks[i] += fOffline[i] ? 0 : microseconds / 10000 * fLoads[i] / 100;
    WriteStat();
    sNow += microseconds;
}

void RecordedMachine::ResetCounts()
{
    sTicks = {};
    WriteStat();
}

void RecordedMachine::Pass(bigtime_t microseconds)
{
    sNow += microseconds;
}

void RecordedMachine::Write(const std::string& file, const std::string& text) const
{
    sTree.Write(file, text);
}

std::string RecordedMachine::Text(const std::string& file) const
{
    return sTree.Text(file);
}

bigtime_t RecordedMachine::Now() const
{
    return sNow;
}

bigtime_t RecordedMachine::SystemTime()
{
    return sNow;
}

bigtime_t RecordedMachine::WallTime()
{
    return 1700000000LL * 1000000 + sNow;
}

void RecordedMachine::SetUsedPages(int64 pages)
{
    sTree.Write("proc/meminfo", "MemTotal: " + std::to_string(kTotalPages * 4) + " kB\nMemFree: 0 kB\nMemAvailable: " +
                                    std::to_string((kTotalPages - pages) * 4) + " kB\n");
}

void RecordedMachine::SetPageFaults(int64 faults)
{
    sTree.Write("proc/vmstat", "nr_free_pages 0\npgfault " + std::to_string(faults) + "\n");
}

void RecordedMachine::WriteStat() const
{
    std::string text = "cpu  0 0 0 0 0 0 0 0 0 0\n";
    for (size_t i = 0; i < sTicks.size(); i++) {
        if (fOffline[i])
            continue;
        text += "cpu" + std::to_string(i) + " " + std::to_string(sTicks[i]) + " 0 0 0 0 0 0 0 0 0\n";
    }
    text += "btime 1700000000\n";
    sTree.Write("proc/stat", text);
}

void AwaitSamplerAsleep()
{
    thread_info info;
    do {
        snooze(1000);
        info = {};
        get_thread_info(find_thread("Sysinfo sampler"), &info);
    } while (info.state != B_THREAD_ASLEEP);
}
