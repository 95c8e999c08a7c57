// SPDX-License-Identifier: MIT
#include "tests/kits/kernel/record/Reading.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <string_view>

// The machine's files, truncated, empty, missing or full of garbage.

namespace {

/// Compares everything except the active times and the limits, which have tests of their own.
void ExpectSameFigures(const system_info& info, const system_info& expected, const std::string& where)
{
    EXPECT_EQ(info.cpu_count, expected.cpu_count) << where;
    EXPECT_EQ(info.max_pages, expected.max_pages) << where;
    EXPECT_EQ(info.used_pages, expected.used_pages) << where;
    EXPECT_EQ(info.page_faults, expected.page_faults) << where;
    EXPECT_EQ(info.max_sems, expected.max_sems) << where;
    EXPECT_EQ(info.used_sems, expected.used_sems) << where;
    EXPECT_EQ(info.max_ports, expected.max_ports) << where;
    EXPECT_EQ(info.used_ports, expected.used_ports) << where;
    EXPECT_EQ(info.max_threads, expected.max_threads) << where;
    EXPECT_EQ(info.used_threads, expected.used_threads) << where;
    EXPECT_EQ(info.max_teams, expected.max_teams) << where;
    EXPECT_EQ(info.used_teams, expected.used_teams) << where;
}

constexpr const char* kFiles[] = {"proc/stat",
                                  "proc/meminfo",
                                  "proc/vmstat",
                                  "proc/loadavg",
                                  "proc/net/sockstat",
                                  "proc/sysvipc/sem",
                                  "proc/sys/kernel/sem",
                                  "proc/sys/kernel/pid_max",
                                  "proc/sys/kernel/threads-max",
                                  "proc/sys/fs/file-max",
                                  "proc/self/limits",
                                  "proc/self/status",
                                  "proc/self/cgroup",
                                  "sys/fs/cgroup/user.slice/user-1000.slice/pids.max"};

/// Returns whether the file is a limit of this process or its group, which may not exist.
bool MayBeLifted(std::string_view file)
{
    return file.starts_with("proc/self/") || file.starts_with("sys/");
}

} // namespace

TEST(SystemReaderDamageTest, EmptyFilesKeepTheLastValues)
{
    RecordedMachine machine("two-processors");
    Reading reading(machine);
    const system_info whole = reading.info;
    // The kit cannot know that limits of a process and its group exist, so a lost one counts as lifted.
    for (const char* file : kFiles)
        if (!MayBeLifted(file))
            machine.Write(file, "");
    reading.Read(kBetweenLimits);
    ExpectSameFigures(reading.info, whole, "emptied");
    EXPECT_EQ(reading.active[0], ActiveInRecord(whole, 0));
}

TEST(SystemReaderDamageTest, AFileCutAnywhereKeepsTheLastValuesOrTheWholeOnes)
{
    for (const std::string file : kFiles) {
        if (MayBeLifted(file))
            continue;
        RecordedMachine machine("two-processors");
        // Makes the machine's own limits the lowest.
        machine.Remove("proc/self/limits");
        machine.Remove("sys/fs/cgroup");
        machine.Write("proc/sys/kernel/pid_max", "12345\n");
        machine.Write("proc/sys/kernel/threads-max", "2345\n");
        Reading reading(machine);
        const system_info whole = reading.info;
        ASSERT_EQ(whole.max_teams, 12345);
        ASSERT_EQ(whole.max_threads, 2345);
        const std::filesystem::path path = std::filesystem::path(machine.Root()) / file;
        for (size_t length = std::filesystem::file_size(path); length-- > 0;) {
            std::filesystem::resize_file(path, length);
            // A list that ends with a whole line may be a shorter list.
            if (file == "proc/sysvipc/sem" && machine.Text(file).ends_with('\n'))
                continue;
            reading.Read(kBetweenLimits);
            ExpectSameFigures(reading.info, whole, file + " cut at " + std::to_string(length));
            ASSERT_EQ(reading.active[0], ActiveInRecord(whole, 0));
            ASSERT_EQ(reading.active[1], ActiveInRecord(whole, 1));
            if (HasFailure())
                return;
        }
    }
}

TEST(SystemReaderDamageTest, AFileCutAnywhereAtTheStartGivesTheWholeFigureOrNone)
{
    const auto isOneOf = [](int32 found, int32 whole, int32 none) { return found == whole || found == none; };
    for (const std::string file : kFiles) {
        RecordedMachine machine("two-processors");
        const system_info whole = Reading(machine).info;
        const std::filesystem::path path = std::filesystem::path(machine.Root()) / file;
        for (size_t length = std::filesystem::file_size(path); length-- > 0;) {
            std::filesystem::resize_file(path, length);
            if (file == "proc/sysvipc/sem" && machine.Text(file).ends_with('\n'))
                continue;
            Reading reading(machine);
            const system_info& info = reading.info;
            const std::string where = file + " cut at " + std::to_string(length);
            // Without any processor in `proc/stat`, the reader counts those online.
            EXPECT_TRUE(isOneOf(info.cpu_count, 2, 1)) << where;
            for (size_t i = 0; i < 2; ++i) {
                EXPECT_TRUE(ActiveInRecord(info, i) == ActiveInRecord(whole, i) || ActiveInRecord(info, i) == 0)
                    << where;
            }
            EXPECT_TRUE(isOneOf(info.max_pages, whole.max_pages, 1)) << where;
            EXPECT_TRUE(isOneOf(info.used_pages, whole.used_pages, 0)) << where;
            EXPECT_TRUE(isOneOf(info.page_faults, whole.page_faults, 0)) << where;
            EXPECT_TRUE(isOneOf(info.used_sems, whole.used_sems, 0)) << where;
            EXPECT_TRUE(isOneOf(info.used_ports, whole.used_ports, 0)) << where;
            EXPECT_TRUE(isOneOf(info.used_threads, whole.used_threads, 0)) << where;
            EXPECT_TRUE(isOneOf(info.max_sems, whole.max_sems, info.used_sems)) << where;
            EXPECT_TRUE(isOneOf(info.max_ports, whole.max_ports, info.used_ports)) << where;
            EXPECT_GE(info.max_teams, whole.max_teams) << where;
            EXPECT_GE(info.max_threads, whole.max_threads) << where;
            if (HasFailure())
                return;
        }
    }
}

TEST(SystemReaderDamageTest, AMachineWithNothing)
{
    RecordedMachine machine(1);
    machine.Remove("proc");
    Reading reading(machine);
    reading.Read(kSecond);
    EXPECT_EQ(reading.info.cpu_count, 1);
    EXPECT_EQ(reading.active[0], 0);
    EXPECT_EQ(reading.info.max_pages, 1);
    EXPECT_EQ(reading.info.used_pages, 0);
    EXPECT_EQ(reading.info.max_sems, 1);
    EXPECT_EQ(reading.info.max_ports, 1);
    EXPECT_EQ(reading.info.max_threads, 1);
    EXPECT_EQ(reading.info.max_teams, 1);
    EXPECT_EQ(reading.info.used_teams, 0);
    EXPECT_STREQ(reading.info.kernel_name, " ");
}

TEST(SystemReaderDamageTest, EveryFileMayBeMissing)
{
    for (const char* missing : kFiles) {
        RecordedMachine machine("two-processors");
        machine.Remove(missing);
        Reading reading(machine);
        reading.Read(kSecond);
        EXPECT_EQ(reading.info.cpu_count, 2) << missing;
        EXPECT_GE(reading.info.max_pages, 1) << missing;
        EXPECT_GE(reading.info.max_sems, 1) << missing;
        EXPECT_GE(reading.info.max_ports, 1) << missing;
        EXPECT_GE(reading.info.max_threads, 1) << missing;
        EXPECT_GE(reading.info.max_teams, 1) << missing;
    }
}

TEST(SystemReaderDamageTest, EveryFileMayHoldAnything)
{
    const std::string contents[] = {std::string(100000, '9'),
                                    std::string(100000, '\n'),
                                    std::string(5000, '\0'),
                                    std::string(300000, ' '),
                                    "cpu0 cpu1 cpu2\npgfault pgfault\nsockets: used\n",
                                    "-1\n",
                                    "\xff\xfe\n"};
    for (const char* file : kFiles) {
        RecordedMachine machine("two-processors");
        Reading reading(machine);
        const system_info whole = reading.info;
        for (const std::string& text : contents) {
            machine.Write(file, text);
            reading.Read(kBetweenLimits);
            EXPECT_EQ(reading.active[0], ActiveInRecord(whole, 0)) << file;
            EXPECT_EQ(reading.info.used_pages, whole.used_pages) << file;
            Reading fresh(machine);
            EXPECT_GE(fresh.info.cpu_count, 1) << file;
            EXPECT_GE(fresh.info.max_teams, 1) << file;
        }
    }
}
