// SPDX-License-Identifier: MIT
#include "kits/kernel/record/MachineTexts.h"

#include <gtest/gtest.h>

#include <string>

using namespace kits;

TEST(MachineTextsTest, Memory)
{
    MemoryTexts memory = ParseMemInfo("MemTotal:        8028864 kB\nMemFree:   1 kB\nMemAvailable:    5123456 kB\n");
    EXPECT_EQ(memory.total, 8028864u);
    EXPECT_EQ(memory.available, 5123456u);
    memory = ParseMemInfo("MemTotal:        8028864 kB\nMemFree:   1 kB\n");
    EXPECT_EQ(memory.total, 8028864u);
    EXPECT_EQ(memory.available, std::nullopt);
    memory = ParseMemInfo("MemTotal:        80288");
    EXPECT_EQ(memory.total, std::nullopt);
}

TEST(MachineTextsTest, PageFaults)
{
    const std::string text = "nr_free_pages 5\nthp_pgfault 7\npgfault 2888467\npgmajfault 12\n";
    size_t hint = 0;
    EXPECT_EQ(ParsePageFaults(text, &hint), 2888467u);
    EXPECT_EQ(hint, text.find("pgfault 288"));
    EXPECT_EQ(ParsePageFaults(text, &hint), 2888467u);
    EXPECT_EQ(ParsePageFaults("pgfault 1\n", &hint), 1u) << "also if the line is where it was not";
    EXPECT_EQ(hint, 0u);
    hint = 100000;
    EXPECT_EQ(ParsePageFaults(text, &hint), 2888467u);
    std::string moved(500, 'x');
    moved += "\npgfault 3\n";
    EXPECT_EQ(ParsePageFaults(moved, &hint), 3u);
    EXPECT_EQ(ParsePageFaults(text, &hint), 2888467u);
    EXPECT_EQ(ParsePageFaults("nr_free_pages 5\npgmajfault 12\n", &hint), std::nullopt);
    EXPECT_EQ(ParsePageFaults("pgfault 288", &hint), std::nullopt);
    EXPECT_EQ(ParsePageFaults("", &hint), std::nullopt);
}

TEST(MachineTextsTest, Threads)
{
    EXPECT_EQ(ParseThreadCount("0.31 0.24 0.19 2/412 48213\n"), 412u);
    EXPECT_EQ(ParseThreadCount("0.31 0.24 0.19 2/41"), std::nullopt);
    EXPECT_EQ(ParseThreadCount("0.31 0.24 0.19\n"), std::nullopt);
    EXPECT_EQ(ParseThreadCount("0.31 0.24 0.19 2 412 5\n"), std::nullopt);
    EXPECT_EQ(ParseThreadCount(""), std::nullopt);
}

TEST(MachineTextsTest, Semaphores)
{
    EXPECT_EQ(ParseLargestSemCount("32000\t1024000000\t500\t32000\n"), 1024000000u);
    EXPECT_EQ(ParseLargestSemCount("250 4000 32 128\n"), 4000u);
    EXPECT_EQ(ParseLargestSemCount("32000"), std::nullopt);
    EXPECT_EQ(ParseLargestSemCount("32000\t10"), std::nullopt);

    const std::string heading = "       key      semid perms      nsems   uid\n";
    EXPECT_EQ(ParseSemCount(heading), 0u);
    EXPECT_EQ(ParseSemCount(heading + "  0  0   600  1  1000\n1376321553  1  666 17 33\n"), 18u);
    EXPECT_EQ(ParseSemCount(heading + "  0  0   600  1  1000\n1376321553  1  666 17"), std::nullopt) << "a cut line";
    EXPECT_EQ(ParseSemCount(heading + "\n  \nnonsense\n  0  0  600  2  1\n"), 2u);
    EXPECT_EQ(ParseSemCount("  0  0   600  1  1000\n"), std::nullopt);
    EXPECT_EQ(ParseSemCount(""), std::nullopt);
    const std::string huge = "0 0 600 18446744073709551615 0\n";
    EXPECT_EQ(ParseSemCount(heading + huge + huge), UINT64_MAX);
}

TEST(MachineTextsTest, Processors)
{
    EXPECT_EQ(ParseHighestProcessor("0-1\n"), 1u);
    EXPECT_EQ(ParseHighestProcessor("0-3,8-11\n"), 11u);
    EXPECT_EQ(ParseHighestProcessor("0\n"), 0u);
    EXPECT_EQ(ParseHighestProcessor("\n"), std::nullopt);
    EXPECT_EQ(ParseHighestProcessor(""), std::nullopt);
}

TEST(MachineTextsTest, ControlGroups)
{
    const auto group = [](bool isUnified, const char* path) { return PidsGroup{isUnified, path}; };
    EXPECT_EQ(ParsePidsGroup("0::/user.slice/session-2.scope\n"), group(true, "/user.slice/session-2.scope"));
    EXPECT_EQ(ParsePidsGroup("0::/\n"), group(true, "/"));
    EXPECT_EQ(ParsePidsGroup("9:name=systemd:/s\n8:cpu,pids:/p:q\n0::/u\n"), group(false, "/p:q"));
    EXPECT_EQ(ParsePidsGroup("9:name=systemd:/s\n8:cpupids:/p\n0::/u\n"), group(true, "/u"));
    EXPECT_EQ(ParsePidsGroup("9:name=systemd:/s\n"), std::nullopt);
    EXPECT_EQ(ParsePidsGroup("0::/../../elsewhere\n"), std::nullopt) << "above what is mounted";
    EXPECT_EQ(ParsePidsGroup("0::relative\n"), std::nullopt);
    EXPECT_EQ(ParsePidsGroup("nonsense\n:\n::\n"), std::nullopt);
    EXPECT_EQ(ParsePidsGroup("0::/cut"), std::nullopt);
    EXPECT_EQ(ParsePidsGroup(""), std::nullopt);
}
