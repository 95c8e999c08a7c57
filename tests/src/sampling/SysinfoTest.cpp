// SPDX-License-Identifier: MIT
#include "src/sampling/Sysinfo.h"

#include "kits/application/InterfaceLock.h"
#include "kits/application/Message.h"
#include "kits/kernel/Threads.h"
#include "kits/support/TypeConstants.h"
#include "src/support/MessageCodes.h"
#include "tests/src/sampling/MachineOverTime.h"
#include "tests/src/sampling/Receiver.h"
#include "tests/support/Await.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

constexpr bigtime_t kHour = 3600LL * 1000000;

/// A sampler that takes samples on the test's command.
class SysinfoTest : public testing::Test {
protected:
    SysinfoTest()
        : fSampler(10)
    {
        fSampler.SetSamplingDelay(kHour);
        AwaitSamplerAsleep();
    }

    /// Makes one round, an hour after the previous one, in which the first processor was active for this long.
    void Round(bigtime_t active = 0)
    {
        fMachine.SetLoad(0, static_cast<int32>(active * 100 / kHour));
        fMachine.Advance(kHour);
        fSampler.Sample();
    }

    void ExpectSumsOfHistory()
    {
        bigtime_t elapsed = 0;
        bigtime_t totalActive = 0;
        CounterDeltas counters;
        std::vector<bigtime_t> active(MachineOverTime::kProcessors);
        for (int32 i = 0; i < fSampler.CountItems(); i++) {
            const auto* node = static_cast<SysinfoNode*>(fSampler.ItemAt(i));
            elapsed += node->Elapsed();
            totalActive += node->TotalActive();
            counters += node->Counters();
            for (size_t cpu = 0; cpu < active.size(); cpu++)
                active[cpu] += node->ActiveDelta(static_cast<int32>(cpu));
        }
        EXPECT_EQ(fSampler.SumElapsed(), elapsed);
        EXPECT_EQ(fSampler.SumTotalActive(), totalActive);
        EXPECT_EQ(fSampler.SumCounters(), counters);
        for (size_t cpu = 0; cpu < active.size(); cpu++)
            EXPECT_EQ(fSampler.SumActive(static_cast<int32>(cpu)), active[cpu]) << cpu;
    }

    MachineOverTime fMachine;
    Sysinfo fSampler;
    Receiver fReceiver;
};

} // namespace

TEST_F(SysinfoTest, BeginsEmptyWithTheDefaults)
{
    EXPECT_EQ(fSampler.InitCheck(), B_OK);
    EXPECT_FALSE(fSampler.IsGhost());
    EXPECT_EQ(fSampler.NodesToKeep(), 10);
    EXPECT_EQ(fSampler.CountItems(), 0);
    EXPECT_EQ(fSampler.NewestNode(), nullptr);
    EXPECT_EQ(fSampler.CountSumActive(), MachineOverTime::kProcessors);
    EXPECT_EQ(fSampler.SumElapsed(), 0);
    EXPECT_EQ(+fSampler.Info().cpu_count, MachineOverTime::kProcessors);
    EXPECT_EQ(fSampler.SumActive(-1), 0);
    EXPECT_EQ(fSampler.SumActive(MachineOverTime::kProcessors), 0);
}

TEST_F(SysinfoTest, ReadsNothingWhileNobodyListens)
{
    Round();
    Round();
    EXPECT_EQ(fSampler.CountItems(), 0);
    fSampler.AddMessenger(fReceiver.Messenger());
    Round();
    EXPECT_EQ(fSampler.CountItems(), 1);
    fSampler.RemoveMessenger(fReceiver.Messenger());
    Round();
    EXPECT_EQ(fSampler.CountItems(), 1);
}

TEST_F(SysinfoTest, SendsFromTheSecondSampleOnAndKeepsTen)
{
    fSampler.AddMessenger(fReceiver.Messenger());
    Round();
    EXPECT_EQ(fReceiver.TakeAll(), 0);
    for (int i = 2; i <= 15; i++) {
        Round();
        EXPECT_EQ(fReceiver.TakeAll(), 1) << i;
        EXPECT_EQ(fSampler.CountItems(), std::min(i, 10)) << i;
    }
}

TEST_F(SysinfoTest, TheNewestIsFirst)
{
    fSampler.AddMessenger(fReceiver.Messenger());
    for (int i = 0; i < 12; i++)
        Round();
    for (int32 i = 1; i < fSampler.CountItems(); i++) {
        const auto* newer = static_cast<SysinfoNode*>(fSampler.ItemAt(i - 1));
        const auto* older = static_cast<SysinfoNode*>(fSampler.ItemAt(i));
        EXPECT_EQ(newer->Time() - older->Time(), kHour);
        EXPECT_EQ(newer->Elapsed(), kHour);
    }
    EXPECT_EQ(fSampler.NewestNode()->Time(), fMachine.Now());
}

TEST_F(SysinfoTest, TheSumsAreThoseOfTheHistory)
{
    fSampler.AddMessenger(fReceiver.Messenger());
    for (int i = 0; i < 25; i++) {
        fMachine.SetUsedPages(100000 + i * i * 7919 % 500000);
        fMachine.SetPageFaults(i * 0x3FFFFFFFLL);
        Round(kHour / 100 * (i * 13 % 100));
        ExpectSumsOfHistory();
    }
    EXPECT_GT(fSampler.SumActive(0), 0);
    EXPECT_EQ(fSampler.SumElapsed(), 10 * kHour);
}

TEST_F(SysinfoTest, AShorterHistoryDropsTheOldestAtTheNextSample)
{
    fSampler.AddMessenger(fReceiver.Messenger());
    for (int i = 0; i < 12; i++)
        Round(kHour / 100 * i);
    fSampler.SetNodesToKeep(3);
    EXPECT_EQ(fSampler.CountItems(), 10);
    Round();
    EXPECT_EQ(fSampler.CountItems(), 3);
    EXPECT_EQ(fSampler.SumElapsed(), 3 * kHour);
    // The two newest previous samples, and the new one.
    EXPECT_EQ(fSampler.SumActive(0), kHour / 100 * (10 + 11));
    ExpectSumsOfHistory();
}

TEST_F(SysinfoTest, ALongerHistoryFillsUp)
{
    fSampler.AddMessenger(fReceiver.Messenger());
    for (int i = 0; i < 12; i++)
        Round();
    fSampler.SetNodesToKeep(12);
    Round();
    Round();
    Round();
    EXPECT_EQ(fSampler.CountItems(), 12);
    ExpectSumsOfHistory();
}

TEST_F(SysinfoTest, AHistoryOfOneIsUpdatedAgainstItselfAndSentToNobody)
{
    fSampler.SetNodesToKeep(1);
    fSampler.AddMessenger(fReceiver.Messenger());
    for (int i = 0; i < 4; i++) {
        fMachine.SetPageFaults(i * 100);
        Round(kHour / 2);
        EXPECT_EQ(fSampler.CountItems(), 1);
        EXPECT_EQ(fSampler.NewestNode()->Time(), fMachine.Now());
        EXPECT_EQ(fSampler.NewestNode()->Elapsed(), 0);
        EXPECT_EQ(fSampler.NewestNode()->ActiveDelta(0), 0);
        EXPECT_EQ(fSampler.NewestNode()->Counters(), CounterDeltas());
    }
    EXPECT_EQ(fReceiver.TakeAll(), 0);
}

TEST_F(SysinfoTest, NoHistoryAtAllCountsAsOne)
{
    fSampler.AddMessenger(fReceiver.Messenger());
    for (int16 nodes : {int16(0), int16(-1), int16(INT16_MIN)}) {
        fSampler.SetNodesToKeep(nodes);
        Round();
        EXPECT_EQ(fSampler.CountItems(), 1) << nodes;
    }
}

TEST_F(SysinfoTest, ARoundThatComesTooEarlyIsLeftOut)
{
    fSampler.AddMessenger(fReceiver.Messenger());
    const bigtime_t step = kHour / 4;
    for (int i = 1; i <= 3; i++) {
        fMachine.Advance(step);
        fSampler.Sample();
        EXPECT_EQ(fSampler.CountItems(), i);
    }
    // The oldest of three is half an hour old, then three quarters of one.
    fSampler.Sample();
    EXPECT_EQ(fSampler.CountItems(), 3);
    fMachine.Advance(step);
    fSampler.Sample();
    EXPECT_EQ(fSampler.CountItems(), 3);
    fMachine.Advance(step);
    fSampler.Sample();
    EXPECT_EQ(fSampler.CountItems(), 4);
}

TEST_F(SysinfoTest, AMessengerIsHeldOnce)
{
    // The two results are swapped, as they always have been.
    EXPECT_EQ(fSampler.AddMessenger(fReceiver.Messenger()), B_ERROR);
    EXPECT_EQ(fSampler.AddMessenger(fReceiver.Messenger()), B_OK);
    EXPECT_EQ(fSampler.CountMessengers(), 1);
    EXPECT_EQ(fSampler.RemoveMessenger(fReceiver.Messenger()), B_OK);
    EXPECT_EQ(fSampler.CountMessengers(), 0);
    EXPECT_EQ(fSampler.RemoveMessenger(fReceiver.Messenger()), B_ENTRY_NOT_FOUND);
}

TEST_F(SysinfoTest, RemovingAnUnknownMessengerChangesNothing)
{
    Receiver other;
    fSampler.AddMessenger(fReceiver.Messenger());
    EXPECT_EQ(fSampler.RemoveMessenger(other.Messenger()), B_ENTRY_NOT_FOUND);
    EXPECT_EQ(fSampler.RemoveMessenger(BMessenger()), B_ENTRY_NOT_FOUND);
    EXPECT_EQ(fSampler.CountMessengers(), 1);
}

TEST_F(SysinfoTest, EveryMessengerGetsEverySample)
{
    Receiver second;
    Receiver third;
    for (Receiver* receiver : {&fReceiver, &second, &third})
        fSampler.AddMessenger(receiver->Messenger());
    Round();
    Round();
    for (Receiver* receiver : {&fReceiver, &second, &third})
        EXPECT_EQ(receiver->TakeAll(), 1);
}

TEST_F(SysinfoTest, AReceiverOfThisProcessGetsThePointer)
{
    fSampler.AddMessenger(fReceiver.Messenger());
    Round();
    Round();
    ASSERT_EQ(fReceiver.TakeAll(), 1);
    const BMessage& message = fReceiver.Last();
    EXPECT_EQ(message.what, uint32(MSG_SYSINFO_SAMPLE));
    EXPECT_EQ(message.CountNames(B_ANY_TYPE), 1);
    void* pointer = nullptr;
    EXPECT_EQ(message.FindPointer("Sysinfo*", &pointer), B_OK);
    EXPECT_EQ(pointer, &fSampler);
}

TEST_F(SysinfoTest, OfSamplesThatWaitTheNewestWins)
{
    fSampler.AddMessenger(fReceiver.Messenger());
    for (int i = 0; i < 5; i++)
        Round();
    EXPECT_EQ(fReceiver.TakeAll(), 1);
}

TEST_F(SysinfoTest, AMessengerWhoseTargetIsGoneIsDroppedAndTheOthersAreServed)
{
    auto first = std::make_unique<Receiver>();
    auto last = std::make_unique<Receiver>();
    fSampler.AddMessenger(first->Messenger());
    fSampler.AddMessenger(fReceiver.Messenger());
    fSampler.AddMessenger(last->Messenger());
    Round();
    first.reset();
    last.reset();
    Round();
    EXPECT_EQ(fSampler.CountMessengers(), 1);
    EXPECT_EQ(fReceiver.TakeAll(), 1);
}

TEST(Sysinfo, TellsTheApplicationWhenTheLastMessengerIsGone)
{
    ReceivingApplication application;
    MachineOverTime machine;
    Sysinfo sampler(10);
    sampler.SetSamplingDelay(kHour);
    AwaitSamplerAsleep();
    const auto round = [&] {
        machine.Advance(kHour);
        sampler.Sample();
    };
    application.RunFor([&] {
        auto first = std::make_unique<Receiver>();
        auto second = std::make_unique<Receiver>();
        sampler.AddMessenger(first->Messenger());
        sampler.AddMessenger(second->Messenger());
        round();
        round();
        first.reset();
        round();
        second.reset();
        round();
        EXPECT_EQ(sampler.CountMessengers(), 0);
        round();
    });
    ASSERT_EQ(application.TakeCount(), 1);
    EXPECT_EQ(application.Last().what, uint32(MSG_NO_LISTENERS));
    EXPECT_TRUE(application.Last().IsEmpty());
}

TEST_F(SysinfoTest, TheSameDelayKeepsTheThreadAndAnotherReplacesIt)
{
    const thread_id before = find_thread("Sysinfo sampler");
    fSampler.SetSamplingDelay(kHour);
    EXPECT_EQ(find_thread("Sysinfo sampler"), before);
    fSampler.SetSamplingDelay(2 * kHour);
    EXPECT_EQ(fSampler.SamplingDelay(), 2 * kHour);
    const thread_id after = find_thread("Sysinfo sampler");
    EXPECT_GT(after, 0);
    EXPECT_NE(after, before);
    thread_info info;
    EXPECT_EQ(get_thread_info(before, &info), B_BAD_THREAD_ID);
    ASSERT_EQ(get_thread_info(after, &info), B_OK);
    EXPECT_EQ(info.priority, 90);
}

TEST_F(SysinfoTest, ItsDelayMayBeChangedUnderItsLock)
{
    Sysinfo::Autolock lock(&fSampler);
    for (bigtime_t delay = 1; delay < 20; delay++)
        fSampler.SetSamplingDelay(delay * kHour + 1);
    EXPECT_EQ(fSampler.SamplingDelay(), 19 * kHour + 1);
}

TEST_F(SysinfoTest, AttachesAndDetachesNodes)
{
    fSampler.AddMessenger(fReceiver.Messenger());
    for (int i = 0; i < 3; i++)
        Round(kHour / 4);
    Sysinfo::Autolock lock(&fSampler);
    SysinfoNode* newest = fSampler.NewestNode();
    fSampler.Detach(newest);
    EXPECT_EQ(fSampler.CountItems(), 2);
    EXPECT_EQ(fSampler.SumElapsed(), kHour);
    ExpectSumsOfHistory();
    fSampler.Detach(newest);
    ExpectSumsOfHistory();
    fSampler.Attach(newest);
    EXPECT_EQ(fSampler.NewestNode(), newest);
    EXPECT_EQ(fSampler.SumElapsed(), 2 * kHour);
    ExpectSumsOfHistory();
}

TEST_F(SysinfoTest, SavesItsTwoSettings)
{
    fSampler.SetNodesToKeep(42);
    BMessage archive;
    EXPECT_EQ(fSampler.SavePrefsTo(&archive), B_OK);
    int64 delay = 0;
    int16 nodes = 0;
    EXPECT_EQ(archive.FindInt64("Delay", &delay), B_OK);
    EXPECT_EQ(archive.FindInt16("NodesToKeep", &nodes), B_OK);
    EXPECT_EQ(delay, kHour);
    EXPECT_EQ(nodes, 42);
    EXPECT_EQ(archive.CountNames(B_ANY_TYPE), 2);
}

TEST_F(SysinfoTest, LoadsThemWithinTheirRanges)
{
    const auto load = [&](int64 delay, int16 nodes) {
        BMessage archive;
        archive.AddInt64("Delay", delay);
        archive.AddInt16("NodesToKeep", nodes);
        fSampler.LoadPrefsFrom(&archive);
    };
    load(300000, 25);
    EXPECT_EQ(fSampler.SamplingDelay(), 300000);
    EXPECT_EQ(fSampler.NodesToKeep(), 25);
    load(INT64_MAX, 0);
    EXPECT_EQ(fSampler.SamplingDelay(), 5000000);
    EXPECT_EQ(fSampler.NodesToKeep(), 25);
    load(0, -3);
    EXPECT_EQ(fSampler.SamplingDelay(), 10000);
    EXPECT_EQ(fSampler.NodesToKeep(), 25);
    load(INT64_MIN, INT16_MAX);
    EXPECT_EQ(fSampler.SamplingDelay(), 10000);
    EXPECT_EQ(fSampler.NodesToKeep(), 200);
    load(10000, 1);
    EXPECT_EQ(fSampler.NodesToKeep(), 1);
}

TEST_F(SysinfoTest, WhatAnArchiveLacksStays)
{
    fSampler.SetNodesToKeep(7);
    const BMessage empty;
    fSampler.LoadPrefsFrom(&empty);
    EXPECT_EQ(fSampler.SamplingDelay(), kHour);
    EXPECT_EQ(fSampler.NodesToKeep(), 7);
    BMessage wrongTypes;
    wrongTypes.AddInt32("Delay", 20000);
    wrongTypes.AddString("NodesToKeep", "12");
    fSampler.LoadPrefsFrom(&wrongTypes);
    EXPECT_EQ(fSampler.SamplingDelay(), kHour);
    EXPECT_EQ(fSampler.NodesToKeep(), 7);
}

TEST(Sysinfo, HoldsWhatComesFromOutside)
{
    EXPECT_EQ(Sysinfo::HoldNodesToKeep(-1), 1);
    EXPECT_EQ(Sysinfo::HoldNodesToKeep(2), 2);
    EXPECT_EQ(Sysinfo::HoldNodesToKeep(201), 200);
}

TEST(Sysinfo, EndsEveryThreadItStarted)
{
    MachineOverTime machine;
    {
        Sysinfo sampler(10);
        for (bigtime_t i = 1; i <= 50; i++)
            sampler.SetSamplingDelay(kHour + i);
    }
    EXPECT_EQ(find_thread("Sysinfo sampler"), B_NAME_NOT_FOUND);
}

TEST(Sysinfo, SamplesByItself)
{
    MachineOverTime machine;
    Receiver receiver;
    Sysinfo sampler(10);
    sampler.SetSamplingDelay(1000);
    sampler.AddMessenger(receiver.Messenger());
    int samples = 0;
    EXPECT_TRUE(test::Await([&] {
        machine.Advance(10000);
        samples += receiver.TakeAll();
        return samples >= 5;
    }));
}

TEST(Sysinfo, SamplesWhileTheInterfaceLockIsHeld)
{
    MachineOverTime machine;
    Receiver receiver;
    Sysinfo sampler(10);
    sampler.SetSamplingDelay(1000);
    sampler.AddMessenger(receiver.Messenger());
    kits::InterfaceLocker screen;
    const auto newest = [&] {
        Sysinfo::Autolock lock(&sampler);
        return sampler.NewestNode() != nullptr ? sampler.NewestNode()->Time() : 0;
    };
    for (int i = 0; i < 5; i++) {
        machine.Advance(10000);
        ASSERT_TRUE(test::Await([&] { return newest() == machine.Now(); })) << i;
    }
}
