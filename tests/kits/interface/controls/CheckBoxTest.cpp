// SPDX-License-Identifier: MIT
#include "kits/interface/CheckBox.h"

#include "tests/kits/interface/WidgetTest.h"

#include <QCheckBox>
#include <QFont>
#include <QImage>

class CheckBoxTest : public WidgetTest {
protected:
    CheckBoxTest()
        : fBox(new BCheckBox(BRect(10, 10, 15, 15), "box", "Draw Border", new BMessage(3)))
    {
        fPage->AddChild(fBox);
    }

    bool IsChecked() const { return static_cast<QCheckBox*>(FocusOf(fBox))->isChecked(); }

    BCheckBox* fBox;
};

TEST_F(CheckBoxTest, TheUserTurnsItOverAndItSays)
{
    EXPECT_EQ(fBox->Value(), B_CONTROL_OFF);
    test::Click(fBox, BPoint(8, 8));
    EXPECT_EQ(fBox->Value(), B_CONTROL_ON);
    EXPECT_EQ(Heard(), std::vector<uint32>{3});
    fBox->MakeFocus();
    test::Key(fWindow, ' ');
    EXPECT_EQ(fBox->Value(), B_CONTROL_OFF);
    EXPECT_EQ(Heard(), std::vector<uint32>{3});
}

TEST_F(CheckBoxTest, WhatTheProgramSetsIsSilent)
{
    fBox->SetValue(B_CONTROL_ON);
    EXPECT_TRUE(IsChecked());
    fBox->SetValue(B_CONTROL_OFF);
    EXPECT_FALSE(IsChecked());
    EXPECT_TRUE(Heard().empty());
}

TEST_F(CheckBoxTest, ItsMarkIsAsTallAsItsLetters)
{
    QWidget* widget = FocusOf(fBox);
    const QSize small = widget->sizeHint();
    QFont large = widget->font();
    large.setPixelSize(40);
    widget->setFont(large);
    float width = 0;
    float height = 0;
    fBox->GetPreferredSize(&width, &height);
    fBox->ResizeTo(width, height);
    test::Turn();
    const int letters = widget->fontMetrics().ascent();
    EXPECT_GT(letters, small.height());
    EXPECT_GE(widget->sizeHint().width(), letters + widget->fontMetrics().horizontalAdvance("Draw Border"));

    // The mark is everything drawn to the left of the text.
    const QImage picture = widget->grab().toImage();
    const QColor panel = widget->palette().color(QPalette::Window);
    const auto isDrawn = [&](int x) {
        for (int y = 0; y < picture.height(); y++)
            if (picture.pixelColor(x, y) != panel)
                return true;
        return false;
    };
    int side = 0;
    while (isDrawn(side))
        side++;
    EXPECT_NEAR(side, letters, 1);
    int text = side;
    while (!isDrawn(text))
        text++;
    EXPECT_GE(text - side, 2) << "between it and the text";

    test::Click(fBox, BPoint(static_cast<float>(letters - 3), height / 2));
    EXPECT_EQ(fBox->Value(), B_CONTROL_ON);
    EXPECT_NE(widget->grab().toImage(), picture);
}

TEST_F(CheckBoxTest, AnyOtherNumberIsOn)
{
    fBox->SetValue(-5);
    EXPECT_EQ(fBox->Value(), B_CONTROL_ON);
}

TEST_F(CheckBoxTest, IsAsLargeAsItsLabelAsks)
{
    float width = 0;
    float height = 0;
    fBox->GetPreferredSize(&width, &height);
    EXPECT_EQ(fBox->Bounds(), BRect(0, 0, width, height));
    EXPECT_EQ(AccessibleName(fBox), "Draw Border");
}

TEST_F(CheckBoxTest, AValueSetOnAnotherThreadCountsAtOnceAndShowsLater)
{
    int32 seen = -1;
    OnOtherThread([&] {
        fBox->SetValue(B_CONTROL_ON);
        seen = fBox->Value();
    });
    EXPECT_TRUE(test::WaitFor([&] { return IsChecked(); }));
    EXPECT_EQ(seen, B_CONTROL_ON);
    EXPECT_TRUE(Heard().empty());
}

TEST_F(CheckBoxTest, ItsLabelCanBeReadOnAPageOfAnyColour)
{
    for (const uint8 gray : {0, 60, 216, 255}) {
        fBox->SetViewColor(gray, gray, gray);
        const int ink = qGray(FocusOf(fBox)->palette().color(QPalette::WindowText).rgb());
        EXPECT_GT(std::abs(ink - gray), 90) << "on " << int(gray);
    }
}

TEST_F(CheckBoxTest, NarrowsItsLettersWhereItsLabelHasNoRoom)
{
    float preferred = 0;
    fBox->GetPreferredSize(&preferred, nullptr);
    const auto stretch = [this] { return FocusOf(fBox)->font().stretch(); };
    const float narrowest = fBox->NarrowestWidth();
    EXPECT_LT(narrowest, preferred - 5);
    fBox->ResizeTo(narrowest, fBox->Bounds().Height());
    test::Turn();
    EXPECT_LT(stretch(), QFont::Unstretched);
    EXPECT_GE(stretch(), 80);
    float now = 0;
    fBox->GetPreferredSize(&now, nullptr);
    EXPECT_EQ(now, preferred);
    EXPECT_EQ(fBox->NarrowestWidth(), narrowest);
    fBox->ResizeTo(preferred, fBox->Bounds().Height());
    test::Turn();
    EXPECT_EQ(stretch(), QFont::Unstretched);
}
