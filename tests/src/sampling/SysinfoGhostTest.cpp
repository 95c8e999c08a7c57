// SPDX-License-Identifier: MIT
#include "kits/support/TypeConstants.h"
#include "src/sampling/ValueProvider.h"
#include "tests/src/sampling/Ghosts.h"
#include "tests/src/sampling/MachineOverTime.h"
#include "tests/src/sampling/Receiver.h"

#include <gtest/gtest.h>

#include <cstring>
#include <random>

namespace {

template <typename T> T At(const void* record, size_t offset)
{
    T value;
    std::memcpy(&value, static_cast<const char*>(record) + offset, sizeof(value));
    return value;
}

/// Checks every source of a machine with ten processors, plain, averaged and smoothed.
void ExpectSharesInRange(const Ghosts& ghosts)
{
    for (vptarget_t target = 0; target <= 2066; target = target == 24 ? 2040 : target + 1) {
        for (int32 flags = 0; flags < 4; flags++) {
            ValueProvider provider(target, flags);
            const double value = provider.Value(&ghosts.sampler, &ghosts.node);
            EXPECT_GE(value, 0.0) << target << " " << flags;
            EXPECT_LE(value, 1.0) << target << " " << flags;
            char text[ValueProvider::kValueStringLength];
            std::memset(text, 'x', sizeof(text));
            provider.GetValueString(text, &ghosts.sampler, &ghosts.node);
            EXPECT_LT(strnlen(text, sizeof(text)), sizeof(text)) << target;
        }
    }
}

/// A sampler with three samples, all under the test's control.
class SysinfoGhost : public testing::Test {
protected:
    SysinfoGhost()
        : fSampler(10)
    {
        fSampler.SetNodesToKeep(5);
        Sysinfo::Autolock lock(&fSampler);
        const SysinfoNode* newest = nullptr;
        for (int32 i = 0; i < 3; i++) {
            fMachine.SetPageFaults(100 * i);
            fMachine.SetLoad(i, 100);
            fMachine.Advance(200000);
            auto* node = new SysinfoNode;
            node->Update(newest);
            fSampler.Attach(node);
            newest = node;
        }
    }

    MachineOverTime fMachine;
    Sysinfo fSampler;
};

} // namespace

TEST_F(SysinfoGhost, TheRecordToTheByte)
{
    fSampler.SetSamplingDelay(123456789);
    BMessage archive;
    fSampler.GhostArchive(&archive);
    EXPECT_EQ(archive.CountNames(B_ANY_TYPE), 4);
    for (const char* field : {"si:Body", "si:TRCPUTD", "sn:Body", "sn:RCPUTD"}) {
        type_code type = 0;
        int32 count = 0;
        EXPECT_EQ(archive.GetInfo(field, &type, &count), B_OK) << field;
        EXPECT_EQ(type, type_code(B_RAW_TYPE)) << field;
        EXPECT_EQ(count, 1) << field;
    }

    const void* body = nullptr;
    ssize_t size = 0;
    ASSERT_EQ(archive.FindData("si:Body", B_RAW_TYPE, &body, &size), B_OK);
    ASSERT_EQ(size, 574);
    EXPECT_EQ(At<int64>(body, 0), 123456789);
    EXPECT_EQ(At<int64>(body, 8), 400000);
    EXPECT_EQ(At<int64>(body, 16), 200000 * (2 + 3));
    for (size_t offset = 24; offset < 40; offset += 4)
        EXPECT_EQ(At<uint32>(body, offset), 0u) << offset;
    EXPECT_EQ(At<int32>(body, 40), 200);
    for (size_t offset = 44; offset < 64; offset += 4)
        EXPECT_EQ(At<int32>(body, offset), 0) << offset;
    EXPECT_EQ(std::memcmp(static_cast<const char*>(body) + 64, &fSampler.Info(), 508), 0);
    EXPECT_EQ(At<int16>(body, 572), 5);

    const void* sums = nullptr;
    ASSERT_EQ(archive.FindData("si:TRCPUTD", B_RAW_TYPE, &sums, &size), B_OK);
    ASSERT_EQ(size, 8 * MachineOverTime::kProcessors);
    EXPECT_EQ(At<int64>(sums, 0), 400000);
    EXPECT_EQ(At<int64>(sums, 8), 400000);
    EXPECT_EQ(At<int64>(sums, 16), 200000);
    EXPECT_EQ(At<int64>(sums, 24), 0);
}

TEST_F(SysinfoGhost, AnEmptyHistorySendsNoNode)
{
    Sysinfo empty(10);
    BMessage archive;
    empty.GhostArchive(&archive);
    EXPECT_EQ(archive.CountNames(B_ANY_TYPE), 2);
    EXPECT_TRUE(archive.HasData("si:Body", B_RAW_TYPE));
    EXPECT_TRUE(archive.HasData("si:TRCPUTD", B_RAW_TYPE));
}

TEST_F(SysinfoGhost, IsWhatWasSent)
{
    BMessage archive;
    fSampler.GhostArchive(&archive);
    const Ghosts ghosts(archive);
    ASSERT_EQ(ghosts.sampler.InitCheck(), B_OK);
    ASSERT_EQ(ghosts.node.InitCheck(), B_OK);
    EXPECT_TRUE(ghosts.sampler.IsGhost());
    EXPECT_EQ(ghosts.sampler.SamplingDelay(), 200000);
    EXPECT_EQ(ghosts.sampler.NodesToKeep(), 5);
    EXPECT_EQ(ghosts.sampler.SumElapsed(), fSampler.SumElapsed());
    EXPECT_EQ(ghosts.sampler.SumTotalActive(), fSampler.SumTotalActive());
    EXPECT_EQ(ghosts.sampler.SumCounters(), fSampler.SumCounters());
    EXPECT_EQ(ghosts.sampler.CountSumActive(), MachineOverTime::kProcessors);
    EXPECT_EQ(ghosts.sampler.CountItems(), 0);
    EXPECT_EQ(ghosts.sampler.NewestNode(), nullptr);
    EXPECT_EQ(std::memcmp(&ghosts.sampler.Info(), &fSampler.Info(), sizeof(system_info)), 0);
    for (vptarget_t target = 1; target <= 2065; target++) {
        for (int32 flags = 0; flags < 2; flags++) {
            EXPECT_EQ(ValueProvider(target, flags).Value(&ghosts.sampler, &ghosts.node),
                      ValueProvider(target, flags).Value(&fSampler, fSampler.NewestNode()))
                << target;
        }
    }
    EXPECT_EQ(ValueProvider(VP_FIRST_CPU + 4, 0).Value(&ghosts.sampler, &ghosts.node), 1.0);
}

TEST_F(SysinfoGhost, NeedsNoLockAndHasNoThread)
{
    BMessage archive;
    fSampler.GhostArchive(&archive);
    const thread_id thread = find_thread("Sysinfo sampler");
    {
        const Sysinfo ghost(&archive);
        EXPECT_TRUE(ghost.Lock());
        ghost.Unlock();
        const Sysinfo::Autolock lock(&ghost);
        EXPECT_EQ(find_thread("Sysinfo sampler"), thread);
    }
    EXPECT_EQ(find_thread("Sysinfo sampler"), thread);
}

TEST(SysinfoGhosts, OfAnEmptyMessageAreNothing)
{
    const Ghosts ghosts{BMessage()};
    EXPECT_EQ(ghosts.sampler.InitCheck(), B_BAD_VALUE);
    EXPECT_EQ(ghosts.node.InitCheck(), B_BAD_VALUE);
    EXPECT_EQ(ghosts.sampler.CountSumActive(), 0);
    EXPECT_EQ(ghosts.sampler.SumActive(0), 0);
    // They do no harm even if they are used.
    for (vptarget_t target = -1; target <= 2066; target++)
        ValueProvider(target, VP_AVERAGE).Value(&ghosts.sampler, &ghosts.node);
}

TEST(SysinfoGhosts, HaveTheFiguresOfSourcesWithFiles)
{
    const FigureRecord sent[] = {{3000, 40, 100}, {3001, 7, 7}};
    BMessage message = GhostFigures(1).Message();
    AddRecord(&message, kMoreField, sent, sizeof(sent));
    const Ghosts ghosts(message);
    EXPECT_EQ(ghosts.node.FigureOf(3000), (kits::Figure{40, 100}));
    EXPECT_EQ(ghosts.node.FigureOf(3001), (kits::Figure{7, 7}));
    EXPECT_EQ(ghosts.node.FigureOf(3002), kits::Figure());
    BMessage again;
    ghosts.node.GhostArchive(&again);
    const SysinfoNode copy(&again);
    EXPECT_EQ(copy.FigureOf(3000), (kits::Figure{40, 100}));
    EXPECT_EQ(copy.FigureOf(3001), (kits::Figure{7, 7}));
}

TEST(SysinfoGhosts, HoldFiguresOfSourcesWithFilesToTheirRange)
{
    std::vector<FigureRecord> sent(100, {3000, INT64_MIN, INT64_MIN});
    sent[1] = {3001, INT64_MAX, 10};
    sent[kMostFigures - 1].target = 3002;
    sent[kMostFigures] = {3003, 5, 10};
    BMessage message = GhostFigures(1).Message();
    AddRecord(&message, kMoreField, sent.data(), sent.size() * sizeof(FigureRecord));
    const SysinfoNode node(&message);
    EXPECT_EQ(node.InitCheck(), B_OK);
    EXPECT_EQ(node.FigureOf(3000), (kits::Figure{0, 1}));
    EXPECT_EQ(node.FigureOf(3001), (kits::Figure{10, 10}));
    EXPECT_EQ(node.FigureOf(3002), (kits::Figure{0, 1}));
    EXPECT_EQ(node.FigureOf(3003), kits::Figure());
    // A record that is cut does not count.
    BMessage cut = GhostFigures(1).Message();
    AddRecord(&cut, kMoreField, &sent[1], sizeof(FigureRecord) - 1);
    EXPECT_EQ(SysinfoNode(&cut).FigureOf(3001), kits::Figure());
}

TEST(SysinfoGhosts, OfAShortRecordAreNothing)
{
    GhostFigures figures(2);
    for (size_t size : {size_t(1), size_t(64), sizeof(figures.sampler) - 1}) {
        BMessage message;
        AddRecord(&message, kSysinfoBodyField, &figures.sampler, size);
        EXPECT_EQ(Sysinfo(&message).InitCheck(), B_BAD_VALUE) << size;
    }
}

TEST(SysinfoGhosts, ALongRecordIsCut)
{
    GhostFigures figures(2);
    std::vector<char> bytes(5000, '\x7f');
    std::memcpy(bytes.data(), &figures.sampler, sizeof(figures.sampler));
    BMessage message = figures.Message();
    message.RemoveName("si:Body");
    AddRecord(&message, kSysinfoBodyField, bytes.data(), bytes.size());
    const Ghosts ghosts(message);
    EXPECT_EQ(ghosts.sampler.InitCheck(), B_OK);
    EXPECT_EQ(ghosts.sampler.SumElapsed(), 2000000);
    ExpectSharesInRange(ghosts);
}

TEST(SysinfoGhosts, AddressesOfTheSenderAreNotFollowed)
{
    GhostFigures figures(2);
    for (uint32& address : figures.sampler.addresses)
        address = 0xDEADBEEF;
    figures.node.address = 0xDEADBEEF;
    const Ghosts ghosts(figures);
    EXPECT_EQ(ghosts.sampler.CountMessengers(), 0);
    ExpectSharesInRange(ghosts);
}

TEST(SysinfoGhosts, OtherNumbersOfProcessorsThanTimes)
{
    for (int32 processors : {INT32_MIN, -1, 0, 1, 8, 1024, 1025, INT32_MAX}) {
        for (size_t times : {size_t(0), size_t(1), size_t(9), size_t(1024), size_t(5000)}) {
            GhostFigures figures(1);
            figures.node.info.cpu_count = processors;
            figures.sampler.info.cpu_count = 1025 - processors % 1024;
            figures.SetDeltas(std::vector<bigtime_t>(times, 100000));
            figures.SetSums(std::vector<bigtime_t>(times / 2, 1000000));
            const Ghosts ghosts(figures);
            EXPECT_LE(ghosts.node.CountActiveDeltas(), kits::kMaxProcessors);
            EXPECT_LE(ghosts.sampler.CountSumActive(), kits::kMaxProcessors);
            ExpectSharesInRange(ghosts);
        }
    }
}

TEST(SysinfoGhosts, TimesThatNoSamplerSends)
{
    for (bigtime_t time : {INT64_MIN, bigtime_t(-1), bigtime_t(0), bigtime_t(1), INT64_MAX}) {
        for (bigtime_t active : {INT64_MIN, bigtime_t(-1), bigtime_t(0), bigtime_t(300000), INT64_MAX}) {
            GhostFigures figures(10);
            figures.node.elapsed = time;
            figures.sampler.sumElapsed = time;
            figures.deltas.assign(10, active);
            figures.sums.assign(10, active);
            figures.node.totalActive = active;
            figures.sampler.sumTotalActive = active;
            ExpectSharesInRange(Ghosts(figures));
        }
    }
}

TEST(SysinfoGhosts, CountsThatNoSamplerSends)
{
    for (int32 maximum : {INT32_MIN, -1, 0, 1, INT32_MAX}) {
        for (int32 used : {INT32_MIN, -1, 0, 2, INT32_MAX}) {
            GhostFigures figures(1);
            system_info info = figures.node.info;
            info.max_pages = info.max_sems = info.max_ports = info.max_threads = info.max_teams = maximum;
            info.used_pages = info.used_sems = info.used_ports = info.used_threads = info.used_teams = used;
            figures.node.info = info;
            ExpectSharesInRange(Ghosts(figures));
        }
    }
}

TEST(SysinfoGhosts, AnyBytes)
{
    std::mt19937 random(20240229);
    for (int i = 0; i < 500; i++) {
        BMessage message;
        for (const RecordField* field : {&kSysinfoBodyField, &kSumActiveField, &kNodeBodyField, &kActiveDeltasField}) {
            std::vector<char> bytes(1 + random() % 1200);
            for (char& byte : bytes)
                byte = static_cast<char>(random());
            AddRecord(&message, *field, bytes.data(), bytes.size());
        }
        const Ghosts ghosts(message);
        if (ghosts.sampler.InitCheck() == B_OK && ghosts.node.InitCheck() == B_OK)
            ExpectSharesInRange(ghosts);
    }
}
