// SPDX-License-Identifier: MIT
#include "src/chart/ChartSteps.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>

namespace {

constexpr BRect kArea{0, 0, 100, 100};

} // namespace

TEST(ChartRectTest, BorderTakesOnePixelOnEverySide)
{
    EXPECT_EQ(ChartRect(kArea, false), kArea);
    EXPECT_EQ(ChartRect(kArea, true), BRect(1, 1, 99, 99));
}

TEST(NextColumnTest, ColumnZeroIsDrawnOnce)
{
    EXPECT_EQ(NextColumn(0), 0);
    EXPECT_EQ(NextColumn(kColumnZeroDrawn), 1);
    EXPECT_EQ(NextColumn(1), 2);
    EXPECT_EQ(NextColumn(41.7f), 42);
}

TEST(NextColumnTest, TheMarkForColumnZeroHasTheBitsThatOlderVersionsStored)
{
    EXPECT_EQ(std::bit_cast<uint32>(kColumnZeroDrawn), 0x33D6BF95u);
}

TEST(ColumnBeforeTest, LeadsToTheColumnAndIsNoneLeftOfTheChart)
{
    EXPECT_EQ(ColumnBefore(5), 4);
    EXPECT_EQ(ColumnBefore(2), 1);
    EXPECT_EQ(ColumnBefore(1), kColumnZeroDrawn);
    EXPECT_EQ(ColumnBefore(kColumnZeroDrawn), 0);
    EXPECT_EQ(ColumnBefore(0), 0);
    const float nearest = std::numeric_limits<float>::denorm_min();
    for (float column : {0.0f, nearest, kColumnZeroDrawn, 0.5f, std::nextafter(1.0f, 0.0f), 1.0f,
                         std::nextafter(1.0f, 2.0f), 1.5f, 41.7f, 32767.0f}) {
        EXPECT_GE(ColumnBefore(column), 0);
        EXPECT_EQ(NextColumn(ColumnBefore(column)), std::floor(column)) << column;
    }
}

TEST(WrapAtTest, NothingMovesBeforeTheEnd)
{
    EXPECT_FALSE(WrapAt(kArea, 100, 0.75f, false).wraps);
    EXPECT_FALSE(WrapAt(ChartRect(kArea, true), 99, 0.75f, true).wraps);
    EXPECT_EQ(WrapAt(kArea, 100, 0.75f, false).column, 100);
}

TEST(WrapAtTest, APageKeepsTheNewestPart)
{
    const WrapStep step = WrapAt(kArea, 101, 0.75f, false);
    EXPECT_TRUE(step.wraps);
    EXPECT_EQ(step.column, 75);
    EXPECT_EQ(step.source, BRect(26, 0, 100, 100));
    EXPECT_EQ(step.target, BRect(0, 0, 74, 100));
    EXPECT_EQ(step.cleared, BRect(75, 0, 100, 100));
}

TEST(WrapAtTest, APageInsideABorderIsOneToTheRight)
{
    const WrapStep step = WrapAt(ChartRect(kArea, true), 100, 0.5f, true);
    EXPECT_TRUE(step.wraps);
    EXPECT_EQ(step.column, 50);
    EXPECT_EQ(step.source, BRect(51, 1, 99, 99));
    EXPECT_EQ(step.target, BRect(1, 1, 49, 99));
    EXPECT_EQ(step.cleared, BRect(50, 1, 99, 99));
}

TEST(WrapAtTest, APageIsRoundedDownFromTheExactProduct)
{
    // 0.7f is a little less than 0.7.
    EXPECT_EQ(WrapAt(kArea, 101, 0.7f, false).column, 69);
    EXPECT_EQ(WrapAt(kArea, 101, 0.99f, false).column, 99);
}

TEST(WrapAtTest, APageOfNothingStartsAgain)
{
    const WrapStep step = WrapAt(kArea, 101, 0, false);
    EXPECT_EQ(step.column, 0);
    EXPECT_FALSE(step.source.IsValid());
    EXPECT_EQ(step.cleared, kArea);
}

TEST(WrapAtTest, AWholePageScrollsByOnePixel)
{
    const WrapStep step = WrapAt(kArea, 101, 1, false);
    EXPECT_TRUE(step.wraps);
    EXPECT_EQ(step.column, 100);
    EXPECT_EQ(step.source, BRect(1, 0, 100, 100));
    EXPECT_EQ(step.target, BRect(0, 0, 99, 100));
    EXPECT_EQ(step.cleared, BRect(100, 0, 100, 100));
}

TEST(WrapAtTest, AWholePageInsideABorderEndsBeforeIt)
{
    const WrapStep step = WrapAt(ChartRect(kArea, true), 100, 1, true);
    EXPECT_EQ(step.column, 99);
    EXPECT_EQ(step.source, BRect(2, 1, 99, 99));
    EXPECT_EQ(step.target, BRect(1, 1, 98, 99));
    EXPECT_EQ(step.cleared, BRect(99, 1, 99, 99));
}

TEST(WrapAtTest, AColumnBeyondTheEndComesBackToIt)
{
    // Switching a border on makes a full chart narrower.
    EXPECT_EQ(WrapAt(ChartRect(kArea, true), 101, 1, true).column, 99);
}

TEST(SourceStackTest, FourFullSourcesStandUponEachOther)
{
    SourceStack stack(kArea, 4, false);
    const float tops[] = {76, 51, 26, 1};
    float base = 100;
    for (float top : tops) {
        EXPECT_EQ(stack.Base(), base);
        EXPECT_EQ(stack.Push(1.0), top);
        base = top - 1;
    }
}

TEST(SourceStackTest, HeightsAreRoundedUp)
{
    SourceStack stack(kArea, 1, false);
    EXPECT_EQ(stack.Push(0.001), 99);
    EXPECT_EQ(SourceStack(kArea, 1, false).Push(0), 100);
    EXPECT_EQ(SourceStack(kArea, 1, false).Push(0.5), 50);
}

TEST(SourceStackTest, TheDivisionIsInSinglePrecision)
{
    // 100 / 3 less 1 is 97 / 3, which in single precision is a little less: this share of it is then below 1 and not
    // above.
    SourceStack stack(kArea, 3, false);
    EXPECT_EQ(stack.Push(3.0 / 97.0 * (1 + 1e-9)), 99);
}

TEST(SourceStackTest, InsideABorderTheBaseIsItsInnerRow)
{
    SourceStack stack(ChartRect(kArea, true), 1, true);
    EXPECT_EQ(stack.Base(), 99);
    EXPECT_EQ(stack.Push(1.0), 2);
}

TEST(SourceStackTest, MoreSourcesThanRowsDrawNothingUpwards)
{
    SourceStack stack(BRect(0, 0, 10, 3), 8, false);
    EXPECT_EQ(stack.Push(1.0), 3);
}

TEST(SourceStackTest, ValuesThatAreNoShareStayInReach)
{
    SourceStack stack(kArea, 1, false);
    EXPECT_EQ(stack.Push(std::nan("")), 100);
    EXPECT_EQ(SourceStack(kArea, 1, false).Push(-std::numeric_limits<double>::infinity()), 199);
    EXPECT_EQ(SourceStack(kArea, 1, false).Push(1e300), 1);
}

TEST(GaugeRowTest, HorizontalSegmentsLieEndToEnd)
{
    GaugeRow row(kArea, 2, false);
    EXPECT_EQ(row.Push(1.0), 49);
    EXPECT_EQ(row.Push(0.5), 50 + 24.5f);
}

TEST(GaugeRowTest, VerticalSegmentsGoUp)
{
    GaugeRow row(kArea, 2, true);
    EXPECT_EQ(row.Push(1.0), 99 - 49);
    EXPECT_EQ(row.Push(1.0), 49 - 49);
}

TEST(GaugeSegmentTest, HorizontalSegmentsTouch)
{
    const BRect first = GaugeSegment(kArea, nullptr, 49, false);
    EXPECT_EQ(first, BRect(0, 0, 49, 100));
    const BRect second = GaugeSegment(kArea, &first, 80, false);
    EXPECT_EQ(second, BRect(50, 0, 80, 100));
    EXPECT_EQ(GaugeRemainder(kArea, second, false), BRect(81, 0, 100, 100));
}

TEST(GaugeSegmentTest, VerticalSegmentsReachIntoTheOneBelow)
{
    const BRect first = GaugeSegment(kArea, nullptr, 50, true);
    EXPECT_EQ(first, BRect(0, 50, 100, 100));
    const BRect second = GaugeSegment(kArea, &first, 20, true);
    EXPECT_EQ(second, BRect(0, 20, 100, 51));
    EXPECT_EQ(GaugeRemainder(kArea, second, true), BRect(0, 0, 100, 21));
}

TEST(GaugeSegmentTest, ARemainderInsideABorderIsOneColumnShort)
{
    const BRect inner = ChartRect(kArea, true);
    EXPECT_EQ(GaugeRemainder(inner, BRect(1, 1, 40, 99), false), BRect(41, 1, 98, 99));
}

TEST(ColumnAfterResizeTest, KeepsItsShareOfTheWidth)
{
    EXPECT_EQ(ColumnAfterResize(50, 100, 200), 100);
    EXPECT_EQ(ColumnAfterResize(51, 100, 33), 16);
    EXPECT_EQ(ColumnAfterResize(kColumnZeroDrawn, 100, 300), 0);
    EXPECT_EQ(ColumnAfterResize(7, 0, 300), 0);
}

TEST(ChartBandTest, OneChartHasAllOfIt)
{
    EXPECT_EQ(ChartBand(BRect(0, 0, 200, 77), 1, 0), BRect(0, 0, 200, 77));
}

TEST(ChartBandTest, TheLastChartTakesWhatTheRoundingLeaves)
{
    const BRect bounds(0, 0, 200, 100);
    EXPECT_EQ(ChartBand(bounds, 3, 0), BRect(0, 0, 200, 33));
    EXPECT_EQ(ChartBand(bounds, 3, 1), BRect(0, 34, 200, 67));
    EXPECT_EQ(ChartBand(bounds, 3, 2), BRect(0, 68, 200, 100));
}

TEST(ChartBandTest, EqualBandsWhereTheyFit)
{
    const BRect bounds(0, 0, 200, 299);
    for (int32 i = 0; i < 3; i++) {
        const float top = static_cast<float>(i) * 100;
        EXPECT_EQ(ChartBand(bounds, 3, i), BRect(0, top, 200, top + 99));
    }
}

TEST(ChartBandTest, ManyChartsHaveEachTheirOwnRows)
{
    for (float bottom : {100.0f, 250.0f, 299.0f}) {
        float next = 0;
        for (int32 i = 0; i < 100; i++) {
            const BRect band = ChartBand(BRect(0, 0, 200, bottom), 100, i);
            EXPECT_EQ(band.top, next) << i;
            EXPECT_GE(band.bottom, band.top) << i;
            next = band.bottom + 1;
        }
        EXPECT_EQ(next, bottom + 1);
    }
}

TEST(ChartBandTest, AHolderWithoutRoomGivesNoNegativeHeight)
{
    for (float bottom : {-1.0f, 0.0f, 1.0f})
        for (int32 i = 0; i < 5; i++)
            EXPECT_GE(ChartBand(BRect(0, 0, 200, bottom), 5, i).Height(), 0) << bottom << " " << i;
}

TEST(SkipCounterTest, LetsEveryNthThrough)
{
    SkipCounter counter;
    EXPECT_TRUE(counter.Step(0));
    EXPECT_TRUE(counter.Step(0));
    EXPECT_FALSE(counter.Step(2));
    EXPECT_FALSE(counter.Step(2));
    EXPECT_TRUE(counter.Step(2));
    EXPECT_FALSE(counter.Step(2));
}

TEST(SkipCounterTest, ACounterThatIsLoadedWithTheSkipGoesThroughAtOnce)
{
    SkipCounter counter{5};
    EXPECT_TRUE(counter.Step(5));
    EXPECT_FALSE(counter.Step(5));
}

TEST(RefreshThrottleTest, LetsNothingThroughForTwentyMilliseconds)
{
    RefreshThrottle throttle;
    throttle.Start(1000000);
    EXPECT_FALSE(throttle.Passes(1000001));
    EXPECT_FALSE(throttle.Passes(1020000));
    EXPECT_TRUE(throttle.Passes(1020001));
    EXPECT_FALSE(throttle.Passes(1040001));
    EXPECT_TRUE(throttle.Passes(1040002));
}

TEST(DrawableFractionTest, KeepsShares)
{
    EXPECT_EQ(DrawableFraction(0.25), 0.25);
    EXPECT_EQ(DrawableFraction(-0.25), -0.25);
    EXPECT_EQ(DrawableFraction(2), 1);
    EXPECT_EQ(DrawableFraction(-2), -1);
    EXPECT_EQ(DrawableFraction(std::nan("")), 0);
}
