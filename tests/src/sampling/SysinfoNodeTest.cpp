#include "src/sampling/SysinfoNode.h"

#include "kits/application/Message.h"
#include "kits/support/TypeConstants.h"
#include "tests/src/sampling/Ghosts.h"
#include "tests/src/sampling/RecordedMachine.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

template <typename T> T At(const void* record, size_t offset)
{
    T value;
    std::memcpy(&value, static_cast<const char*>(record) + offset, sizeof(value));
    return value;
}

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
    RecordedMachine machine;
    machine.SetLoad(0, 50);
    machine.Advance(200000);
    SysinfoNode node;
    EXPECT_EQ(node.InitCheck(), B_OK);
    node.Update(nullptr);
    EXPECT_EQ(node.Time(), machine.Now());
    EXPECT_EQ(node.Elapsed(), 0);
    EXPECT_EQ(node.TotalActive(), 0);
    EXPECT_EQ(node.CountActiveDeltas(), RecordedMachine::kProcessors);
    for (int32 i = 0; i < node.CountActiveDeltas(); i++)
        EXPECT_EQ(node.ActiveDelta(i), 0);
    EXPECT_EQ(node.Counters(), CounterDeltas());
    EXPECT_EQ(+node.Info().cpu_count, RecordedMachine::kProcessors);
    EXPECT_EQ(+node.Info().used_pages, 250000);
}

TEST(SysinfoNode, ASecondOneHasTheChangesOfEveryProcessor)
{
    RecordedMachine machine;
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

TEST(SysinfoNode, AProcessorThatIsNotThereIsNeverActive)
{
    RecordedMachine machine;
    SysinfoNode node;
    node.Update(nullptr);
    EXPECT_EQ(node.ActiveDelta(-1), 0);
    EXPECT_EQ(node.ActiveDelta(RecordedMachine::kProcessors), 0);
    EXPECT_EQ(node.ActiveDelta(INT32_MAX), 0);
}

TEST(SysinfoNode, PageFaultsWrapRound)
{
    RecordedMachine machine;
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
    RecordedMachine machine;
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
    RecordedMachine machine;
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
    ASSERT_EQ(size, 8 * RecordedMachine::kProcessors);
    EXPECT_EQ(At<int64>(deltas, 16), 200000);
    EXPECT_EQ(At<int64>(deltas, 24), 0);
    EXPECT_EQ(archive.CountNames(B_ANY_TYPE), 2);
}

TEST(SysinfoNode, AGhostIsWhatWasSent)
{
    RecordedMachine machine;
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
    EXPECT_EQ(ghost.CountActiveDeltas(), RecordedMachine::kProcessors);
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
        AddRecord(&message, "sn:Body", &figures.node, size);
        EXPECT_EQ(SysinfoNode(&message).InitCheck(), B_BAD_VALUE) << size;
    }
}

TEST(SysinfoNode, ALongRecordIsCut)
{
    GhostFigures figures(1);
    std::vector<char> bytes(1000, 'x');
    std::memcpy(bytes.data(), &figures.node, sizeof(figures.node));
    BMessage message;
    AddRecord(&message, "sn:Body", bytes.data(), bytes.size());
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
