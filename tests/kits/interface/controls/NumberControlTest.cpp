// SPDX-License-Identifier: MIT
#include "kits/interface/NumberControl.h"

#include "tests/kits/interface/WidgetTest.h"

#include <QSpinBox>

class NumberControlTest : public WidgetTest {
protected:
    BNumberControl* Add(int32 min, int32 max)
    {
        auto* number = new BNumberControl(BRect(10, 10, 12, 12), "Size", new BMessage(1), min, max);
        fPage->AddChild(number);
        return number;
    }

    void Type(const std::string& text)
    {
        for (const char c : text)
            test::Key(fWindow, c);
        test::Turn();
    }

    static std::string TextOf(const BNumberControl* number)
    {
        return static_cast<QSpinBox*>(FocusOf(number))->text().toStdString();
    }
};

TEST_F(NumberControlTest, HoldsItsValueToTheRange)
{
    BNumberControl* number = Add(200, 4);
    EXPECT_EQ(number->Value(), 4);
    number->SetValue(15);
    EXPECT_EQ(TextOf(number), "15");
    number->SetValue(3);
    EXPECT_EQ(number->Value(), 4);
    number->SetValue(201);
    EXPECT_EQ(number->Value(), 200);
    test::Turn();
    EXPECT_TRUE(fWindow->heard.empty()) << "what the program sets is silent";
}

TEST_F(NumberControlTest, HasRoomForTheLongestNumberAndAName)
{
    const BNumberControl* number = Add(4, 200);
    EXPECT_GT(number->Bounds().Width(), fPage->StringWidth("200"));
    EXPECT_GE(number->Bounds().Height() + 1, 12);
    EXPECT_EQ(AccessibleName(number), "Size");
}

TEST_F(NumberControlTest, SpeaksForEachNumberThatIsTyped)
{
    BNumberControl* number = Add(4, 200);
    number->SetValue(40);
    number->MakeFocus(true);
    test::Turn();
    test::Key(fWindow, 'a', B_COMMAND_KEY);
    Type("1");
    EXPECT_EQ(number->Value(), 40) << "1 is too small, and may become more";
    Type("5");
    EXPECT_EQ(number->Value(), 15);
    ASSERT_EQ(fWindow->heard.size(), 1u);
    test::Key(fWindow, B_UP_ARROW);
    test::Turn();
    EXPECT_EQ(number->Value(), 16);
    EXPECT_EQ(fWindow->heard.size(), 2u);
}

TEST_F(NumberControlTest, WhatIsNoNumberIsTheLastOneWhenTheFieldIsLeft)
{
    BNumberControl* number = Add(4, 200);
    BNumberControl* other = Add(0, 1);
    other->MoveTo(10, 60);
    number->SetValue(40);
    number->MakeFocus(true);
    test::Turn();
    test::Key(fWindow, 'a', B_COMMAND_KEY);
    Type("1x");
    other->MakeFocus(true);
    test::Turn();
    EXPECT_EQ(number->Value(), 40);
    EXPECT_EQ(TextOf(number), "40");
    EXPECT_TRUE(fWindow->heard.empty());
}
