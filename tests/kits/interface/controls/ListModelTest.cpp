// SPDX-License-Identifier: MIT
#include "kits/interface/controls/ListModel.h"

#include <gtest/gtest.h>

#include <string>

class ListModelTest : public testing::Test {
protected:
    /// Makes one row per letter; leading spaces give its level, and a minus sign after it collapses it.
    void Fill(const std::vector<std::string>& rows)
    {
        for (const std::string& row : rows) {
            const auto level = static_cast<int32>(row.find_first_not_of(' '));
            const bool expanded = row.back() != '-';
            fModel.Insert(new BStringItem(row.substr(static_cast<std::size_t>(level), 1).c_str(), level, expanded),
                          fModel.CountFull());
        }
    }

    std::string Shown() const
    {
        std::string result;
        for (const BListItem* item : fModel.Shown())
            result += item->Text();
        return result;
    }

    kits::ListModel fModel;
};

TEST_F(ListModelTest, RowsUnderAClosedOneDoNotShow)
{
    Fill({"a", " b-", "  c", "  d", " e", "f-", " g"});
    EXPECT_EQ(Shown(), "abef");
    EXPECT_EQ(fModel.CountFull(), 7);
    EXPECT_EQ(fModel.ShownIndexOf(fModel.FullAt(4)), 2);
    EXPECT_EQ(fModel.ShownIndexOf(fModel.FullAt(2)), -1);
}

TEST_F(ListModelTest, LevelsTellWhatStandsUnderWhat)
{
    Fill({"a", " b", "  c", " d", "e"});
    EXPECT_EQ(fModel.EndOfUnder(0), 4);
    EXPECT_EQ(fModel.EndOfUnder(1), 3);
    EXPECT_EQ(fModel.EndOfUnder(4), 5);
    EXPECT_EQ(fModel.ParentOf(2), 1);
    EXPECT_EQ(fModel.ParentOf(3), 0);
    EXPECT_EQ(fModel.ParentOf(4), -1);
}

TEST_F(ListModelTest, ARowThatSkipsALevelStandsUnderTheNearestHigherOne)
{
    Fill({"a", "   b", " c"});
    EXPECT_EQ(fModel.ParentOf(1), 0);
    EXPECT_EQ(fModel.ParentOf(2), 0);
}

TEST_F(ListModelTest, ChangesAreCounted)
{
    Fill({"a"});
    const uint64 before = fModel.Version();
    EXPECT_FALSE(fModel.Insert(nullptr, 5));
    EXPECT_EQ(fModel.Version(), before);
    fModel.MakeEmpty();
    EXPECT_NE(fModel.Version(), before);
    EXPECT_EQ(Shown(), "");
}
