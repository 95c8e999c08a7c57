// SPDX-License-Identifier: MIT
#include "kits/kernel/SystemInfo.h"

#include "kits/kernel/Clock.h"
#include "kits/kernel/Errors.h"
#include "tests/support/Await.h"
#include "tests/support/RecordedMachine.h"

#include <gtest/gtest.h>
#include <sched.h>
#include <stdlib.h>
#include <sys/sem.h>
#include <sys/socket.h>
#include <unistd.h>

#include <atomic>
#include <cstddef>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

using test::Await;
using test::TestThread;

namespace fs = std::filesystem;

namespace {

system_info Now()
{
    system_info info;
    EXPECT_EQ(get_system_info(&info), B_OK);
    return info;
}

long long CountProcesses()
{
    long long count = 0;
    for (const fs::directory_entry& entry : fs::directory_iterator("/proc")) {
        const std::string name = entry.path().filename();
        if (name.find_first_not_of("0123456789") == std::string::npos)
            ++count;
    }
    return count;
}

long long CountThreads()
{
    std::ifstream file("/proc/loadavg");
    std::string word;
    for (int i = 0; i < 4; ++i)
        file >> word;
    return std::stoll(word.substr(word.find('/') + 1));
}

long long MemoryFigure(const std::string& key)
{
    std::ifstream file("/proc/meminfo");
    std::string word;
    long long value = -1;
    while (file >> word)
        if (word == key + ":")
            file >> value;
    return value;
}

/// Awaits a moment at which the machine's own value stands still, and compares the figure with it. The figure may count
/// objects that come and go within that moment.
template <class Figure, class Truth> void ExpectAgreement(Figure figure, Truth truth, long long tolerance)
{
    long long before = 0;
    long long value = 0;
    ASSERT_TRUE(test::Await([&] {
        before = truth();
        value = figure();
        return std::abs(truth() - before) <= tolerance / 8;
    }));
    EXPECT_NEAR(value, before, tolerance);
}

} // namespace

TEST(SystemInfoTest, TheRecordHasItsLayout)
{
    EXPECT_EQ(sizeof(system_info), 508u);
    EXPECT_EQ(offsetof(system_info, boot_time), 8u);
    EXPECT_EQ(offsetof(system_info, cpu_count), 16u);
    EXPECT_EQ(offsetof(system_info, cpu_infos), 28u);
    EXPECT_EQ(offsetof(system_info, platform_type), 108u);
    EXPECT_EQ(offsetof(system_info, max_pages), 112u);
    EXPECT_EQ(offsetof(system_info, used_pages), 116u);
    EXPECT_EQ(offsetof(system_info, page_faults), 120u);
    EXPECT_EQ(offsetof(system_info, max_sems), 124u);
    EXPECT_EQ(offsetof(system_info, used_teams), 152u);
    EXPECT_EQ(offsetof(system_info, kernel_name), 156u);
    EXPECT_EQ(offsetof(system_info, kernel_build_date), 412u);
    EXPECT_EQ(offsetof(system_info, kernel_version), 476u);
    EXPECT_EQ(offsetof(system_info, pad), 492u);
}

TEST(SystemInfoTest, RefusesBadArguments)
{
    system_info info;
    kits::SystemFigures figures;
    bigtime_t active;
    EXPECT_EQ(get_system_info(nullptr), B_BAD_VALUE);
    EXPECT_EQ(kits::ReadSystem(nullptr, &figures, &active, 1), B_BAD_VALUE);
    EXPECT_EQ(kits::ReadSystem(&info, nullptr, &active, 1), B_BAD_VALUE);
    EXPECT_EQ(kits::ReadSystem(&info, &figures, &active, -1), B_BAD_VALUE);
    EXPECT_EQ(kits::ReadSystem(&info, &figures, nullptr, 1), B_BAD_VALUE);
}

TEST(SystemInfoTest, KnowsTheProcessors)
{
    const system_info info = Now();
    EXPECT_GE(info.cpu_count, 1);
    EXPECT_GE(info.cpu_count, sysconf(_SC_NPROCESSORS_ONLN));
    EXPECT_EQ(std::string(info.kernel_name).substr(0, 6), "Linux ");
}

TEST(SystemInfoTest, MemoryAgreesWithTheMachine)
{
    EXPECT_EQ(Now().max_pages, MemoryFigure("MemTotal") / 4);
    ExpectAgreement([] { return Now().used_pages; },
                    [] { return (MemoryFigure("MemTotal") - MemoryFigure("MemAvailable")) / 4; }, Now().max_pages / 16);
}

TEST(SystemInfoTest, ProcessesAgreeWithTheMachine)
{
    ExpectAgreement([] { return Now().used_teams; }, CountProcesses, 16);
    EXPECT_GT(Now().max_teams, Now().used_teams);
}

TEST(SystemInfoTest, ThreadsAgreeWithTheMachine)
{
    ExpectAgreement([] { return Now().used_threads; }, CountThreads, 16);
    TestThread extra([] {
        snooze(B_INFINITE_TIMEOUT);
        return 0;
    });
    ExpectAgreement([] { return Now().used_threads; }, CountThreads, 16);
    EXPECT_GT(Now().max_threads, 1);
}

TEST(SystemInfoTest, SemaphoresAgreeWithTheMachine)
{
    const auto used = [] { return static_cast<long long>(Now().used_sems); };
    const auto truth = [] {
        seminfo figures{};
        semctl(0, 0, SEM_INFO, &figures);
        return static_cast<long long>(figures.semaem);
    };
    ExpectAgreement(used, truth, 8);
    const int set = semget(IPC_PRIVATE, 5, IPC_CREAT | 0600);
    ASSERT_GE(set, 0);
    ExpectAgreement(used, truth, 8);
    EXPECT_GE(used(), 5);
    semctl(set, 0, IPC_RMID);
    EXPECT_GE(Now().max_sems, 1);
    EXPECT_LE(Now().max_sems, 32000);
}

TEST(SystemInfoTest, SocketsAgreeWithTheMachine)
{
    const auto truth = [] {
        std::ifstream file("/proc/net/sockstat");
        std::string word;
        long long count = -1;
        file >> word >> word >> count;
        return count;
    };
    ExpectAgreement([] { return Now().used_ports; }, truth, 16);
    EXPECT_GE(Now().max_ports, 1);
    EXPECT_LE(Now().max_ports, 65536);
}

TEST(SystemInfoTest, PageFaultsAreSeen)
{
    const int32 before = Now().page_faults;
    std::vector<char> touched(16 << 20, 1);
    EXPECT_TRUE(Await([&] {
        touched.assign(touched.size(), 2);
        touched.shrink_to_fit();
        std::vector<char>(16 << 20, 1).swap(touched);
        return static_cast<int32>(static_cast<uint32>(Now().page_faults) - static_cast<uint32>(before)) > 1000;
    }));
}

TEST(SystemInfoTest, SeesAProcessorThatIsLoaded)
{
    cpu_set_t all;
    ASSERT_EQ(sched_getaffinity(0, sizeof(all), &all), 0);
    int chosen = CPU_SETSIZE - 1;
    while (!CPU_ISSET(chosen, &all))
        --chosen;

    std::atomic<bool> isOver = false;
    std::atomic<bool> isLoaded = false;
    TestThread load([&] {
        cpu_set_t one;
        CPU_ZERO(&one);
        CPU_SET(chosen, &one);
        EXPECT_EQ(sched_setaffinity(0, sizeof(one), &one), 0);
        isLoaded = true;
        while (!isOver) {
        }
        return 0;
    });
    load.Start();
    std::vector<bigtime_t> before(kits::kMaxProcessors);
    std::vector<bigtime_t> after(kits::kMaxProcessors);
    const auto read = [](std::vector<bigtime_t>& active) {
        system_info info;
        kits::SystemFigures figures;
        EXPECT_EQ(kits::ReadSystem(&info, &figures, active.data(), static_cast<int32>(active.size())), B_OK);
        EXPECT_LE(info.cpu_count, kits::kMaxProcessors);
        EXPECT_EQ(figures.activeUntil, figures.time);
        return figures.time;
    };
    EXPECT_TRUE(test::Await([&] { return isLoaded.load(); }));
    const bigtime_t begin = read(before);
    EXPECT_TRUE(test::Await([begin] { return system_time() > begin + 300000; }));
    const bigtime_t end = read(after);
    const bigtime_t active = after[static_cast<size_t>(chosen)] - before[static_cast<size_t>(chosen)];
    EXPECT_LE(active, end - begin);
    EXPECT_GE(active * 10, (end - begin) * 8) << "a loaded processor is seen as loaded";
    isOver = true;
    load.Join();
}

TEST(SystemInfoTest, ARecordedMachineTakesThePlaceOfThisOne)
{
    // The process makes its reader once, so the test takes a process of its own.
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(
        {
            setenv("KITS_ROOT", MachineFolder("four-tebibytes").c_str(), 1);
            const system_info info = Now();
            _exit(info.cpu_count == 64 && info.max_pages == 1073741824 && info.used_teams == 3 ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}

TEST(SystemInfoTest, TellsWhichFolderOfARecordedMachineIsMissing)
{
    const RecordedMachine machine("two-processors");
    const std::string root = machine.Root();
    machine.Write("empty/file", "text");
    const auto check = [](const std::string& folder) {
        setenv("KITS_ROOT", folder.c_str(), 1);
        std::string missing;
        const status_t status = kits::CheckSystem(&missing);
        unsetenv("KITS_ROOT");
        return std::pair(status, missing);
    };
    EXPECT_EQ(check(root), std::pair(B_OK, std::string()));
    EXPECT_EQ(check(""), std::pair(B_OK, std::string()));
    EXPECT_EQ(check("/"), std::pair(B_OK, std::string()));
    EXPECT_EQ(check(root + "/nowhere"), std::pair(B_ENTRY_NOT_FOUND, root + "/nowhere"));
    EXPECT_EQ(check(root + "/empty"), std::pair(B_ENTRY_NOT_FOUND, root + "/empty/proc"));
    EXPECT_EQ(check(root + "/empty/file"), std::pair(B_NOT_A_DIRECTORY, root + "/empty/file"));
    std::string missing;
    EXPECT_EQ(kits::CheckSystem(&missing), B_OK);
}
