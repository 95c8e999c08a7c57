// SPDX-License-Identifier: MIT
#include "src/chart/ChartSettings.h"

#include "tests/support/FieldAt.h"

#include <gtest/gtest.h>

// The settings that a chart writes to messages, and those that it accepts from them.

namespace {

/// Returns the names of a message's fields, in their order, each with the number of its values.
std::string Fields(const BMessage& message)
{
    std::string names;
    const char* name = nullptr;
    int32 count = 0;
    type_code type = B_ANY_TYPE;
    for (int32 i = 0; test::FieldAt(message, B_ANY_TYPE, i, &name, &type, &count); i++)
        names += (names.empty() ? "" : " ") + std::string(name) + (count > 1 ? "*" + std::to_string(count) : "");
    return names;
}

} // namespace

TEST(ChartSettingsTest, EachGroupHasItsFieldsInOrder)
{
    const ChartSettings settings;
    BMessage colors;
    EXPECT_EQ(settings.SaveColors(&colors), B_OK);
    EXPECT_EQ(Fields(colors), "ValueAATarget TitleAATarget ValueAAValue TitleAAValue ChartColor*8 BackgroundColor "
                              "ValueColor TitleColor BorderColor");
    BMessage general;
    EXPECT_EQ(settings.SaveGeneral(&general), B_OK);
    EXPECT_EQ(Fields(general), "SkipValue ValueSkipValue ChartType PageSize ShowValue ShowTitle ShowBorder ValueCoord "
                               "TitleCoord PrefsWindowArchive LockBgColor Title Mode Transparent Vertical ValueFont "
                               "TitleFont");
}

TEST(ChartSettingsTest, WhatWasSavedIsLoaded)
{
    ChartSettings saved;
    saved.value.aaTarget = kAATargetChart;
    saved.title.aaValue = 0.5f;
    saved.title.where = BPoint(-3, 7);
    saved.value.shown = false;
    saved.showBorder = true;
    saved.skip = 3;
    saved.valueSkip = 4;
    saved.pageSize = 0.25f;
    saved.chartType = kPointChart;
    BMessage message;
    saved.SaveColors(&message);
    saved.SaveGeneral(&message);
    ChartSettings loaded;
    loaded.Load(message);
    EXPECT_EQ(loaded.value.aaTarget, kAATargetChart);
    EXPECT_EQ(loaded.title.aaTarget, kAATargetAverage);
    EXPECT_EQ(loaded.title.aaValue, 0.5f);
    EXPECT_EQ(loaded.title.where, BPoint(-3, 7));
    EXPECT_FALSE(loaded.value.shown);
    EXPECT_TRUE(loaded.title.shown);
    EXPECT_TRUE(loaded.showBorder);
    EXPECT_EQ(loaded.skip, 3);
    EXPECT_EQ(loaded.valueSkip, 4);
    EXPECT_EQ(loaded.pageSize, 0.25f);
    EXPECT_EQ(loaded.chartType, kPointChart);
}

TEST(ChartSettingsTest, ZeroCountsAsMissingForSharesAndNotForCounts)
{
    ChartSettings settings;
    settings.skip = 5;
    BMessage message;
    kValueAAValueField.Add(&message, 0);
    kPageSizeField.Add(&message, 0);
    kSkipValueField.Add(&message, 0);
    settings.Load(message);
    EXPECT_EQ(settings.value.aaValue, 0.25f);
    EXPECT_EQ(settings.pageSize, 0.75f);
    EXPECT_EQ(settings.skip, 0);
}

TEST(ChartSettingsTest, SettersTakeWhatTheFieldHolds)
{
    int16 skip = 1;
    SetInRange<int16>(kSkipValueField, 50, &skip);
    EXPECT_EQ(skip, 50);
    SetInRange<int16>(kSkipValueField, 51, &skip);
    SetInRange<int16>(kSkipValueField, -1, &skip);
    EXPECT_EQ(skip, 50);
}

TEST(ChartSettingsTest, ACaptionFadesToItsTarget)
{
    ChartSettings settings;
    settings.chartColors[0] = {100, 0, 0, 0};
    settings.backgroundColor = {0, 50, 0, 0};
    const rgb_color black{0, 0, 0, 0};
    EXPECT_EQ(settings.CalcAA(black, kAATargetChart, 0), (rgb_color{100, 0, 0, 0}));
    EXPECT_EQ(settings.CalcAA(black, kAATargetBackground, 0), (rgb_color{0, 50, 0, 0}));
    EXPECT_EQ(settings.CalcAA(black, kAATargetAverage, 0), (rgb_color{50, 25, 0, 0}));
    EXPECT_EQ(settings.CalcAA(black, kAATargetChart, 1), black);
}
