// SPDX-License-Identifier: MIT
#include "kits/kernel/record/SystemReader.h"

#include "tests/kits/kernel/record/Reading.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using kits::SystemReader;

namespace {

kits::SystemFigures FiguresOf(const Reading& reading)
{
    kits::SystemFigures figures;
    reading.reader.GetFigures(&figures);
    return figures;
}

} // namespace

TEST(SystemReaderTest, TwoProcessors)
{
    const Reading machine(MachineFolder("two-processors").c_str());
    const system_info& info = machine.info;
    EXPECT_EQ(info.cpu_count, 2);
    EXPECT_EQ(ActiveInRecord(info, 0), 977123 * kTick);
    EXPECT_EQ(ActiveInRecord(info, 1), 1006090 * kTick);
    EXPECT_EQ(ActiveInRecord(info, 2), 0);
    EXPECT_EQ(machine.active[0], 977123 * kTick);
    EXPECT_EQ(machine.active[1], 1006090 * kTick);
    EXPECT_EQ(machine.active[2], -1) << "there is no third";
    EXPECT_EQ(info.max_pages, 8028864 / 4);
    EXPECT_EQ(info.used_pages, (8028864 - 5123456) / 4);
    EXPECT_EQ(info.page_faults, 2888467);
    EXPECT_EQ(info.max_sems, 32000) << "the kernel allows more";
    EXPECT_EQ(info.used_sems, 18);
    EXPECT_EQ(info.max_ports, 65536) << "the kernel allows more";
    EXPECT_EQ(info.used_ports, 231);
    EXPECT_EQ(info.max_threads, 10340) << "of the user's control group";
    EXPECT_EQ(info.used_threads, 412);
    EXPECT_EQ(info.max_teams, 10340);
    EXPECT_EQ(info.used_teams, 5);
    EXPECT_STREQ(info.kernel_name, "Linux 6.1.0-28-amd64");
    EXPECT_EQ(bigtime_t{info.boot_time}, 1735725600 * kSecond);
    EXPECT_EQ(info.id[0], 0);
    EXPECT_EQ(info.pad[3], 0);
}

TEST(SystemReaderTest, EightProcessors)
{
    const Reading machine(MachineFolder("eight-processors").c_str());
    EXPECT_EQ(machine.info.cpu_count, 8);
    EXPECT_EQ(machine.active[0], (247718 + 6068 + 206801 + 717 + 43) * kTick);
    for (size_t i = 0; i < 8; ++i) {
        EXPECT_GT(machine.active[i], 0);
        EXPECT_EQ(ActiveInRecord(machine.info, i), machine.active[i]);
    }
    EXPECT_EQ(machine.active[8], -1);
    EXPECT_EQ(machine.info.max_teams, 127648) << "the user's limit";
    EXPECT_EQ(machine.info.max_threads, 127000) << "the machine's limit";
    EXPECT_EQ(machine.info.used_teams, 7);
    EXPECT_EQ(machine.info.page_faults, 918273645);
}

TEST(SystemReaderTest, FourTebibytes)
{
    const Reading machine(MachineFolder("four-tebibytes").c_str());
    EXPECT_EQ(machine.info.cpu_count, 64);
    EXPECT_EQ(machine.info.max_pages, 1073741824);
    EXPECT_EQ(machine.info.used_pages, 26214400);
    EXPECT_EQ(machine.info.page_faults, 123456789) << "the low 32 bits";
    EXPECT_GT(machine.active[63], 0);
    EXPECT_EQ(machine.info.used_threads, 21930);
    EXPECT_EQ(machine.info.max_teams, 4194304);
    EXPECT_EQ(machine.info.max_threads, 4194304);
    EXPECT_EQ(FiguresOf(machine).maxPages, 1073741824) << "as in the record";
    EXPECT_EQ(FiguresOf(machine).usedPages, 26214400);
}

TEST(SystemReaderTest, TwelveTebibytes)
{
    const Reading machine(MachineFolder("twelve-tebibytes").c_str());
    EXPECT_EQ(machine.info.max_pages, INT32_MAX);
    EXPECT_EQ(machine.info.used_pages, 1610612736);
    EXPECT_EQ(FiguresOf(machine).maxPages, 3221225472) << "12 TiB";
    EXPECT_EQ(FiguresOf(machine).usedPages, 1610612736) << "6 TiB";
}

TEST(SystemReaderTest, AnOldKernel)
{
    const Reading machine(MachineFolder("old-kernel").c_str());
    EXPECT_EQ(machine.info.cpu_count, 2);
    EXPECT_EQ(machine.active[0], (793591 + 3321 + 355761 + 9842) * kTick);
    EXPECT_EQ(machine.info.max_pages, 2061312 / 4);
    EXPECT_EQ(machine.info.used_pages, 0) << "it does not tell";
    EXPECT_EQ(machine.info.page_faults, 0) << "it does not tell";
    EXPECT_EQ(machine.info.max_teams, 700) << "a control group of the old kind";
    EXPECT_EQ(machine.info.max_sems, 4000);
    EXPECT_EQ(machine.info.max_ports, 40200);
}

TEST(SystemReaderTest, OneOffline)
{
    const Reading machine(MachineFolder("one-offline").c_str());
    EXPECT_EQ(machine.info.cpu_count, 4);
    EXPECT_GT(machine.active[1], 0);
    EXPECT_EQ(machine.active[2], 0);
    EXPECT_GT(machine.active[3], 0);
}

TEST(SystemReaderTest, TheHighestOneOfflineAtTheStartIsNotCounted)
{
    RecordedMachine machine(4);
    machine.WriteProcessors({5, 5, 5, -1});
    Reading reading(machine);
    EXPECT_EQ(reading.info.cpu_count, 3);
    machine.WriteProcessors({5, 5, 10, 500});
    reading.Read(kSecond);
    EXPECT_EQ(reading.info.cpu_count, 3);
    EXPECT_EQ(reading.active[2], 10 * kTick);
    EXPECT_EQ(reading.active[3], -1);
    EXPECT_EQ(Reading(machine).info.cpu_count, 4) << "from the next start";
}

TEST(SystemReaderTest, AProcessorThatComesAndGoes)
{
    RecordedMachine machine(2);
    machine.WriteProcessors({100, 200});
    Reading reading(machine);
    machine.WriteProcessors({110, -1});
    reading.Read(kSecond);
    EXPECT_EQ(reading.active[0], 110 * kTick);
    EXPECT_EQ(reading.active[1], 200 * kTick);
    machine.WriteProcessors({120, 205});
    reading.Read(kSecond);
    EXPECT_EQ(reading.active[1], 205 * kTick);
}

TEST(SystemReaderTest, ManyProcessors)
{
    for (int count : {64, 256, 1024}) {
        RecordedMachine machine(count);
        std::vector<long long> ticks(static_cast<size_t>(count));
        for (size_t i = 0; i < ticks.size(); ++i)
            ticks[i] = 1000 + static_cast<long long>(i) * 7;
        machine.WriteProcessors(ticks);
        Reading reading(machine);
        ASSERT_EQ(reading.info.cpu_count, count);
        for (size_t i = 0; i < ticks.size(); ++i)
            ASSERT_EQ(reading.active[i], ticks[i] * kTick);
        for (long long& tick : ticks)
            tick += 3;
        machine.WriteProcessors(ticks);
        reading.Read(kSecond);
        for (size_t i = 0; i < ticks.size(); ++i)
            ASSERT_EQ(reading.active[i], ticks[i] * kTick);
    }
}

TEST(SystemReaderTest, NoMoreProcessorsThanThereIsRoomFor)
{
    RecordedMachine machine(1030);
    Reading reading(machine);
    EXPECT_EQ(reading.info.cpu_count, 1024);
    EXPECT_EQ(reading.active[1023], 0);
}

TEST(SystemReaderTest, LinesAsLongAsTheyGet)
{
    RecordedMachine machine(2);
    Reading reading(machine);
    std::string line;
    for (int i = 0; i < 10; ++i)
        line += " 18446744073709551615";
    machine.Write("proc/stat", "cpu" + line + "\ncpu0" + line + "\ncpu1 7 0 0 0 0 0 0 0 0 0\nintr 0\n");
    reading.Read(kSecond);
    EXPECT_EQ(reading.active[0], kSecond) << "no more than the time in between";
    EXPECT_EQ(reading.active[1], 7 * kTick);
}

TEST(SystemReaderTest, FillsOnlyWhatThereIsRoomFor)
{
    SystemReader reader(MachineFolder("eight-processors").c_str());
    system_info info;
    bigtime_t active[3] = {-1, -1, -1};
    reader.Read(0, &info, active, 2);
    EXPECT_GT(active[0], 0);
    EXPECT_GT(active[1], 0);
    EXPECT_EQ(active[2], -1);
    reader.Read(0, &info, nullptr, 0);
    EXPECT_EQ(info.cpu_count, 8);
}

TEST(SystemReaderTest, CountersThatGoBack)
{
    RecordedMachine machine("two-processors");
    Reading reading(machine);
    const Reading before(machine);
    machine.Replace("proc/stat", "cpu0 915035", "cpu0 915030");
    machine.Replace("proc/stat", "cpu1 858258", "cpu1 3");
    reading.Read(kSecond);
    EXPECT_EQ(reading.active[0], before.active[0]);
    EXPECT_EQ(reading.active[1], before.active[1]);
    machine.Replace("proc/stat", "cpu0 915030", "cpu0 915037");
    machine.Replace("proc/stat", "cpu1 3", "cpu1 7");
    reading.Read(kSecond);
    EXPECT_EQ(reading.active[0], before.active[0] + 2 * kTick);
    EXPECT_EQ(reading.active[1], before.active[1] + 4 * kTick);
}

TEST(SystemReaderTest, AFileThatAppearsIsReadFromTheNextSecondOn)
{
    RecordedMachine machine("two-processors");
    const std::string text = machine.Text("proc/loadavg");
    machine.Remove("proc/loadavg");
    Reading reading(machine);
    EXPECT_EQ(reading.info.used_threads, 0);
    machine.Write("proc/loadavg", text);
    reading.Read(kSecond / 2);
    EXPECT_EQ(reading.info.used_threads, 0);
    reading.Read(kSecond / 2);
    EXPECT_EQ(reading.info.used_threads, 412);
}

TEST(SystemReaderTest, LimitsAreReadEveryTenSeconds)
{
    RecordedMachine machine("eight-processors");
    Reading reading(machine);
    machine.Write("proc/sys/kernel/threads-max", "5000\n");
    reading.Read(kBetweenLimits - 1);
    EXPECT_EQ(reading.info.max_threads, 127000);
    reading.Read(1);
    EXPECT_EQ(reading.info.max_threads, 5000);
    machine.Write("proc/sys/kernel/threads-max", "6000\n");
    reading.Read(-kSecond / 2);
    EXPECT_EQ(reading.info.max_threads, 6000) << "a clock that went back is no reason to wait";
}

TEST(SystemReaderTest, TheLowestLimitCounts)
{
    RecordedMachine machine("two-processors");
    machine.Write("proc/loadavg", "0 0 0 1/50 5\n");
    Reading reading(machine);
    const std::string groups = "sys/fs/cgroup/user.slice/";
    machine.Write(groups + "user-1000.slice/session-2.scope/pids.max", "300\n");
    reading.Read(kBetweenLimits);
    EXPECT_EQ(reading.info.max_teams, 300);
    machine.Write(groups + "pids.max", "200\n");
    reading.Read(kBetweenLimits);
    EXPECT_EQ(reading.info.max_teams, 200) << "of a group above";
    EXPECT_EQ(reading.info.max_threads, 200);
    machine.Write("proc/sys/kernel/threads-max", "150\n");
    reading.Read(kBetweenLimits);
    EXPECT_EQ(reading.info.max_teams, 200);
    EXPECT_EQ(reading.info.max_threads, 150);
    machine.Write("proc/sys/kernel/pid_max", "100\n");
    reading.Read(kBetweenLimits);
    EXPECT_EQ(reading.info.max_teams, 100);
    EXPECT_EQ(reading.info.max_threads, 100);
    machine.Write("proc/sys/kernel/pid_max", "0\n");
    machine.Write("proc/loadavg", "0 0 0 1/0 5\n");
    reading.Read(kBetweenLimits);
    EXPECT_EQ(reading.info.max_threads, 1);
}

TEST(SystemReaderTest, TheMaximumIsAtLeastWhatIsInUse)
{
    // Limits of a container that may have few processes, on a machine with many threads, semaphores and sockets.
    RecordedMachine machine("two-processors");
    machine.Write("sys/fs/cgroup/user.slice/pids.max", "3\n");
    machine.Write("proc/sys/kernel/sem", "32000 10 500 128\n");
    machine.Write("proc/net/sockstat", "sockets: used 100000\n");
    Reading reading(machine);
    EXPECT_EQ(reading.info.max_teams, 5);
    EXPECT_EQ(reading.info.used_teams, 5);
    EXPECT_EQ(reading.info.max_threads, 412);
    EXPECT_EQ(reading.info.used_threads, 412);
    EXPECT_EQ(reading.info.max_sems, 18);
    EXPECT_EQ(reading.info.used_sems, 18);
    EXPECT_EQ(reading.info.max_ports, 100000);
    EXPECT_EQ(reading.info.used_ports, 100000);
    machine.Write("proc/loadavg", "0 0 0 1/2 5\n");
    machine.Write("proc/net/sockstat", "sockets: used 200000\n");
    reading.Read(kSecond / 10);
    EXPECT_EQ(reading.info.max_threads, 3) << "the limit again";
    EXPECT_EQ(reading.info.max_ports, 200000) << "at once";
}

TEST(SystemReaderTest, MemoryThatGoesWithoutAWordOfWhatIsAvailable)
{
    RecordedMachine machine("two-processors");
    Reading reading(machine);
    machine.Write("proc/meminfo", "MemTotal: 400000 kB\n");
    reading.Read(kSecond);
    EXPECT_EQ(reading.info.max_pages, 100000);
    EXPECT_EQ(reading.info.used_pages, 100000) << "no more than there is";
}

TEST(SystemReaderTest, TheLimitOfAUserDoesNotHoldForRoot)
{
    RecordedMachine machine("eight-processors");
    machine.Replace("proc/self/status", "Uid:\t1000", "Uid:\t0");
    EXPECT_EQ(Reading(machine).info.max_teams, 4194304);
}

TEST(SystemReaderTest, AnotherControlGroupIsFoundWithinAMinute)
{
    RecordedMachine machine("two-processors");
    Reading reading(machine);
    machine.Write("sys/fs/cgroup/other/pids.max", "77\n");
    machine.Write("proc/self/cgroup", "0::/other\n");
    reading.Read(30 * kSecond);
    EXPECT_EQ(reading.info.max_teams, 10340);
    reading.Read(30 * kSecond);
    EXPECT_EQ(reading.info.max_teams, 77);
}

TEST(SystemReaderTest, CountsTheProcessesOfARecordedMachine)
{
    RecordedMachine machine("two-processors");
    Reading reading(machine);
    machine.Write("proc/4711/comm", "new\n");
    machine.Write("proc/12x/comm", "no number\n");
    reading.Read(1);
    EXPECT_EQ(reading.info.used_teams, 6);
    machine.Remove("proc/4711");
    machine.Remove("proc/1");
    reading.Read(1);
    EXPECT_EQ(reading.info.used_teams, 4);
}

TEST(SystemReaderTest, MoreMemoryAvailableThanThereIs)
{
    RecordedMachine machine("two-processors");
    machine.Replace("proc/meminfo", " 5123456 kB", "95123456 kB");
    const Reading reading(machine);
    EXPECT_EQ(reading.info.used_pages, 0);
}

TEST(SystemReaderTest, FiguresTooLargeForTheRecord)
{
    RecordedMachine machine("two-processors");
    machine.Write("proc/meminfo", "MemTotal: 99999999999999 kB\nMemAvailable: 1 kB\n");
    machine.Write("proc/loadavg", "0 0 0 1/99999999999999999999999 5\n");
    machine.Write("proc/net/sockstat", "sockets: used 4294967296\n");
    const Reading reading(machine);
    EXPECT_EQ(reading.info.max_pages, INT32_MAX);
    EXPECT_EQ(reading.info.used_pages, INT32_MAX);
    EXPECT_EQ(reading.info.used_threads, INT32_MAX);
    EXPECT_EQ(reading.info.used_ports, INT32_MAX);
    EXPECT_EQ(FiguresOf(reading).maxPages, 99999999999999 / 4);
    EXPECT_EQ(FiguresOf(reading).usedPages, 99999999999998 / 4);
}

TEST(SystemReaderTest, MoreMemoryThanCanBeCounted)
{
    RecordedMachine machine("two-processors");
    machine.Write("proc/meminfo", "MemTotal: 18446744073709551615 kB\nMemAvailable: 0 kB\n");
    const Reading reading(machine);
    EXPECT_EQ(FiguresOf(reading).maxPages, kits::kMaxPages);
    EXPECT_EQ(FiguresOf(reading).usedPages, kits::kMaxPages);
    EXPECT_EQ(reading.info.max_pages, INT32_MAX);
}

TEST(SystemReaderTest, SaysUpToWhenActiveTimesCount)
{
    RecordedMachine machine("two-processors");
    const std::string stat = machine.Text("proc/stat");
    Reading reading(machine);
    const bigtime_t begin = reading.now;
    EXPECT_EQ(FiguresOf(reading).activeUntil, begin);
    machine.Write("proc/stat", "");
    reading.Read(kSecond);
    EXPECT_EQ(FiguresOf(reading).activeUntil, begin);
    machine.Write("proc/stat", stat);
    reading.Read(kSecond);
    EXPECT_EQ(FiguresOf(reading).activeUntil, begin + 2 * kSecond);
}

TEST(SystemReaderTest, PageFaultsCountOnPastTheLargestNumber)
{
    RecordedMachine machine("two-processors");
    machine.Replace("proc/vmstat", "pgfault 2888467", "pgfault 2147483647");
    Reading reading(machine);
    EXPECT_EQ(reading.info.page_faults, INT32_MAX);
    machine.Replace("proc/vmstat", "pgfault 2147483647", "pgfault 2147483648");
    reading.Read(kSecond);
    EXPECT_EQ(reading.info.page_faults, INT32_MIN);
}

TEST(SystemReaderTest, WithoutStatTheProcessorsOnlineTellTheirNumber)
{
    RecordedMachine machine("eight-processors");
    machine.Write("proc/stat", "");
    EXPECT_EQ(Reading(machine).info.cpu_count, 8);
}
