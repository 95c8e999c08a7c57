// SPDX-License-Identifier: MIT
#include "src/sampling/SysinfoNode.h"

#include "kits/application/Message.h"
#include "kits/support/TypeConstants.h"
#include "tests/src/sampling/Ghosts.h"
#include "tests/src/sampling/MachineOverTime.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cstring>
#include <thread>
#include <utility>
#include <vector>

namespace {

template <typename T> T At(const void* record, size_t offset)
{
    T value;
    std::memcpy(&value, static_cast<const char*>(record) + offset, sizeof(value));
    return value;
}

/// Each reading of the clock is a microsecond later.
class TickingClock : private kits::ClockSource {
public:
    explicit TickingClock(bigtime_t start)
        : fNow(start)
    {
        kits::SetClockSource(this);
    }
    ~TickingClock() override { kits::SetClockSource(nullptr); }

private:
    bigtime_t SystemTime() override { return ++fNow; }
    bigtime_t WallTime() override { return 1700000000LL * 1000000 + fNow; }
    std::string BootId() override { return {}; }

    std::atomic<bigtime_t> fNow;
};

constexpr const char* kTwelveTebibytes = "MemTotal: 12884901888 kB\nMemAvailable: 6442450944 kB\n";

} // namespace

TEST(CounterDeltas, WrapRound)
{
    CounterDeltas sum;
    sum += {INT32_MAX, 1, 2, 3, 4, 5};
    sum += {1, 1, 1, 1, 1, 1};
    EXPECT_EQ(sum, (CounterDeltas{INT32_MIN, 2, 3, 4, 5, 6}));
    sum -= {1, 2, 3, 4, 5, 6};
    EXPECT_EQ(sum, (CounterDeltas{INT32_MAX, 0, 0, 0, 0, 0}));
}

TEST(SysinfoNode, AFirstSampleHasNoChanges)
{
    MachineOverTime machine;
    machine.SetLoad(0, 50);
    machine.Advance(200000);
    SysinfoNode node;
    EXPECT_EQ(node.InitCheck(), B_OK);
    node.Update(nullptr);
    EXPECT_EQ(node.Time(), machine.Now());
    EXPECT_EQ(node.Elapsed(), 0);
    EXPECT_EQ(node.TotalActive(), 0);
    EXPECT_EQ(node.CountActiveDeltas(), MachineOverTime::kProcessors);
    for (int32 i = 0; i < node.CountActiveDeltas(); i++)
        EXPECT_EQ(node.ActiveDelta(i), 0);
    EXPECT_EQ(node.Counters(), CounterDeltas());
    EXPECT_EQ(+node.Info().cpu_count, MachineOverTime::kProcessors);
    EXPECT_EQ(+node.Info().used_pages, 250000);
}

TEST(SysinfoNode, ASecondOneHasTheChangesOfEveryProcessor)
{
    MachineOverTime machine;
    SysinfoNode first;
    first.Update(nullptr);
    machine.SetLoad(0, 25);
    machine.SetLoad(7, 100);
    machine.SetLoad(9, 50);
    machine.SetUsedPages(250017);
    machine.SetPageFaults(1000);
    machine.Advance(200000);
    SysinfoNode second;
    second.Update(&first);
    EXPECT_EQ(second.Elapsed(), 200000);
    EXPECT_EQ(second.ActiveDelta(0), 50000);
    EXPECT_EQ(second.ActiveDelta(1), 0);
    EXPECT_EQ(second.ActiveDelta(7), 200000);
    EXPECT_EQ(second.ActiveDelta(9), 100000);
    EXPECT_EQ(second.TotalActive(), 350000);
    EXPECT_EQ(second.Counters(), (CounterDeltas{1000, 17, 0, 0, 0, 0}));
    // The record has room for eight; the rest is kept beside it.
    EXPECT_GT(+second.Info().cpu_infos[7].active_time, +first.Info().cpu_infos[7].active_time);
}

TEST(SysinfoNode, NoSampleHasMoreActiveTimeThanTimeThoughAnotherThreadReads)
{
    MachineOverTime machine;
    system_info info;
    ASSERT_EQ(get_system_info(&info), B_OK);
    const bigtime_t start = machine.Now();
    // All this time there is more counted than can be added: the processor appears busy throughout.
    machine.SetLoad(0, 100);
    machine.Advance(900000);
    TickingClock clock(start);

    std::vector<std::pair<bigtime_t, bigtime_t>> readings[4];
    std::vector<std::thread> threads;
    for (auto& own : readings) {
        threads.emplace_back([&own] {
            for (int i = 0; i < 3000; i++) {
                system_info record;
                kits::SystemFigures figures;
                bigtime_t active = 0;
                EXPECT_EQ(kits::ReadSystem(&record, &figures, &active, 1), B_OK);
                own.emplace_back(figures.time, active);
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    std::vector<std::pair<bigtime_t, bigtime_t>> all;
    for (const auto& own : readings)
        all.insert(all.end(), own.begin(), own.end());
    std::sort(all.begin(), all.end());
    int tooMuch = 0;
    for (size_t i = 1; i < all.size(); i++)
        tooMuch += all[i].second - all[i - 1].second > all[i].first - all[i - 1].first ? 1 : 0;
    EXPECT_EQ(tooMuch, 0);
    EXPECT_GT(all.back().second, all.front().second);
}

TEST(SysinfoNode, AProcessorThatIsNotThereIsNeverActive)
{
    MachineOverTime machine;
    SysinfoNode node;
    node.Update(nullptr);
    EXPECT_EQ(node.ActiveDelta(-1), 0);
    EXPECT_EQ(node.ActiveDelta(MachineOverTime::kProcessors), 0);
    EXPECT_EQ(node.ActiveDelta(INT32_MAX), 0);
}

TEST(SysinfoNode, PageFaultsWrapRound)
{
    MachineOverTime machine;
    machine.SetPageFaults(0xFFFFFFF0);
    SysinfoNode first;
    first.Update(nullptr);
    machine.SetPageFaults(0x100000010);
    machine.Advance(200000);
    SysinfoNode second;
    second.Update(&first);
    EXPECT_EQ(second.Counters().pageFaults, 0x20);
}

TEST(SysinfoNode, UpdatedAgainstItselfHasNoChanges)
{
    MachineOverTime machine;
    SysinfoNode node;
    node.Update(nullptr);
    machine.SetLoad(0, 100);
    machine.SetPageFaults(5);
    machine.Advance(200000);
    node.Update(&node);
    EXPECT_EQ(node.Time(), machine.Now());
    EXPECT_EQ(node.Elapsed(), 0);
    EXPECT_EQ(node.TotalActive(), 0);
    EXPECT_EQ(node.ActiveDelta(0), 0);
    EXPECT_EQ(node.Counters(), CounterDeltas());
    EXPECT_EQ(+node.Info().page_faults, 5);
}

TEST(SysinfoNode, ItsRecordToTheByte)
{
    MachineOverTime machine;
    SysinfoNode first;
    first.Update(nullptr);
    machine.SetLoad(2, 100);
    machine.SetUsedPages(250003);
    machine.SetPageFaults(9);
    machine.Advance(200000);
    SysinfoNode node;
    node.Update(&first);
    BMessage archive;
    node.GhostArchive(&archive);

    const void* body = nullptr;
    ssize_t size = 0;
    ASSERT_EQ(archive.FindData("sn:Body", B_RAW_TYPE, &body, &size), B_OK);
    ASSERT_EQ(size, 560);
    EXPECT_EQ(At<int64>(body, 0), node.Time());
    EXPECT_EQ(At<int64>(body, 8), 200000);
    EXPECT_EQ(At<int64>(body, 16), 200000);
    EXPECT_EQ(At<uint32>(body, 24), 0u);
    EXPECT_EQ(At<int32>(body, 28), 9);
    EXPECT_EQ(At<int32>(body, 32), 3);
    for (size_t offset = 36; offset < 52; offset += 4)
        EXPECT_EQ(At<int32>(body, offset), 0) << offset;
    EXPECT_EQ(std::memcmp(static_cast<const char*>(body) + 52, &node.Info(), 508), 0);

    const void* deltas = nullptr;
    ASSERT_EQ(archive.FindData("sn:RCPUTD", B_RAW_TYPE, &deltas, &size), B_OK);
    ASSERT_EQ(size, 8 * MachineOverTime::kProcessors);
    EXPECT_EQ(At<int64>(deltas, 16), 200000);
    EXPECT_EQ(At<int64>(deltas, 24), 0);
    EXPECT_EQ(archive.CountNames(B_ANY_TYPE), 2);
}

TEST(SysinfoNode, AGhostIsWhatWasSent)
{
    MachineOverTime machine;
    SysinfoNode first;
    first.Update(nullptr);
    machine.SetLoad(9, 50);
    machine.SetPageFaults(12);
    machine.Advance(200000);
    SysinfoNode node;
    node.Update(&first);
    BMessage archive;
    node.GhostArchive(&archive);

    const SysinfoNode ghost(&archive);
    EXPECT_EQ(ghost.InitCheck(), B_OK);
    EXPECT_EQ(ghost.Time(), node.Time());
    EXPECT_EQ(ghost.Elapsed(), node.Elapsed());
    EXPECT_EQ(ghost.TotalActive(), node.TotalActive());
    EXPECT_EQ(ghost.Counters(), node.Counters());
    EXPECT_EQ(ghost.CountActiveDeltas(), MachineOverTime::kProcessors);
    EXPECT_EQ(ghost.ActiveDelta(9), 100000);
    EXPECT_EQ(std::memcmp(&ghost.Info(), &node.Info(), sizeof(system_info)), 0);
    BMessage again;
    ghost.GhostArchive(&again);
    EXPECT_TRUE(again.HasSameData(archive));
}

TEST(SysinfoNode, AGhostOfAnEmptyMessageIsAllZero)
{
    const BMessage empty;
    const SysinfoNode ghost(&empty);
    EXPECT_EQ(ghost.InitCheck(), B_BAD_VALUE);
    EXPECT_EQ(ghost.Time(), 0);
    EXPECT_EQ(ghost.CountActiveDeltas(), 0);
    EXPECT_EQ(ghost.ActiveDelta(0), 0);
    EXPECT_EQ(+ghost.Info().cpu_count, 0);
}

TEST(SysinfoNode, AGhostWithoutProcessorTimesHasNone)
{
    GhostFigures figures(4);
    BMessage message = figures.Message();
    message.RemoveName("sn:RCPUTD");
    const SysinfoNode ghost(&message);
    EXPECT_EQ(ghost.InitCheck(), B_OK);
    EXPECT_EQ(ghost.CountActiveDeltas(), 0);
    EXPECT_EQ(ghost.ActiveDelta(3), 0);
}

TEST(SysinfoNode, AShortRecordIsNone)
{
    GhostFigures figures(1);
    for (size_t size : {size_t(1), size_t(52), sizeof(figures.node) - 1}) {
        BMessage message;
        AddRecord(&message, kNodeBodyField, &figures.node, size);
        EXPECT_EQ(SysinfoNode(&message).InitCheck(), B_BAD_VALUE) << size;
    }
}

TEST(SysinfoNode, ALongRecordIsCut)
{
    GhostFigures figures(1);
    std::vector<char> bytes(1000, 'x');
    std::memcpy(bytes.data(), &figures.node, sizeof(figures.node));
    BMessage message;
    AddRecord(&message, kNodeBodyField, bytes.data(), bytes.size());
    const SysinfoNode ghost(&message);
    EXPECT_EQ(ghost.InitCheck(), B_OK);
    EXPECT_EQ(ghost.Elapsed(), 200000);
    EXPECT_EQ(+ghost.Info().max_teams, 50);
}

TEST(SysinfoNode, RecordsOfAnotherTypeAreNotTaken)
{
    GhostFigures figures(1);
    BMessage message;
    message.AddString("sn:Body", std::string(560, 'x'));
    EXPECT_EQ(SysinfoNode(&message).InitCheck(), B_BAD_VALUE);
}

TEST(SysinfoNode, MoreMemoryThanTheRecordHolds)
{
    MachineOverTime machine;
    machine.Write("proc/meminfo", kTwelveTebibytes);
    SysinfoNode node;
    node.Update(nullptr);
    EXPECT_EQ(node.MaxPages(), 3221225472);
    EXPECT_EQ(node.UsedPages(), 1610612736);
    EXPECT_EQ(+node.Info().max_pages, INT32_MAX);

    BMessage archive;
    node.GhostArchive(&archive);
    const SysinfoNode ghost(&archive);
    EXPECT_EQ(ghost.InitCheck(), B_OK);
    EXPECT_EQ(ghost.MaxPages(), 3221225472);
    EXPECT_EQ(ghost.UsedPages(), 1610612736);

    // A sender of an older version has only the record.
    ASSERT_EQ(archive.RemoveName("sn:Memory"), B_OK);
    const SysinfoNode old(&archive);
    EXPECT_EQ(old.InitCheck(), B_OK);
    EXPECT_EQ(old.MaxPages(), INT32_MAX);
    EXPECT_EQ(old.UsedPages(), 1610612736);
}

TEST(SysinfoNode, MemoryOfAnotherLengthIsRefused)
{
    const GhostFigures figures(1);
    for (size_t size : {1, 8, 15, 17, 32, 1000}) {
        BMessage message = figures.Message();
        const std::vector<char> bytes(size, 1);
        AddRecord(&message, kMemoryField, bytes.data(), bytes.size());
        EXPECT_EQ(SysinfoNode(&message).InitCheck(), B_BAD_VALUE) << size;
    }
    BMessage message = figures.Message();
    message.AddString("sn:Memory", "of another type it is none");
    EXPECT_EQ(SysinfoNode(&message).InitCheck(), B_OK);
    EXPECT_EQ(SysinfoNode(&message).MaxPages(), 1000);
}

TEST(SysinfoNode, MemoryIsHeldToWhatASamplerSends)
{
    const int64 counts[] = {INT64_MIN, -1, 0, 1, 4096, kits::kMaxPages, INT64_MAX};
    for (const int64 most : counts) {
        for (const int64 used : counts) {
            BMessage message = GhostFigures(1).Message();
            const MemoryBody memory = {most, used};
            AddRecord(&message, kMemoryField, &memory, sizeof(memory));
            const SysinfoNode ghost(&message);
            EXPECT_EQ(ghost.InitCheck(), B_OK);
            EXPECT_TRUE(ghost.MaxPages() >= 1 && ghost.MaxPages() <= kits::kMaxPages) << most;
            EXPECT_TRUE(ghost.UsedPages() >= 0 && ghost.UsedPages() <= ghost.MaxPages()) << most << " " << used;
        }
    }
}
