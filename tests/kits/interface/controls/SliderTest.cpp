// SPDX-License-Identifier: MIT
#include "kits/interface/Slider.h"

#include "kits/interface/controls/SliderWidget.h"
#include "tests/kits/interface/WidgetTest.h"

#include <QImage>

#include <cmath>
#include <limits>

class SliderTest : public WidgetTest {
protected:
    BSlider* Add(int32 min, int32 max)
    {
        auto* slider =
            new BSlider(BRect(10, 10, 309, 12), "slider", "Delay", new BMessage(1), min, max, B_TRIANGLE_THUMB);
        slider->SetLimitLabels("Off", "Full");
        fPage->AddChild(slider);
        return slider;
    }

    static kits::SliderBar* BarOf(const BSlider* slider) { return static_cast<kits::SliderBar*>(FocusOf(slider)); }

    /// Returns a place at half the bar's height, in the slider's coordinates.
    static BPoint OnBar(const BSlider* slider, float x)
    {
        const QPoint top = BarOf(slider)->mapTo(kits::ViewWidget(slider), QPoint(0, BarOf(slider)->height() / 2));
        return BPoint(x, static_cast<float>(top.y()));
    }
};

TEST_F(SliderTest, APositionGivesTheNearestValueAndTheValueGivesItsPart)
{
    BSlider* slider = Add(0, 200);
    slider->SetPosition((0.2f - 0.01f) / 4.99f);
    EXPECT_EQ(slider->Value(), 8);
    EXPECT_EQ(slider->Position(), 8 / 200.0f);
    slider->SetPosition(0.0026f);
    EXPECT_EQ(slider->Value(), 1);
    slider->SetPosition(0.0024f);
    EXPECT_EQ(slider->Value(), 0);
    slider->SetPosition(1);
    EXPECT_EQ(slider->Value(), 200);
    EXPECT_EQ(slider->Position(), 1.0f);
}

TEST_F(SliderTest, ARangeNeedNotBeginAtNought)
{
    BSlider* slider = Add(2, 200);
    EXPECT_EQ(slider->Value(), 2);
    EXPECT_EQ(slider->Position(), 0.0f);
    slider->SetPosition(0.5f);
    EXPECT_EQ(slider->Value(), 101);
    EXPECT_EQ(slider->Position(), 99 / 198.0f);
}

TEST_F(SliderTest, WhatIsOutOfRangeIsHeldToIt)
{
    BSlider* slider = Add(2, 200);
    slider->SetValue(1000);
    EXPECT_EQ(slider->Value(), 200);
    slider->SetValue(-1000);
    EXPECT_EQ(slider->Value(), 2);
    slider->SetPosition(7);
    EXPECT_EQ(slider->Value(), 200);
    slider->SetPosition(std::nanf(""));
    EXPECT_EQ(slider->Value(), 2);
    slider->SetPosition(std::numeric_limits<float>::infinity());
    EXPECT_EQ(slider->Value(), 200);
    BSlider* turned = Add(50, 10);
    EXPECT_EQ(turned->Value(), 10);
    turned->SetPosition(1);
    EXPECT_EQ(turned->Value(), 50);
}

TEST_F(SliderTest, TheWidestRangeWorks)
{
    BSlider* slider = Add(std::numeric_limits<int32>::min(), std::numeric_limits<int32>::max());
    slider->SetHashMarks(B_HASH_MARKS_BOTTOM);
    slider->SetHashMarkCount(20);
    slider->SetPosition(1);
    EXPECT_EQ(slider->Value(), std::numeric_limits<int32>::max());
    slider->SetPosition(0);
    EXPECT_EQ(slider->Value(), std::numeric_limits<int32>::min());
    EXPECT_EQ(slider->Position(), 0.0f);
    test::Turn();
    BSlider* point = Add(5, 5);
    EXPECT_EQ(point->Position(), 0.0f);
    point->SetPosition(1);
    EXPECT_EQ(point->Value(), 5);
}

TEST_F(SliderTest, WhatTheProgramSetsIsSilent)
{
    BSlider* slider = Add(0, 100);
    slider->SetValue(40);
    slider->SetPosition(0.7f);
    slider->SetLabel("Wait");
    EXPECT_TRUE(Heard().empty());
    EXPECT_EQ(BarOf(slider)->value(), 70);
}

TEST_F(SliderTest, SpeaksWhileItMoves)
{
    BSlider* slider = Add(0, 100);
    test::Press(slider, OnBar(slider, 150));
    EXPECT_EQ(Heard(), std::vector<uint32>{1}) << "the thumb goes to the press";
    EXPECT_NEAR(slider->Value(), 50, 2);
    test::MoveTo(slider, OnBar(slider, 200));
    EXPECT_EQ(Heard(), std::vector<uint32>{1});
    EXPECT_NEAR(slider->Value(), 67, 3);
    test::MoveTo(slider, OnBar(slider, 1000));
    EXPECT_EQ(slider->Value(), 100);
    EXPECT_EQ(Heard(), std::vector<uint32>{1});
    test::Release(slider, OnBar(slider, 1000));
    EXPECT_TRUE(Heard().empty());
}

TEST_F(SliderTest, AllByKeyboard)
{
    BSlider* slider = Add(0, 200);
    slider->MakeFocus();
    ASSERT_TRUE(slider->IsFocus());
    test::Key(fWindow, B_RIGHT_ARROW);
    EXPECT_EQ(slider->Value(), 1);
    EXPECT_EQ(Heard(), std::vector<uint32>{1});
    SendKey(FocusOf(slider), Qt::Key_PageUp);
    EXPECT_EQ(slider->Value(), 21);
    SendKey(FocusOf(slider), Qt::Key_End);
    EXPECT_EQ(slider->Value(), 200);
    SendKey(FocusOf(slider), Qt::Key_Home);
    EXPECT_EQ(slider->Value(), 0);
}

TEST_F(SliderTest, KeepsItsWidthAndTakesTheHeightOfItsFont)
{
    BSlider* slider = Add(0, 100);
    float height = 0;
    slider->GetPreferredSize(nullptr, &height);
    EXPECT_EQ(slider->Bounds(), BRect(0, 0, 299, height));
    auto* high = new BSlider(BRect(100, 100, 200, 200), "high", "Delay", nullptr, 0, 1);
    fPage->AddChild(high);
    EXPECT_LT(high->Bounds().Height(), 100);
    EXPECT_EQ(high->Bounds().Width(), 100);
}

TEST_F(SliderTest, ShowsAnyNumberOfHashMarksEvenly)
{
    BSlider* slider = Add(0, 50);
    kits::SliderBar* bar = BarOf(slider);
    slider->SetHashMarks(B_HASH_MARKS_BOTTOM);
    slider->SetHashMarkCount(10);
    test::Turn();
    const QImage marked = bar->grab().toImage();

    // This row of the bar has marks and nothing else.
    std::vector<int> columns;
    const int row = marked.height() - 4;
    for (int x = 0; x < marked.width(); x++) {
        const bool mark = marked.pixel(x, row) != marked.pixel(0, row);
        if (mark && (columns.empty() || x > columns.back() + 2))
            columns.push_back(x);
    }
    ASSERT_EQ(columns.size(), 10u);
    const double gap = (columns.back() - columns.front()) / 9.0;
    for (std::size_t i = 1; i < columns.size(); i++)
        EXPECT_NEAR(columns[i] - columns[i - 1], gap, 1.5);
}

TEST_F(SliderTest, TheLabelIsShownAndSpoken)
{
    BSlider* slider = Add(0, 100);
    EXPECT_EQ(AccessibleName(slider), "Delay");
    slider->SetLabel("Wait 0.2 sec between samples");
    EXPECT_EQ(AccessibleName(slider), "Wait 0.2 sec between samples");
    EXPECT_STREQ(slider->MinLimitLabel(), "Off");
    EXPECT_STREQ(slider->MaxLimitLabel(), "Full");
    EXPECT_EQ(slider->Style(), B_TRIANGLE_THUMB);
}
