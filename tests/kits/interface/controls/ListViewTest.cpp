// SPDX-License-Identifier: MIT
#include "kits/interface/ListView.h"

#include "kits/interface/ScrollView.h"
#include "tests/kits/interface/WidgetTest.h"

#include <QImage>
#include <QTreeView>

#include <memory>

namespace {

class List : public BListView {
public:
    using BListView::BListView;

    bool InitiateDrag(BPoint where, int32 index, bool wasSelected) override
    {
        fDrags.push_back({where, index, wasSelected});
        return true;
    }

    struct Pull {
        BPoint where;
        int32 index;
        bool wasSelected;
    };
    std::vector<Pull> fDrags;
};

} // namespace

class ListViewTest : public WidgetTest {
protected:
    ListViewTest()
    {
        fList = new List(BRect(0, 0, 199, 149), "list");
        fList->SetInvocationMessage(new BMessage(1));
        fList->SetSelectionMessage(new BMessage(2));
        for (const char* text : {"alpha", "beta", "gamma", "delta"})
            fList->AddItem(new BStringItem(text));
        fPage->AddChild(fList);
        test::Turn();
    }

    QTreeView* Tree() const { return kits::ViewWidget(fList)->findChild<QTreeView*>(); }
    BPoint On(int32 index) const
    {
        const BRect frame = fList->ItemFrame(index);
        return BPoint(frame.left + 20, (frame.top + frame.bottom) / 2);
    }
    std::string TextAt(int row) const { return Tree()->model()->index(row, 0).data().toString().toStdString(); }
    int32 Chosen() const
    {
        int32 index = -1;
        fWindow->heard.back().FindInt32("index", &index);
        return index;
    }

    List* fList;
};

TEST_F(ListViewTest, ItemsStandWhereTheyAreAdded)
{
    EXPECT_EQ(fList->CountItems(), 4);
    auto* item = new BStringItem("between");
    EXPECT_TRUE(fList->AddItem(item, 1));
    EXPECT_FALSE(fList->AddItem(item));
    EXPECT_FALSE(fList->AddItem(nullptr));
    const std::unique_ptr<BStringItem> free = std::make_unique<BStringItem>("free");
    EXPECT_FALSE(fList->AddItem(free.get(), 9));
    EXPECT_EQ(fList->IndexOf(item), 1);
    EXPECT_EQ(fList->ItemAt(1), item);
    EXPECT_EQ(fList->ItemAt(9), nullptr);
    EXPECT_GE(fList->IndexOf(item), 0);
    test::Turn();
    EXPECT_EQ(TextAt(1), "between");
    fList->MakeEmpty();
    EXPECT_TRUE(fList->IsEmpty());
    test::Turn();
    EXPECT_EQ(Tree()->model()->rowCount(), 0);
}

TEST_F(ListViewTest, TheUserSelectsByMouse)
{
    test::Click(fList, On(2));
    EXPECT_EQ(fList->CurrentSelection(), 2);
    EXPECT_EQ(Heard(), std::vector<uint32>{2});
    test::Click(fList, On(0));
    EXPECT_EQ(fList->CurrentSelection(), 0);
    EXPECT_FALSE(fList->ItemAt(2)->IsSelected());
}

TEST_F(ListViewTest, AndByKeyboardAndChoosesWithEnter)
{
    fList->MakeFocus();
    fList->Select(0);
    EXPECT_TRUE(Heard().empty()) << "the program selects silently";
    test::Key(fWindow, B_DOWN_ARROW);
    EXPECT_EQ(fList->CurrentSelection(), 1);
    EXPECT_EQ(Heard(), std::vector<uint32>{2});
    test::Key(fWindow, B_ENTER);
    test::Turn();
    ASSERT_EQ(fWindow->heard.size(), 1u);
    EXPECT_EQ(fWindow->heard[0].what, 1u);
    EXPECT_EQ(Chosen(), 1);
    Heard();
    test::Key(fWindow, 'd');
    EXPECT_EQ(fList->CurrentSelection(), 3) << "by its first letter";
}

TEST_F(ListViewTest, ADoubleClickChooses)
{
    test::Click(fList, On(1));
    QMouseEvent twice(QEvent::MouseButtonDblClick, Tree()->visualRect(Tree()->model()->index(1, 0)).center(), QPointF(),
                      Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(Tree()->viewport(), &twice);
    EXPECT_EQ(Heard(), (std::vector<uint32>{2, 1}));
}

TEST_F(ListViewTest, WithoutSelectionEnterChoosesNothing)
{
    fList->MakeFocus();
    fList->DeselectAll();
    SendKey(Tree(), Qt::Key_Return);
    EXPECT_TRUE(Heard().empty());
}

TEST_F(ListViewTest, SelectingByProgramShowsAndIsSilent)
{
    fList->Select(3);
    EXPECT_TRUE(Tree()->selectionModel()->isSelected(Tree()->model()->index(3, 0)));
    fList->Select(1);
    EXPECT_FALSE(fList->ItemAt(3)->IsSelected()) << "one at a time";
    fList->DeselectAll();
    EXPECT_EQ(fList->CurrentSelection(), -1);
    EXPECT_FALSE(Tree()->selectionModel()->hasSelection());
    fList->Select(99);
    EXPECT_TRUE(Heard().empty());
}

TEST_F(ListViewTest, WhatWasSelectedBeforeItIsShownStaysSelected)
{
    auto* list = new List(BRect(0, 150, 199, 249), "second");
    list->AddItem(new BStringItem("a"));
    list->AddItem(new BStringItem("b"));
    list->Select(1);
    fPage->AddChild(list);
    test::Turn();
    EXPECT_EQ(list->CurrentSelection(), 1);
}

TEST_F(ListViewTest, ItemFramesLieBelowOneAnother)
{
    for (int32 i = 0; i < 4; i++) {
        const BRect frame = fList->ItemFrame(i);
        ASSERT_TRUE(frame.IsValid());
        if (i > 0)
            EXPECT_EQ(frame.top, fList->ItemFrame(i - 1).bottom + 1);
    }
    EXPECT_FALSE(fList->ItemFrame(4).IsValid());
}

TEST_F(ListViewTest, PullingARowBeginsOneDrag)
{
    test::Press(fList, On(1));
    test::MoveTo(fList, On(1) + BPoint(1, 0));
    EXPECT_TRUE(fList->fDrags.empty()) << "a hand that trembles";
    test::MoveTo(fList, On(1) + BPoint(40, 30));
    test::MoveTo(fList, On(1) + BPoint(60, 60));
    ASSERT_EQ(fList->fDrags.size(), 1u);
    EXPECT_EQ(fList->fDrags[0].index, 1);
    EXPECT_FALSE(fList->fDrags[0].wasSelected);
    EXPECT_NEAR(fList->fDrags[0].where.y, On(1).y, 1);
    EXPECT_EQ(fList->CurrentSelection(), 1) << "moving selects nothing else";
    test::Release(fList, On(1) + BPoint(60, 60));
    test::Press(fList, On(1));
    test::MoveTo(fList, On(1) + BPoint(40, 30));
    ASSERT_EQ(fList->fDrags.size(), 2u);
    EXPECT_TRUE(fList->fDrags[1].wasSelected);
    test::Release(fList, On(1) + BPoint(40, 30));
}

TEST_F(ListViewTest, PullingBesideTheRowsDragsNothing)
{
    test::Press(fList, BPoint(30, 140));
    test::MoveTo(fList, BPoint(90, 90));
    test::Release(fList, BPoint(90, 90));
    EXPECT_TRUE(fList->fDrags.empty());
}

TEST_F(ListViewTest, ADisabledRowCannotBeSelected)
{
    auto* item = new BStringItem("disabled");
    item->SetEnabled(false);
    fList->AddItem(item, 1);
    test::Turn();
    test::Click(fList, On(1));
    EXPECT_EQ(fList->CurrentSelection(), -1);
    fList->Select(1);
    EXPECT_EQ(fList->CurrentSelection(), -1);
}

TEST_F(ListViewTest, SelectionAndPlaceStayWhenRowsCome)
{
    for (int i = 0; i < 200; i++)
        fList->AddItem(new BStringItem(std::to_string(i).c_str()));
    test::Turn();
    fList->Select(150);
    fList->ScrollToSelection();
    const float top = fList->ItemFrame(150).top;
    EXPECT_GE(top, 0);
    EXPECT_LT(top, 150);
    fList->AddItem(new BStringItem("last"));
    test::Turn();
    EXPECT_EQ(fList->ItemFrame(150).top, top);
    EXPECT_EQ(fList->CurrentSelection(), 150);
    EXPECT_TRUE(Heard().empty());
}

TEST_F(ListViewTest, RowsAddedOnAnotherThreadShowLater)
{
    OnOtherThread([&] { fList->AddItem(new BStringItem("later")); });
    EXPECT_TRUE(test::WaitFor([&] { return Tree()->model()->rowCount() == 5; }));
}

TEST_F(ListViewTest, AnItemThatWasRemovedIsNotTouchedByAClickBeforeTheScreenFollows)
{
    const BPoint place = On(0);
    fList->MakeEmpty();
    test::Click(fList, place);
    test::Turn();
    EXPECT_EQ(fList->CountItems(), 0);
    EXPECT_EQ(AccessibleName(fList), "list");
}

TEST_F(ListViewTest, ItsFrameShowsThatItHasTheFocus)
{
    auto* framed = new List(BRect(0, 0, 99, 99), "framed");
    auto* scroll = new BScrollView("", framed, B_FOLLOW_NONE, 0, false, true, B_FANCY_BORDER);
    scroll->MoveTo(200, 0);
    fPage->AddChild(scroll);
    fList->MakeFocus(true);
    test::Turn();
    const auto isRing = [framed] {
        QWidget* widget = FocusOf(framed);
        const QImage picture = widget->grab().toImage();
        const QColor ring = widget->palette().color(QPalette::Highlight);
        return picture.pixelColor(0, picture.height() / 2) == ring &&
               picture.pixelColor(picture.width() / 2, 0) == ring;
    };
    EXPECT_FALSE(isRing());
    framed->MakeFocus(true);
    test::Turn();
    EXPECT_TRUE(isRing());
    fList->MakeFocus(true);
    test::Turn();
    EXPECT_FALSE(isRing());
}
