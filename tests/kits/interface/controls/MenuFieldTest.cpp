// SPDX-License-Identifier: MIT
#include "kits/interface/MenuField.h"

#include "kits/interface/PopUpMenu.h"
#include "tests/kits/interface/WidgetTest.h"

#include <QComboBox>
#include <QLabel>
#include <QMenu>

class MenuFieldTest : public WidgetTest {
protected:
    MenuFieldTest()
        : fMenu(new BPopUpMenu("target"))
    {
        for (uint32 what = 1; what <= 3; what++)
            fMenu->AddItem(new BMenuItem(what == 1 ? "< none >" : what == 2 ? "Chart" : "Title", new BMessage(what)));
        fMenu->ItemAt(0)->SetMarked(true);
        fField = new BMenuField(BRect(10, 10, 209, 12), "field", "Target:", fMenu);
        fPage->AddChild(fField);
    }

    QComboBox* Button() const { return static_cast<QComboBox*>(FocusOf(fField)); }
    static QMenu* Open() { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); }

    BPopUpMenu* fMenu;
    BMenuField* fField;
};

TEST_F(MenuFieldTest, ShowsTheLabelOfTheMarkedItem)
{
    EXPECT_EQ(Button()->currentText(), QLatin1String("< none >"));
    fMenu->ItemAt(2)->SetMarked(true);
    EXPECT_EQ(Button()->currentText(), QLatin1String("Title"));
    fMenu->ItemAt(2)->SetLabel("The title");
    EXPECT_EQ(Button()->currentText(), QLatin1String("The title"));
}

TEST_F(MenuFieldTest, APressOpensTheMenuBelowAndAChoiceIsSentAndShown)
{
    test::Press(fField, BPoint(150, 10));
    ASSERT_NE(Open(), nullptr);
    EXPECT_GE(Open()->pos().y(), Button()->mapToGlobal(QPoint(0, Button()->height())).y());
    EXPECT_EQ(Open()->activeAction(), Open()->actions().at(0)) << "the keyboard starts at the mark";
    SendKey(Open(), Qt::Key_Down);
    SendKey(Open(), Qt::Key_Return);
    EXPECT_EQ(Heard(), std::vector<uint32>{2});
    EXPECT_EQ(fMenu->FindMarked(), fMenu->ItemAt(1));
    EXPECT_EQ(Button()->currentText(), QLatin1String("Chart"));
    test::Release(fField, BPoint(150, 10));
}

TEST_F(MenuFieldTest, OpensByKeyboardAgainAndAgain)
{
    fField->MakeFocus();
    for (const int key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Down}) {
        SendKey(Button(), key);
        ASSERT_NE(Open(), nullptr) << key;
        SendKey(Open(), Qt::Key_Escape);
        test::Turn();
        EXPECT_EQ(Open(), nullptr);
    }
    EXPECT_TRUE(Heard().empty());
}

TEST_F(MenuFieldTest, ADisabledOneStaysClosed)
{
    fField->SetEnabled(false);
    EXPECT_FALSE(fField->IsEnabled());
    test::Press(fField, BPoint(150, 10));
    EXPECT_EQ(Open(), nullptr);
    test::Release(fField, BPoint(150, 10));
    fField->SetEnabled(true);
    fMenu->SetEnabled(false);
    EXPECT_FALSE(Button()->isEnabled());
}

TEST_F(MenuFieldTest, TheButtonBeginsAtTheDivider)
{
    fField->SetDivider(80);
    EXPECT_EQ(Button()->geometry().left(), 80);
    EXPECT_EQ(Button()->geometry().right(), 199);
}

TEST_F(MenuFieldTest, KeepsItsWidthAndTakesTheHeightOfItsFont)
{
    float height = 0;
    fField->GetPreferredSize(nullptr, &height);
    EXPECT_EQ(fField->Bounds(), BRect(0, 0, 199, height));
    EXPECT_EQ(AccessibleName(fField), "Target:");
}

TEST_F(MenuFieldTest, CanGoWithItsMenuOpen)
{
    test::Press(fField, BPoint(150, 10));
    ASSERT_NE(Open(), nullptr);
    Close();
    EXPECT_EQ(Open(), nullptr);
}

TEST_F(MenuFieldTest, AMarkSetOnAnotherThreadShowsLater)
{
    OnOtherThread([&] { fMenu->ItemAt(1)->SetMarked(true); });
    EXPECT_TRUE(test::WaitFor([&] { return Button()->currentText() == QLatin1String("Chart"); }));
}

TEST_F(MenuFieldTest, NarrowsItsLettersWhereAChoiceHasNoRoom)
{
    float preferred = 0;
    fField->GetPreferredSize(&preferred, nullptr);
    fField->SetDivider(60);
    fField->ResizeTo(60 + fField->NarrowestMenuWidth() - 1, fField->Bounds().Height());
    test::Turn();
    EXPECT_LT(Button()->font().stretch(), QFont::Unstretched);
    EXPECT_NE(Button()->font().stretch(), QFont::AnyStretch);
    fField->ResizeTo(300, fField->Bounds().Height());
    test::Turn();
    EXPECT_EQ(Button()->font().stretch(), QFont::Unstretched);
    fField->SetDivider(-1);
    float now = 0;
    fField->GetPreferredSize(&now, nullptr);
    EXPECT_EQ(now, preferred);
}

TEST_F(MenuFieldTest, NarrowsTheLettersOfItsLabelBeforeItShortensIt)
{
    const auto label = [this] { return kits::ViewWidget(fField)->findChild<QLabel*>(); };
    const auto width = [&] { return label()->fontMetrics().horizontalAdvance(label()->text()); };
    fField->SetDivider(150);
    test::Turn();
    const int natural = width();
    fField->SetDivider(fField->NarrowestLabelWidth());
    test::Turn();
    EXPECT_EQ(label()->text(), QLatin1String("Target:"));
    EXPECT_LT(width(), natural);
    EXPECT_LE(width(), label()->width());
    fField->SetDivider(fField->NarrowestLabelWidth() / 2);
    test::Turn();
    EXPECT_NE(label()->text(), QLatin1String("Target:"));
    fField->SetDivider(150);
    test::Turn();
    EXPECT_EQ(width(), natural) << "they are widened again";
}
