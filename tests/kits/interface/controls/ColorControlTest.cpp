// SPDX-License-Identifier: MIT
#include "kits/interface/ColorControl.h"

#include "kits/interface/controls/ColorWidget.h"
#include "tests/kits/interface/WidgetTest.h"

#include <QSpinBox>

class ColorControlTest : public WidgetTest {
protected:
    ColorControlTest()
        : fColor(new BColorControl(BPoint(0, 0), B_CELLS_32x8, 8, "color", new BMessage(1), true))
    {
        fPage->AddChild(fColor);
    }

    QList<kits::ColorRamp*> Ramps() const
    {
        QList<kits::ColorRamp*> ramps;
        for (QSlider* slider : kits::ViewWidget(fColor)->findChildren<QSlider*>())
            ramps.append(static_cast<kits::ColorRamp*>(slider));
        return ramps;
    }
    QList<QSpinBox*> Numbers() const { return kits::ViewWidget(fColor)->findChildren<QSpinBox*>(); }

    BColorControl* fColor;
};

TEST_F(ColorControlTest, TheValueIsThePackedColour)
{
    fColor->SetValue(make_color(0x12, 0x34, 0x56));
    EXPECT_EQ(fColor->Value(), 0x12345600);
    fColor->SetValue(static_cast<int32>(0xFEDCBA98));
    EXPECT_EQ(static_cast<uint32>(fColor->Value()), 0xFEDCBA00u) << "the lowest byte is dropped";
    EXPECT_EQ(fColor->ValueAsColor(), make_color(0xFE, 0xDC, 0xBA, 255));
    EXPECT_TRUE(Heard().empty());
}

TEST_F(ColorControlTest, IsAsLargeAsItsCellsAndNumbers)
{
    const BRect bounds = fColor->Bounds();
    EXPECT_GT(bounds.Width(), 256);
    EXPECT_LT(bounds.Width(), 340);
    EXPECT_GE(bounds.Height(), 63);
    EXPECT_EQ(Ramps()[0]->width(), 256);
}

TEST_F(ColorControlTest, RampsAndNumbersShowTheColour)
{
    fColor->SetValue(make_color(10, 20, 30));
    ASSERT_EQ(Ramps().size(), 3);
    ASSERT_EQ(Numbers().size(), 3);
    for (int i = 0; i < 3; i++) {
        EXPECT_EQ(Ramps()[i]->value(), 10 * (i + 1));
        EXPECT_EQ(Numbers()[i]->value(), 10 * (i + 1));
    }
}

TEST_F(ColorControlTest, APressOnARampPicksAndDraggingGoesOn)
{
    const auto middle = static_cast<float>(Ramps()[1]->geometry().center().y());
    test::Press(fColor, BPoint(1, middle));
    test::MoveTo(fColor, BPoint(128, middle));
    EXPECT_NEAR(fColor->ValueAsColor().green, 128, 1);
    EXPECT_EQ(Heard(), std::vector<uint32>{1});
    test::MoveTo(fColor, BPoint(2000, middle));
    EXPECT_EQ(fColor->ValueAsColor(), make_color(0, 255, 0));
    EXPECT_EQ(Heard(), std::vector<uint32>{1});
    test::Release(fColor, BPoint(2000, middle));
    EXPECT_TRUE(Heard().empty());
}

TEST_F(ColorControlTest, AllByKeyboard)
{
    fColor->MakeFocus();
    test::Key(fWindow, B_RIGHT_ARROW);
    EXPECT_EQ(fColor->ValueAsColor(), make_color(1, 0, 0));
    EXPECT_EQ(Heard(), std::vector<uint32>{1});
    SendKey(Ramps()[2], Qt::Key_PageUp);
    EXPECT_EQ(fColor->ValueAsColor(), make_color(1, 0, 16));
    SendKey(Ramps()[1], Qt::Key_End);
    EXPECT_EQ(fColor->ValueAsColor(), make_color(1, 255, 16));
    Heard();
    Numbers()[0]->setFocus();
    Numbers()[0]->selectAll();
    test::Key(fWindow, '7');
    test::Key(fWindow, '7');
    EXPECT_EQ(fColor->ValueAsColor(), make_color(77, 255, 16));
    EXPECT_EQ(Heard(), (std::vector<uint32>{1, 1}));
}

TEST_F(ColorControlTest, EachPartIsSpoken)
{
    EXPECT_EQ(Ramps()[0]->accessibleName(), QLatin1String("Red"));
    EXPECT_EQ(Numbers()[2]->accessibleName(), QLatin1String("Blue"));
}
