// SPDX-License-Identifier: MIT
#include "src/chart/ChartCaptions.h"

#include "tests/support/GuiTest.h"

#include <gtest/gtest.h>

// Places, choice and drawing of the two captions, in a view that is no chart.

namespace {

class ChartCaptionsTest : public testing::Test {
protected:
    void SetUp() override
    {
        settings.titleText = "Title";
        captions.SetValueText("12 %");
        window = new BWindow(BRect(60, 70, 359, 269), "Test", B_TITLED_WINDOW, 0);
        view = new BView(kBounds, "", B_FOLLOW_NONE, B_WILL_DRAW);
        window->AddChild(view);
        window->Show();
        test::Turn();
        captions.MoveTo(captions.Title(), BPoint(20, 30), kBounds);
        captions.MoveTo(captions.Value(), BPoint(20, 90), kBounds);
    }

    void TearDown() override
    {
        window->Quit();
        test::Turn();
    }

    void DrawBoth()
    {
        captions.Draw(*view, captions.Value(), kNothingDrawn);
        captions.Draw(*view, captions.Title(), kNothingDrawn);
    }

    static constexpr BRect kBounds{0, 0, 199, 119};
    ChartSettings settings;
    ChartCaptions captions{settings};
    BWindow* window = nullptr;
    BView* view = nullptr;
};

} // namespace

TEST_F(ChartCaptionsTest, NothingIsThereBeforeItWasDrawn)
{
    EXPECT_EQ(captions.At(BPoint(22, 28)), nullptr);
    DrawBoth();
    EXPECT_EQ(captions.At(BPoint(22, 28)), &captions.Title());
    EXPECT_EQ(captions.At(BPoint(22, 88)), &captions.Value());
    EXPECT_EQ(captions.At(BPoint(190, 60)), nullptr);
    EXPECT_EQ(captions.Title().drawn.left, 20);
}

TEST_F(ChartCaptionsTest, OneThatDoesNotShowIsNowhere)
{
    settings.title.shown = false;
    DrawBoth();
    EXPECT_FALSE(captions.Title().drawn.IsValid());
    EXPECT_EQ(captions.At(BPoint(22, 28)), nullptr);
}

TEST_F(ChartCaptionsTest, IsHeldInsideTheChart)
{
    EXPECT_TRUE(captions.MoveTo(captions.Title(), BPoint(-50, 500), kBounds));
    EXPECT_EQ(settings.title.where.x, 1);
    EXPECT_LT(settings.title.where.y, kBounds.bottom);
    EXPECT_FALSE(captions.MoveTo(captions.Title(), BPoint(-60, 600), kBounds));
}

TEST_F(ChartCaptionsTest, TellsWhetherTheValueChanged)
{
    EXPECT_FALSE(captions.SetValueText("12 %"));
    EXPECT_TRUE(captions.SetValueText("13 %"));
    EXPECT_STREQ(captions.ValueText(), "13 %");
    EXPECT_STREQ(captions.TextOf(captions.Title()), "Title");
}

TEST_F(ChartCaptionsTest, IsChosenFromTheTitleToTheValueAndToNone)
{
    EXPECT_EQ(captions.Chosen(), nullptr);
    EXPECT_TRUE(captions.Choose(captions.NextToChoose()));
    EXPECT_EQ(captions.Chosen(), &captions.Title());
    EXPECT_EQ(captions.ChosenFrom(), BPoint(20, 30));
    EXPECT_FALSE(captions.Choose(&captions.Title()));
    captions.Choose(captions.NextToChoose());
    EXPECT_EQ(captions.Chosen(), &captions.Value());
    EXPECT_EQ(captions.NextToChoose(), nullptr);
    settings.value.shown = false;
    EXPECT_EQ(captions.Chosen(), nullptr);
}

TEST_F(ChartCaptionsTest, APlaceOnACaptionIsNotOnTheOtherWhereTheyDiffer)
{
    captions.MoveTo(captions.Value(), BPoint(20, 40), kBounds);
    DrawBoth();
    ASSERT_TRUE(captions.Title().drawn.Intersects(captions.Value().drawn));
    const BPoint place = captions.PlaceOn(captions.Title());
    EXPECT_TRUE(captions.Title().IsOn(place));
    EXPECT_FALSE(captions.Value().IsOn(place));
}

TEST_F(ChartCaptionsTest, TheTextFadesToTheColourOfItsTarget)
{
    settings.title.color = {200, 200, 200, 0};
    settings.title.aaTarget = kAATargetBackground;
    settings.title.aaValue = 0;
    captions.ColorChanged(captions.Title());
    EXPECT_EQ(captions.Title().aaColor, settings.backgroundColor);
    settings.backgroundColor = {10, 20, 30, 0};
    captions.ColorsChanged();
    EXPECT_EQ(captions.Title().aaColor, settings.backgroundColor);
}
