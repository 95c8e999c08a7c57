// SPDX-License-Identifier: MIT
#include "kits/interface/TextView.h"

#include "tests/kits/interface/WidgetTest.h"

#include <QScrollBar>
#include <QTextBlock>
#include <QTextEdit>
#include <QTextLayout>

class TextViewTest : public WidgetTest {
protected:
    TextViewTest()
        : fText(new BTextView(BRect(0, 0, 299, 99), "Uptime", BRect(0, 0, 299, 99), B_FOLLOW_ALL_SIDES, B_WILL_DRAW))
    {
        fText->MakeEditable(false);
        fText->MakeSelectable(false);
        fPage->AddChild(fText);
    }

    QTextEdit* Edit() const { return kits::ViewWidget(fText)->findChild<QTextEdit*>(); }

    /// Returns where the text after the n-th tab of a line begins, in pixels.
    double StartOf(int line, int tab) const
    {
        const QTextBlock block = Edit()->document()->findBlockByNumber(line);
        int place = -1;
        for (int i = 0; i < tab; i++)
            place = static_cast<int>(block.text().indexOf(QLatin1Char('\t'), place + 1));
        return block.layout()->lineAt(0).cursorToX(place + 1);
    }

    static std::string Lines(int count)
    {
        std::string text;
        for (int i = 0; i < count; i++)
            text += "line " + std::to_string(i) + "\n";
        return text;
    }

    BTextView* fText;
};

TEST_F(TextViewTest, ShowsItsText)
{
    fText->SetText("It's\tnow\n\nTop 10");
    EXPECT_EQ(Edit()->toPlainText(), QLatin1String("It's\tnow\n\nTop 10"));
    fText->SetText("shorter");
    EXPECT_EQ(Edit()->toPlainText(), QLatin1String("shorter"));
    fText->SetText("");
    EXPECT_EQ(Edit()->toPlainText(), QString());
    fText->SetText("a\nb\nc");
    EXPECT_EQ(Edit()->toPlainText(), QLatin1String("a\nb\nc"));
    fText->SetText(nullptr);
    EXPECT_STREQ(fText->Text(), "");
}

TEST_F(TextViewTest, OnlyLinesThatDifferAreTouched)
{
    fText->SetText("one\ntwo\nthree");
    const int revision = Edit()->document()->revision();
    const int second = Edit()->document()->findBlockByNumber(1).revision();
    fText->SetText("one\ntwo\nthree");
    EXPECT_EQ(Edit()->document()->revision(), revision);
    fText->SetText("1\ntwo\n3");
    EXPECT_EQ(Edit()->document()->findBlockByNumber(1).revision(), second);
    EXPECT_EQ(Edit()->toPlainText(), QLatin1String("1\ntwo\n3"));
}

TEST_F(TextViewTest, StaysAtTheTopAndWhereTheUserScrolledTo)
{
    fText->SetText(Lines(50).c_str());
    test::Turn();
    EXPECT_EQ(Edit()->verticalScrollBar()->value(), 0);
    EXPECT_GT(Edit()->verticalScrollBar()->maximum(), 0);
    fText->SetText(("x" + Lines(60)).c_str());
    test::Turn();
    EXPECT_EQ(Edit()->verticalScrollBar()->value(), 0);
    Edit()->verticalScrollBar()->setValue(40);
    fText->SetText(("y" + Lines(60)).c_str());
    test::Turn();
    EXPECT_EQ(Edit()->verticalScrollBar()->value(), 40);
}

TEST_F(TextViewTest, SettingATextSelectsNothingAndKeepsWhatTheUserSelected)
{
    fText->SetText(Lines(5).c_str());
    EXPECT_FALSE(Edit()->textCursor().hasSelection());
    fText->SetText(("x" + Lines(6)).c_str());
    Edit()->setFocus(Qt::TabFocusReason);
    test::Turn();
    EXPECT_FALSE(Edit()->textCursor().hasSelection());

    fText->MakeSelectable(true);
    QTextCursor selection = Edit()->textCursor();
    selection.setPosition(8);
    selection.setPosition(14, QTextCursor::KeepAnchor);
    Edit()->setTextCursor(selection);
    const QString selected = Edit()->textCursor().selectedText();
    fText->SetText(("y" + Lines(6)).c_str());
    EXPECT_EQ(Edit()->textCursor().selectedText(), selected);
    fText->SetText("");
    EXPECT_FALSE(Edit()->textCursor().hasSelection());
}

TEST_F(TextViewTest, TabsStandInColumns)
{
    fText->SetText("It's Fri\tUp since\nCurrent uptime: 00:00:00     \tTotal uptime\niii\tlast\n\nTop 10\n01:\tone "
                   "day\tBooted\n02:\tn/a\tBooted");
    test::Turn();
    EXPECT_GT(StartOf(0, 1), 20);
    EXPECT_EQ(StartOf(0, 1), StartOf(1, 1));
    EXPECT_EQ(StartOf(0, 1), StartOf(2, 1));
    EXPECT_EQ(StartOf(5, 1), StartOf(6, 1));
    EXPECT_EQ(StartOf(5, 2), StartOf(6, 2));
    EXPECT_LT(StartOf(5, 1), StartOf(0, 1)) << "another group of lines";
}

TEST_F(TextViewTest, WrapsAtTheTextRectangle)
{
    fText->SetText("many words that do not fit into one line of this width");
    fText->SetTextRect(BRect(20, 5, 99, 50));
    test::Turn();
    EXPECT_GT(Edit()->document()->begin().layout()->lineCount(), 2);
    EXPECT_EQ(Edit()->viewport()->geometry().topLeft(), QPoint(20, 5));
}

TEST_F(TextViewTest, CannotBeChangedOrSelectedWhenToldSo)
{
    fText->SetText("fixed");
    Edit()->setFocus();
    test::Key(fWindow, 'x');
    EXPECT_STREQ(fText->Text(), "fixed");
    EXPECT_EQ(Edit()->textInteractionFlags(), Qt::NoTextInteraction);
    fText->MakeSelectable(true);
    EXPECT_TRUE(Edit()->textInteractionFlags() & Qt::TextSelectableByKeyboard);
    EXPECT_TRUE(Edit()->isReadOnly());
}

TEST_F(TextViewTest, EditingChangesTheText)
{
    fText->MakeEditable(true);
    Edit()->setFocus();
    test::Key(fWindow, 'o');
    test::Key(fWindow, 'k');
    EXPECT_STREQ(fText->Text(), "ok");
}

TEST_F(TextViewTest, ShowsItsViewColourAndCanBeReadOnAny)
{
    fText->SetText("");
    for (const uint8 gray : {0, 216, 255}) {
        fText->SetViewColor(gray, gray, gray);
        test::Turn();
        EXPECT_EQ(qGray(Edit()->grab().toImage().pixel(150, 50)), gray);
        EXPECT_GT(std::abs(qGray(Edit()->palette().color(QPalette::Text).rgb()) - gray), 90);
    }
}

TEST_F(TextViewTest, ATextSetOnAnotherThreadShowsLater)
{
    OnOtherThread([&] { fText->SetText("later"); });
    EXPECT_TRUE(test::WaitFor([&] { return Edit()->toPlainText() == QLatin1String("later"); }));
}
