// SPDX-License-Identifier: MIT
#include "kits/interface/OutlineListView.h"

#include "kits/support/TypeConstants.h"
#include "tests/kits/interface/WidgetTest.h"

#include <QElapsedTimer>
#include <QTreeView>

class OutlineListViewTest : public WidgetTest {
protected:
    OutlineListViewTest()
        : fList(new BOutlineListView(BRect(0, 0, 199, 199), "outline"))
        , fLoose(new BStringItem("Free memory"))
        , fCpus(new BStringItem("CPUs"))
        , fIdles(new BStringItem("CPU idles"))
    {
        fList->SetInvocationMessage(new BMessage(1));
        fList->AddItem(fLoose);
        fList->AddItem(fCpus);
        fList->AddItem(fIdles);
        for (const char* text : {"CPU 2", "CPU 1"}) {
            fList->AddUnder(new BStringItem(text), fCpus);
            fList->AddUnder(new BStringItem(text), fIdles);
        }
        fPage->AddChild(fList);
        test::Turn();
    }

    std::string Shown() const
    {
        std::string result;
        for (int32 i = 0; i < fList->CountItems(); i++)
            result += std::string(fList->ItemAt(i)->Text()) + ";";
        return result;
    }
    QTreeView* Tree() const { return kits::ViewWidget(fList)->findChild<QTreeView*>(); }

    BOutlineListView* fList;
    BStringItem* fLoose;
    BStringItem* fCpus;
    BStringItem* fIdles;
};

TEST_F(OutlineListViewTest, ItemsAreAddedAsTheFirstUnderTheirSuperitem)
{
    EXPECT_EQ(Shown(), "Free memory;CPUs;CPU 1;CPU 2;CPU idles;CPU 1;CPU 2;");
    EXPECT_EQ(fList->ItemAt(2)->OutlineLevel(), 1);
    EXPECT_EQ(fList->Superitem(fList->ItemAt(2)), fCpus);
    EXPECT_EQ(fList->Superitem(fCpus), nullptr);
    EXPECT_TRUE(fList->AddUnder(new BStringItem("last"), nullptr));
    EXPECT_STREQ(fList->ItemAt(7)->Text(), "last");
    BStringItem stranger("x");
    BStringItem free("y");
    EXPECT_FALSE(fList->AddUnder(&free, &stranger));
    EXPECT_FALSE(fList->AddUnder(fCpus, fIdles));
    EXPECT_FALSE(fList->AddUnder(nullptr, fCpus));
}

TEST_F(OutlineListViewTest, WhatStandsUnderIsCounted)
{
    EXPECT_STREQ(fList->ItemUnderAt(fCpus, true, 0)->Text(), "CPU 1");
    EXPECT_STREQ(fList->ItemUnderAt(fCpus, true, 1)->Text(), "CPU 2");
    EXPECT_EQ(fList->ItemUnderAt(fCpus, true, 2), nullptr);
    EXPECT_EQ(fList->ItemUnderAt(fCpus, true, -1), nullptr);
    EXPECT_EQ(fList->ItemUnderAt(nullptr, true, 2), fIdles);
    EXPECT_EQ(fList->ItemUnderAt(nullptr, false, 2), fList->ItemAt(2));
    fList->AddUnder(new BStringItem("deep"), fList->ItemUnderAt(fCpus, true, 0));
    EXPECT_STREQ(fList->ItemUnderAt(fCpus, true, 1)->Text(), "CPU 2");
    EXPECT_STREQ(fList->ItemUnderAt(fCpus, false, 1)->Text(), "deep");
    BStringItem stranger("x");
    EXPECT_EQ(fList->ItemUnderAt(&stranger, true, 0), nullptr);
}

TEST_F(OutlineListViewTest, CollapsedRowsAreOutOfTheNumbersButInTheFullList)
{
    fList->Collapse(fCpus);
    EXPECT_EQ(Shown(), "Free memory;CPUs;CPU idles;CPU 1;CPU 2;");
    EXPECT_EQ(fList->FullListCountItems(), 7);
    EXPECT_EQ(fList->FullListIndexOf(fIdles), 4);
    EXPECT_EQ(fList->FullListItemAt(4), fIdles);
    EXPECT_EQ(fList->IndexOf(fIdles), 2);
    EXPECT_FALSE(fList->IsExpanded(1));
    EXPECT_STREQ(fList->ItemUnderAt(fCpus, true, 1)->Text(), "CPU 2");
    test::Turn();
    EXPECT_FALSE(Tree()->isExpanded(Tree()->model()->index(1, 0)));
    EXPECT_EQ(fList->ItemFrame(2).top, fList->ItemFrame(1).bottom + 1);
}

TEST_F(OutlineListViewTest, TheUserOpensAndClosesByKeyboard)
{
    fList->MakeFocus();
    fList->Select(1);
    test::Key(fWindow, B_LEFT_ARROW);
    EXPECT_FALSE(fCpus->IsExpanded());
    EXPECT_EQ(fList->CountItems(), 5);
    test::Key(fWindow, B_RIGHT_ARROW);
    EXPECT_TRUE(fCpus->IsExpanded());
    EXPECT_EQ(fList->CountItems(), 7);
    test::Key(fWindow, B_DOWN_ARROW);
    EXPECT_EQ(fList->CurrentSelection(), 2);
    test::Key(fWindow, B_ENTER);
    EXPECT_EQ(Heard(), std::vector<uint32>{1});
}

TEST_F(OutlineListViewTest, AndByMouse)
{
    const BRect frame = fList->ItemFrame(1);
    test::Click(fList, BPoint(8, (frame.top + frame.bottom) / 2));
    EXPECT_FALSE(fCpus->IsExpanded());
    EXPECT_EQ(fList->CountItems(), 5);
}

TEST_F(OutlineListViewTest, AGroupCanBeChosenWithEnterAndADoubleClickOpensIt)
{
    fList->MakeFocus();
    fList->Select(1);
    test::Key(fWindow, B_ENTER);
    EXPECT_EQ(Heard(), std::vector<uint32>{1});
    test::Click(fList, BPoint(60, fList->ItemFrame(1).top + 5));
    const QRect row = Tree()->visualRect(Tree()->model()->index(1, 0));
    QMouseEvent twice(QEvent::MouseButtonDblClick, row.center(), QPointF(), Qt::LeftButton, Qt::LeftButton,
                      Qt::NoModifier);
    QApplication::sendEvent(Tree()->viewport(), &twice);
    EXPECT_FALSE(fCpus->IsExpanded());
    EXPECT_TRUE(Heard().empty());
}

TEST_F(OutlineListViewTest, AnItemThatSaysSoStartsCollapsed)
{
    auto* group = new BStringItem("group", 0, false);
    fList->AddItem(group);
    fList->AddUnder(new BStringItem("hidden"), group);
    EXPECT_EQ(fList->CountItems(), 8);
    test::Turn();
    EXPECT_FALSE(Tree()->isExpanded(Tree()->model()->index(3, 0)));
}

TEST_F(OutlineListViewTest, ThousandsOfRowsShow)
{
    for (int i = 0; i < 512; i++) {
        for (BStringItem* group : {fCpus, fIdles}) {
            fList->AddUnder(new BStringItem("CPU"), group);
            fList->AddUnder(new BStringItem("CPU (exp. averaged)"), group);
        }
    }
    EXPECT_EQ(fList->CountItems(), 2055);
    EXPECT_TRUE(fList->ItemFrame(2054).IsValid());
    fList->Select(2054);
    fList->ScrollToSelection();
    EXPECT_LT(fList->ItemFrame(2054).top, 200);
}

TEST_F(OutlineListViewTest, ClosingTheGroupOfTheSelectedRowChangesTheSelection)
{
    fList->SetSelectionMessage(new BMessage(2));
    fList->Select(2);
    test::Turn();
    fWindow->heard.clear();
    Tree()->collapse(Tree()->model()->index(1, 0));
    test::Turn();
    EXPECT_EQ(fList->CurrentSelection(), -1);
    ASSERT_EQ(fWindow->heard.size(), 1u);
    EXPECT_EQ(fWindow->heard[0].what, 2u);
    EXPECT_FALSE(fWindow->heard[0].HasData("index", B_INT32_TYPE));
    Tree()->collapse(Tree()->model()->index(2, 0));
    test::Turn();
    EXPECT_EQ(fWindow->heard.size(), 1u) << "of another group nothing changes";
    Tree()->expand(Tree()->model()->index(1, 0));
    test::Turn();
    EXPECT_EQ(fList->CurrentSelection(), 2);
    EXPECT_EQ(fWindow->heard.size(), 2u);
}
