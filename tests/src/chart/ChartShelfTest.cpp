// SPDX-License-Identifier: MIT
#include "src/chart/ChartShelf.h"

#include "kits/support/TypeConstants.h"
#include "src/chart/ChartSteps.h"
#include "src/chart/ChartView.h"
#include "src/chart/ChartViewHolder.h"
#include "tests/support/ReplaceValue.h"

#include <gtest/gtest.h>

namespace {

class ChartShelfTest : public testing::Test {
protected:
    static BMessage Archive(const char* title = "from the desktop")
    {
        ChartView chart;
        chart.SetTitle(title);
        BMessage archive;
        EXPECT_EQ(chart.Archive(&archive, false), B_OK);
        return archive;
    }

    static bool Drop(ChartShelf& shelf, const std::string& identity)
    {
        BMessage archive = Archive();
        return shelf.AddReplicant(&archive, BPoint(), identity, BMessenger());
    }

    ChartViewHolder holder{BRect(0, 0, 200, 100)};
    ChartShelf shelf{&holder};
};

} // namespace

TEST_F(ChartShelfTest, OneThatIsDroppedAgainIsTakenOnce)
{
    EXPECT_TRUE(Drop(shelf, "one"));
    ASSERT_EQ(holder.CountCharts(), 4);
    EXPECT_STREQ(holder.ChartAt(3)->Title(), "from the desktop");
    EXPECT_TRUE(Drop(shelf, "one")) << "its source is to go all the same";
    EXPECT_EQ(holder.CountCharts(), 4);
    EXPECT_TRUE(Drop(shelf, "another"));
    EXPECT_EQ(holder.CountCharts(), 5);
    // From a program that names none.
    EXPECT_TRUE(Drop(shelf, "") && Drop(shelf, ""));
    EXPECT_EQ(holder.CountCharts(), 7);
}

TEST_F(ChartShelfTest, RemembersTheNewestOverSessions)
{
    for (size_t i = 0; i <= ChartShelf::kMostTaken; i++) {
        BMessage archive = Archive();
        ASSERT_TRUE(shelf.AddReplicant(&archive, BPoint(), std::to_string(i), BMessenger()));
        while (holder.CountCharts() > 0) {
            ChartView* const chart = holder.ChartAt(0);
            holder.RemoveChartView(chart);
            delete chart;
        }
    }
    BMessage saved;
    saved.AddString("Taken", "what was there before");
    shelf.SaveTo(&saved);
    int32 count = 0;
    saved.GetInfo("Taken", nullptr, &count);
    EXPECT_EQ(static_cast<size_t>(count), ChartShelf::kMostTaken);

    ChartShelf next(&holder);
    next.LoadFrom(saved);
    EXPECT_TRUE(Drop(next, "1") && Drop(next, std::to_string(ChartShelf::kMostTaken)));
    EXPECT_EQ(holder.CountCharts(), 0);
    EXPECT_TRUE(Drop(next, "0")) << "the oldest";
    EXPECT_EQ(holder.CountCharts(), 1);
}

TEST_F(ChartShelfTest, IsArchivedWithTheCharts)
{
    BMessage archive;
    archive.AddRect("Rect", BRect(0, 0, 200, 100));
    archive.AddString("Taken", "this one");
    const ChartViewHolder loaded(&archive);
    BMessage saved;
    ASSERT_EQ(loaded.Archive(&saved), B_OK);
    std::string identity;
    EXPECT_EQ(saved.FindString("Taken", &identity), B_OK);
    EXPECT_EQ(identity, "this one");
}

TEST_F(ChartShelfTest, TakesNothingThatIsNoChart)
{
    BMessage foreign = Archive();
    test::ReplaceString(foreign, "add_on", "application/x-vnd.other-Thing");
    EXPECT_FALSE(shelf.AddReplicant(&foreign, BPoint(), "foreign", BMessenger()));
    BMessage empty;
    EXPECT_FALSE(shelf.AddReplicant(&empty, BPoint(), "empty", BMessenger()));
    EXPECT_EQ(holder.CountCharts(), 3);
    // Nor does it remember the chart.
    EXPECT_TRUE(Drop(shelf, "foreign"));
    EXPECT_EQ(holder.CountCharts(), 4);
}
