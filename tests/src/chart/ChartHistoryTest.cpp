// SPDX-License-Identifier: MIT
#include "src/chart/ChartHistory.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace {

/// Returns the times of the rows.
std::string Times(const ChartHistory& history)
{
    std::string times;
    for (int32 i = 0; i < history.CountRows(); i++)
        times += std::to_string(history.RowAt(i).time) + " ";
    return times;
}

void AddRows(ChartHistory& history, int32 from, int32 to)
{
    for (int32 i = from; i <= to; i++)
        history.Add(i, {i / 10.0, i / 100.0}, 2);
}

} // namespace

TEST(ChartHistory, HoldsNothingWithoutRoom)
{
    ChartHistory history;
    AddRows(history, 1, 3);
    history.KeepNewest(0);
    history.InsertSource(0);
    EXPECT_EQ(history.CountRows(), 0);
}

TEST(ChartHistory, KeepsTheNewest)
{
    ChartHistory history;
    history.SetCapacity(3);
    AddRows(history, 1, 5);
    EXPECT_EQ(Times(history), "3 4 5 ");
    EXPECT_FLOAT_EQ(history.RowAt(2).shares[0], 0.5f);
    EXPECT_FLOAT_EQ(history.RowAt(2).shares[1], 0.05f);
    EXPECT_TRUE(std::isnan(history.RowAt(2).shares[2]));
    history.KeepNewest(7);
    EXPECT_EQ(history.CountRows(), 3);
    history.KeepNewest(2);
    EXPECT_EQ(Times(history), "4 5 ");
    AddRows(history, 6, 7);
    EXPECT_EQ(Times(history), "5 6 7 ");
    history.KeepNewest(-1);
    EXPECT_EQ(history.CountRows(), 0);
}

TEST(ChartHistory, ChangesItsRoomWithoutLosingWhatFits)
{
    ChartHistory history;
    history.SetCapacity(3);
    AddRows(history, 1, 5);
    history.SetCapacity(5);
    AddRows(history, 6, 7);
    EXPECT_EQ(Times(history), "3 4 5 6 7 ");
    history.SetCapacity(2);
    EXPECT_EQ(Times(history), "6 7 ");
    history.SetCapacity(0);
    EXPECT_EQ(history.CountRows(), 0);
}

TEST(ChartHistory, SourcesComeAndGoWithTheirFigures)
{
    ChartHistory history;
    history.SetCapacity(3);
    AddRows(history, 1, 5);
    history.InsertSource(1);
    EXPECT_FLOAT_EQ(history.RowAt(0).shares[0], 0.3f);
    EXPECT_TRUE(std::isnan(history.RowAt(0).shares[1]));
    EXPECT_FLOAT_EQ(history.RowAt(0).shares[2], 0.03f);
    history.RemoveSource(0);
    EXPECT_TRUE(std::isnan(history.RowAt(0).shares[0]));
    EXPECT_FLOAT_EQ(history.RowAt(0).shares[1], 0.03f);
    EXPECT_TRUE(std::isnan(history.RowAt(0).shares[2]));
    history.InsertSource(7);
    history.RemoveSource(7);
    EXPECT_FLOAT_EQ(history.RowAt(2).shares[1], 0.05f);
}
