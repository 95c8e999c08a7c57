// SPDX-License-Identifier: MIT
#include "kits/interface/TextControl.h"

#include "tests/kits/interface/WidgetTest.h"

#include <QLineEdit>

class TextControlTest : public WidgetTest {
protected:
    TextControlTest()
        : fText(new BTextControl(BRect(10, 10, 309, 12), "text", "Title: ", "CPU", new BMessage(1)))
    {
        fText->SetModificationMessage(new BMessage(2));
        fPage->AddChild(fText);
    }

    QLineEdit* Edit() const { return static_cast<QLineEdit*>(FocusOf(fText)); }

    BTextControl* fText;
};

TEST_F(TextControlTest, EveryEditAndEnterAreSaid)
{
    fText->MakeFocus();
    Edit()->end(false);
    test::Key(fWindow, '1');
    EXPECT_EQ(Heard(), std::vector<uint32>{2});
    EXPECT_STREQ(fText->Text(), "CPU1");
    test::Key(fWindow, '2');
    EXPECT_EQ(Heard(), std::vector<uint32>{2});
    test::Key(fWindow, B_ENTER);
    EXPECT_EQ(Heard(), std::vector<uint32>{1});
    EXPECT_STREQ(fText->Text(), "CPU12");
}

TEST_F(TextControlTest, WhatTheProgramSetsIsSilentAndTheSameTextChangesNothing)
{
    fText->SetText("Memory");
    EXPECT_EQ(Edit()->text(), QLatin1String("Memory"));
    EXPECT_TRUE(Heard().empty());
    Edit()->setSelection(1, 3);
    fText->SetText("Memory");
    EXPECT_EQ(Edit()->selectedText(), QLatin1String("emo"));
    fText->SetText(nullptr);
    EXPECT_STREQ(fText->Text(), "");
}

TEST_F(TextControlTest, WithoutAModificationMessageOnlyEnterSpeaks)
{
    fText->SetModificationMessage(nullptr);
    fText->MakeFocus();
    test::Key(fWindow, 'x');
    EXPECT_TRUE(Heard().empty());
    test::Key(fWindow, B_ENTER);
    EXPECT_EQ(Heard(), std::vector<uint32>{1});
}

TEST_F(TextControlTest, TheTextBeginsAtTheDivider)
{
    fText->SetDivider(120);
    EXPECT_EQ(fText->Divider(), 120);
    EXPECT_EQ(Edit()->geometry().left(), 120);
    EXPECT_EQ(Edit()->geometry().right(), 299);
}

TEST_F(TextControlTest, TextOfAnyLanguageComesBackAsItWas)
{
    fText->SetText("Größe 負荷");
    fText->MakeFocus();
    Edit()->end(false);
    test::Key(fWindow, '!');
    EXPECT_STREQ(fText->Text(), "Größe 負荷!");
}

TEST_F(TextControlTest, KeepsItsWidthAndTakesTheHeightOfItsFont)
{
    float height = 0;
    fText->GetPreferredSize(nullptr, &height);
    EXPECT_EQ(fText->Bounds(), BRect(0, 0, 299, height));
    EXPECT_EQ(AccessibleName(fText), "Title: ");
}
