// SPDX-License-Identifier: MIT
#include "src/sampling/ValueProvider.h"

#include "kits/support/TypeConstants.h"
#include "tests/src/sampling/Ghosts.h"
#include "tests/support/FieldAt.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <utility>

namespace {

double ValueOf(vptarget_t target, int32 flags, const Ghosts& ghosts)
{
    return ValueProvider(target, flags).Value(&ghosts.sampler, &ghosts.node);
}

std::string TextOf(vptarget_t target, const Ghosts& ghosts, int32 flags = 0)
{
    char buffer[ValueProvider::kValueStringLength];
    ValueProvider(target, flags).GetValueString(buffer, &ghosts.sampler, &ghosts.node);
    return buffer;
}

std::string MemoryText(int64 pages)
{
    char buffer[ValueProvider::kValueStringLength];
    ValueProvider::PrintMemory(buffer, pages);
    return buffer;
}

/// Returns a sample with one processor that was active for this share of it.
Ghosts WithLoad(double load)
{
    GhostFigures figures(1);
    figures.SetDeltas({static_cast<bigtime_t>(load * 200000)});
    return Ghosts(figures);
}

} // namespace

TEST(ValueProvider, TwoProcessors)
{
    GhostFigures figures(2);
    figures.SetDeltas({50000, 150000});
    const Ghosts ghosts(figures);
    EXPECT_EQ(ValueOf(2, 0, ghosts), 0.25);
    EXPECT_EQ(ValueOf(4, 0, ghosts), 0.75);
    EXPECT_EQ(ValueOf(1, 0, ghosts), 0.75);
    EXPECT_EQ(ValueOf(3, 0, ghosts), 0.25);
    EXPECT_EQ(ValueOf(2051, 0, ghosts), 0.5);
    EXPECT_EQ(ValueOf(2050, 0, ghosts), 0.5);
}

TEST(ValueProvider, AveragesComeFromTheSumsOverTheHistory)
{
    GhostFigures figures(2);
    figures.SetDeltas({0, 0});
    figures.SetSums({500000, 1500000});
    const Ghosts ghosts(figures);
    EXPECT_EQ(ValueOf(2, VP_AVERAGE, ghosts), 0.25);
    EXPECT_EQ(ValueOf(4, VP_AVERAGE, ghosts), 0.75);
    EXPECT_EQ(ValueOf(1, VP_AVERAGE, ghosts), 0.75);
    EXPECT_EQ(ValueOf(2051, VP_AVERAGE, ghosts), 0.5);
    EXPECT_EQ(ValueOf(2050, VP_AVERAGE, ghosts), 0.5);
    EXPECT_EQ(ValueOf(2051, 0, ghosts), 0.0);
    // Every other source shows its current value.
    EXPECT_EQ(ValueOf(2053, VP_AVERAGE, ghosts), 0.25);
}

TEST(ValueProvider, CountsAreSharesOfTheirMaximum)
{
    const Ghosts ghosts{GhostFigures(1)};
    EXPECT_EQ(ValueOf(2052, 0, ghosts), 0.75);
    EXPECT_EQ(ValueOf(2053, 0, ghosts), 0.25);
    EXPECT_EQ(ValueOf(2055, 0, ghosts), 0.9);
    EXPECT_EQ(ValueOf(2056, 0, ghosts), 0.1);
    EXPECT_EQ(ValueOf(2058, 0, ghosts), 0.6);
    EXPECT_EQ(ValueOf(2059, 0, ghosts), 0.4);
    EXPECT_EQ(ValueOf(2061, 0, ghosts), 0.25);
    EXPECT_EQ(ValueOf(2062, 0, ghosts), 0.75);
    EXPECT_EQ(ValueOf(2064, 0, ghosts), 0.75);
    EXPECT_EQ(ValueOf(2065, 0, ghosts), 0.25);
}

TEST(ValueProvider, AllIdleIsRoundedAsItAlwaysWas)
{
    // 16777217 is no single-precision number: it becomes 16777216. The average loses its fraction.
    GhostFigures figures(2);
    figures.node.elapsed = 16777217;
    figures.SetDeltas({3, 4});
    const Ghosts ghosts(figures);
    EXPECT_EQ(ValueOf(2050, 0, ghosts), (16777216.0 - 3.0) / 16777216.0);
    EXPECT_EQ(ValueOf(2051, 0, ghosts), 7.0 / 2.0 / 16777217.0);
}

TEST(ValueProvider, AProcessorThatTheMachineLacksIsZero)
{
    GhostFigures figures(2);
    figures.SetDeltas({200000, 200000});
    const Ghosts ghosts(figures);
    EXPECT_EQ(ValueOf(5, 0, ghosts), 0.0);
    EXPECT_EQ(ValueOf(6, 0, ghosts), 0.0);
    EXPECT_EQ(ValueOf(2049, 0, ghosts), 0.0);
    EXPECT_EQ(TextOf(6, ghosts), "0.0 %");
}

TEST(ValueProvider, AProcessorThatTheMachineLacksIsNotSmoothed)
{
    GhostFigures one(1);
    GhostFigures two(2);
    two.SetDeltas({0, 100000});
    const Ghosts small(one);
    const Ghosts large(two);
    ValueProvider provider(4, VP_EXP_AVERAGE);
    EXPECT_EQ(provider.Value(&small.sampler, &small.node), 0.0);
    // If the zero had been counted in the mean, it would be half of this.
    EXPECT_EQ(provider.Value(&large.sampler, &large.node), 0.5);
}

TEST(ValueProvider, AnUnassignedTargetIsZeroWithoutAName)
{
    const Ghosts ghosts = WithLoad(0.5);
    for (vptarget_t target : {2054, 2057, 2060, 2063, 2066, 0, -1, INT32_MIN, INT32_MAX}) {
        EXPECT_EQ(ValueOf(target, 0, ghosts), 0.0) << target;
        EXPECT_EQ(TextOf(target, ghosts), "0.0 %") << target;
        EXPECT_EQ(ValueProvider::Name(target, 0), "") << target;
        EXPECT_EQ(ValueProvider::Name(target, VP_EXP_AVERAGE), "") << target;
    }
}

TEST(ValueProvider, SmoothingAConstantGivesTheConstant)
{
    const Ghosts ghosts = WithLoad(0.6);
    ValueProvider provider(2, VP_EXP_AVERAGE);
    for (int i = 0; i < 20; i++)
        EXPECT_NEAR(provider.Value(&ghosts.sampler, &ghosts.node), 0.6, 1e-6) << i;
}

TEST(ValueProvider, TheFirstFiveAreRunningMeans)
{
    const Ghosts busy = WithLoad(1.0);
    const Ghosts quiet = WithLoad(0.0);
    ValueProvider provider(2, VP_EXP_AVERAGE);
    EXPECT_EQ(provider.Value(&busy.sampler, &busy.node), 1.0);
    EXPECT_EQ(provider.Value(&quiet.sampler, &quiet.node), 1.0 / 2);
    EXPECT_EQ(provider.Value(&quiet.sampler, &quiet.node), 1.0 / 3);
    EXPECT_EQ(provider.Value(&quiet.sampler, &quiet.node), 1.0 / 4);
    EXPECT_EQ(provider.Value(&quiet.sampler, &quiet.node), 1.0 / 5);
    EXPECT_NEAR(provider.Value(&quiet.sampler, &quiet.node), 1.0 / 6, 1e-7);
}

TEST(ValueProvider, AStepAfterThatIsApproachedByFiveSixths)
{
    const Ghosts quiet = WithLoad(0.0);
    const Ghosts busy = WithLoad(1.0);
    ValueProvider provider(2, VP_EXP_AVERAGE);
    for (int i = 0; i < 10; i++)
        provider.Value(&quiet.sampler, &quiet.node);
    double missing = 1.0;
    for (int i = 0; i < 30; i++) {
        missing *= 5.0 / 6.0;
        EXPECT_NEAR(provider.Value(&busy.sampler, &busy.node), 1.0 - missing, 1e-6) << i;
    }
}

TEST(ValueProvider, AskingForTheTextAdvancesTheSmoothing)
{
    const Ghosts busy = WithLoad(1.0);
    const Ghosts quiet = WithLoad(0.0);
    ValueProvider provider(2, VP_EXP_AVERAGE);
    char buffer[ValueProvider::kValueStringLength];
    provider.GetValueString(buffer, &busy.sampler, &busy.node);
    EXPECT_STREQ(buffer, "100.0 %");
    EXPECT_EQ(provider.Value(&quiet.sampler, &quiet.node), 0.5);
}

TEST(ValueProvider, ASampleOfNoLengthIsNoNumberAndDoesNotEnterTheSmoothing)
{
    const Ghosts ghosts = WithLoad(0.5);
    SysinfoNode empty;
    ValueProvider memory(VP_USED_MEMORY, VP_EXP_AVERAGE);
    EXPECT_TRUE(std::isnan(memory.Value(&ghosts.sampler, &empty)));
    EXPECT_EQ(memory.Value(&ghosts.sampler, &ghosts.node), 0.25);
    EXPECT_EQ(ValueOf(2051, 0, ghosts), 0.5);
    // Without any processor there is nothing to divide by.
    EXPECT_EQ(ValueProvider(2050, 0).Value(&ghosts.sampler, &empty), 0.0);
    EXPECT_EQ(ValueProvider(2051, 0).Value(&ghosts.sampler, &empty), 0.0);
}

TEST(ValueProvider, Names)
{
    EXPECT_EQ(ValueProvider::Name(1, 0), "CPU 1 idle");
    EXPECT_EQ(ValueProvider::Name(2, 0), "CPU 1");
    EXPECT_EQ(ValueProvider::Name(4, 1), "CPU 2 average");
    EXPECT_EQ(ValueProvider::Name(3, 1), "CPU 2 average idle");
    EXPECT_EQ(ValueProvider::Name(2, 2), "CPU 1 (exp. averaged)");
    EXPECT_EQ(ValueProvider::Name(3, 3), "CPU 2 average idle (exp. averaged)");
    EXPECT_EQ(ValueProvider::Name(2048, 0), "CPU 1024");
    EXPECT_EQ(ValueProvider::Name(2049, 0), "CPU 1025 idle");
    EXPECT_EQ(ValueProvider::Name(2050, 0), "All CPUs idle");
    EXPECT_EQ(ValueProvider::Name(2050, 1), "All CPUs average idle");
    EXPECT_EQ(ValueProvider::Name(2051, 0), "All CPUs");
    EXPECT_EQ(ValueProvider::Name(2051, 1), "All CPUs average");
    EXPECT_EQ(ValueProvider::Name(2051, 3), "All CPUs average (exp. averaged)");
    EXPECT_EQ(ValueProvider::Name(2052, 0), "Free memory");
    EXPECT_EQ(ValueProvider::Name(2053, 1), "Used memory");
    EXPECT_EQ(ValueProvider::Name(2053, 2), "Used memory (exp. averaged)");
    EXPECT_EQ(ValueProvider::Name(2055, 0), "Available semaphores");
    EXPECT_EQ(ValueProvider::Name(2056, 0), "Allocated semaphores");
    EXPECT_EQ(ValueProvider::Name(2058, 0), "Available teams");
    EXPECT_EQ(ValueProvider::Name(2059, 0), "Allocated teams");
    EXPECT_EQ(ValueProvider::Name(2061, 0), "Available threads");
    EXPECT_EQ(ValueProvider::Name(2062, 0), "Allocated threads");
    EXPECT_EQ(ValueProvider::Name(2064, 0), "Available ports");
    EXPECT_EQ(ValueProvider::Name(2065, 0), "Allocated ports");
}

TEST(ValueProvider, Texts)
{
    GhostFigures figures(1);
    figures.SetDeltas({24690});
    figures.node.info.max_pages = 1024;
    figures.node.info.used_pages = 256;
    const Ghosts ghosts(figures);
    EXPECT_EQ(TextOf(2, ghosts), "12.3 %");
    EXPECT_EQ(TextOf(2051, ghosts), "12.3 %");
    EXPECT_EQ(TextOf(2052, ghosts), "3.0 MB");
    EXPECT_EQ(TextOf(2053, ghosts), "1.0 MB");
    EXPECT_EQ(TextOf(2055, ghosts), "90 sems");
    EXPECT_EQ(TextOf(2056, ghosts), "10 sems");
    EXPECT_EQ(TextOf(2058, ghosts), "30 teams");
    EXPECT_EQ(TextOf(2059, ghosts), "20 teams");
    EXPECT_EQ(TextOf(2061, ghosts), "100 threads");
    EXPECT_EQ(TextOf(2062, ghosts), "300 threads");
    EXPECT_EQ(TextOf(2064, ghosts), "150 ports");
    EXPECT_EQ(TextOf(2065, ghosts, VP_EXP_AVERAGE), "50 ports");
}

TEST(ValueProvider, Memory)
{
    EXPECT_EQ(MemoryText(0), "nothing");
    EXPECT_EQ(MemoryText(1), "4.0 kB");
    EXPECT_EQ(MemoryText(255), "1020.0 kB");
    EXPECT_EQ(MemoryText(256), "1.0 MB");
    EXPECT_EQ(MemoryText(524287), "2048.0 MB");
    EXPECT_EQ(MemoryText(-1), "-4096 Bytes");
}

TEST(ValueProvider, MemoryBeyondThirtyTwoBits)
{
    EXPECT_EQ(MemoryText(524288), "2048.0 MB");
    EXPECT_EQ(MemoryText(1048576), "4096.0 MB");
    EXPECT_EQ(MemoryText(INT32_MAX), "8388608.0 MB");
}

TEST(ValueProvider, TwelveTebibytesHalfInUse)
{
    BMessage message = GhostFigures(1).Message();
    const MemoryBody memory = {3221225472, 1610612736};
    AddRecord(&message, kMemoryField, &memory, sizeof(memory));
    const Ghosts ghosts(message);
    EXPECT_EQ(ValueOf(2052, 0, ghosts), 0.5);
    EXPECT_EQ(ValueOf(2053, 0, ghosts), 0.5);
    EXPECT_EQ(TextOf(2052, ghosts), "6291456.0 MB");
    EXPECT_EQ(TextOf(2053, ghosts), "6291456.0 MB");
}

TEST(ValueProvider, ACaptionSaysNothingBelowZero)
{
    // A period that single precision rounds up, during all of which the processor was active.
    GhostFigures figures(1);
    figures.node.elapsed = 16777217;
    figures.SetDeltas({16777217});
    const Ghosts ghosts(figures);
    const double idle = ValueOf(2050, 0, ghosts);
    EXPECT_LT(idle, 0);
    EXPECT_EQ(TextOf(2050, ghosts), "0.0 %");

    char text[ValueProvider::kValueStringLength];
    for (const auto& [share, expected] : {std::pair(-0.0, "0.0 %"), std::pair(-0.000499, "0.0 %"),
                                          std::pair(-0.001, "-0.1 %"), std::pair(0.000499, "0.0 %")}) {
        ValueProvider::PrintPercent(text, share);
        EXPECT_STREQ(text, expected) << share;
    }
}

TEST(ValueProvider, TextsHaveAPointInEveryLanguage)
{
    // Where the language is not installed, the test cannot fail, and neither can the program.
    std::setlocale(LC_NUMERIC, "de_DE.UTF-8");
    EXPECT_EQ(MemoryText(1), "4.0 kB");
    std::setlocale(LC_NUMERIC, "C");
}

TEST(ValueProvider, Archives)
{
    BMessage archive;
    EXPECT_EQ(ValueProvider(2051, 3).Archive(&archive), B_OK);
    int32 value = 0;
    EXPECT_EQ(archive.FindInt32("Target", &value), B_OK);
    EXPECT_EQ(value, 2051);
    EXPECT_EQ(archive.FindInt32("Flags", &value), B_OK);
    EXPECT_EQ(value, 3);
    EXPECT_EQ(archive.CountNames(B_ANY_TYPE), 2);
    const char* first = nullptr;
    type_code type;
    ASSERT_TRUE(test::FieldAt(archive, B_ANY_TYPE, 0, &first, &type));
    EXPECT_STREQ(first, "Flags");

    const ValueProvider provider(&archive);
    EXPECT_EQ(provider.Target(), 2051);
    EXPECT_EQ(provider.Flags(), 3);
}

TEST(ValueProvider, AnEmptyArchiveIsTheFirstProcessorsLoad)
{
    const BMessage empty;
    const ValueProvider provider(&empty);
    EXPECT_EQ(provider.Target(), 2);
    EXPECT_EQ(provider.Flags(), 0);

    BMessage wrongType;
    wrongType.AddString("Target", "2051");
    wrongType.AddInt32("Flags", 1);
    const ValueProvider second(&wrongType);
    EXPECT_EQ(second.Target(), 2);
    EXPECT_EQ(second.Flags(), 1);
}

TEST(ValueProvider, SaysWhenItCouldNotBeArchived)
{
    BMessage archive;
    archive.AddString("Flags", "taken");
    EXPECT_NE(ValueProvider(2, 0).Archive(&archive), B_OK);
}
