// SPDX-License-Identifier: MIT
#include "src/chart/ChartRanges.h"

#include "kits/support/TypeConstants.h"
#include "src/chart/ChartViewHolder.h"
#include "tests/src/chart/ChartTestKit.h"

#include <cmath>
#include <limits>

namespace {

void ExpectAllKeysHaveARange(const BMessage& message, const char* what)
{
    const char* name = nullptr;
    for (int32 i = 0; message.GetInfo(B_ANY_TYPE, i, &name, nullptr) == B_OK; i++)
        EXPECT_NE(kFields.RangeOf(name), nullptr) << what << " writes " << name;
}

} // namespace

TEST(ChartRangesTest, EveryFieldThatIsWrittenHasARange)
{
    ChartView chart;
    AddSources(chart, 1);
    BMessage settings;
    chart.SavePrefsTo(&settings);
    ExpectAllKeysHaveARange(settings, "a chart");

    BMessage holder;
    ChartViewHolder(BRect(0, 0, 100, 100)).Archive(&holder, true);
    ExpectAllKeysHaveARange(holder, "a holder");
    ExpectAllKeysHaveARange(SourceArchive(VP_ALL_CPUS), "a source");
}

TEST(ChartRangesTest, EveryRangeHoldsItsEndsAndNothingElse)
{
    for (const kits::FieldRange& range : kFields) {
        EXPECT_LE(range.low, range.high) << range.key;
        EXPECT_TRUE(InRange(range.key, range.low)) << range.key;
        EXPECT_TRUE(InRange(range.key, range.high)) << range.key;
        EXPECT_FALSE(InRange(range.key, std::nextafter(range.low, -1e300))) << range.key;
        EXPECT_FALSE(InRange(range.key, std::nextafter(range.high, 1e300))) << range.key;
        EXPECT_FALSE(InRange(range.key, std::nan(""))) << range.key;
        EXPECT_FALSE(InRange(range.key, std::numeric_limits<double>::infinity())) << range.key;
        EXPECT_FALSE(InRange(range.key, -std::numeric_limits<double>::infinity())) << range.key;
    }
    EXPECT_FALSE(InRange("no such key", 0));
    EXPECT_EQ(kFields.RangeOf("no such key"), nullptr);
}

TEST(ChartRangesTest, EachKeyStandsThereOnce)
{
    for (const kits::FieldRange& range : kFields)
        EXPECT_EQ(kFields.RangeOf(range.key), &range) << range.key;
}

TEST(ChartRangesTest, FindsOnlyWhatIsInRange)
{
    BMessage message;
    message.AddInt16("SkipValue", 50);
    message.AddInt16("ValueSkipValue", 51);
    message.AddFloat("PageSize", std::nanf(""));
    message.AddFloat("Pos", 12);
    message.AddPoint("Coord", BPoint(3, 4));
    message.AddRect("Rect", BRect(5, 5, 4, 9));
    message.AddInt32("Target", 2051);
    int16 skip = 1;
    EXPECT_TRUE(FindInRange(message, "SkipValue", &skip));
    EXPECT_EQ(skip, 50);
    EXPECT_FALSE(FindInRange(message, "ValueSkipValue", &skip));
    EXPECT_FALSE(FindInRange(message, "ChartType", &skip));
    EXPECT_EQ(skip, 50);
    float number = 1;
    EXPECT_FALSE(FindInRange(message, "PageSize", &number));
    EXPECT_TRUE(FindInRange(message, "Pos", &number));
    EXPECT_EQ(number, 12);
    BPoint point;
    EXPECT_TRUE(FindInRange(message, "Coord", &point));
    EXPECT_EQ(point, BPoint(3, 4));
    BRect rect(0, 0, 1, 1);
    EXPECT_FALSE(FindInRange(message, "Rect", &rect));
    EXPECT_EQ(rect, BRect(0, 0, 1, 1));
    int32 target = 0;
    EXPECT_TRUE(FindInRange(message, "Target", &target));
    EXPECT_EQ(target, 2051);
    EXPECT_FALSE(FindInRange(message, "Flags", &target));
}
