// SPDX-License-Identifier: MIT
#include "kits/interface/ScrollView.h"

#include "kits/interface/OutlineListView.h"
#include "kits/interface/TextView.h"
#include "tests/kits/interface/WidgetTest.h"

#include <QScrollBar>
#include <QTextEdit>
#include <QTreeView>

using ScrollViewTest = WidgetTest;

TEST_F(ScrollViewTest, AListScrollsWithinItsFrame)
{
    auto* list = new BOutlineListView(BRect(5, 5, 104, 104), "list");
    for (int i = 0; i < 100; i++)
        list->AddItem(new BStringItem("row"));
    auto* scroll = new BScrollView("scroll", list, B_FOLLOW_ALL, 0, false, true, B_FANCY_BORDER);
    EXPECT_TRUE(scroll->Frame().Contains(BPoint(5, 5)));
    EXPECT_TRUE(scroll->Frame().Contains(BPoint(104, 104)));
    EXPECT_EQ(scroll->Target(), list);
    EXPECT_EQ(list->Parent(), scroll);
    EXPECT_EQ(list->Frame(), scroll->Bounds());
    fPage->AddChild(scroll);
    test::Turn();

    auto* tree = kits::ViewWidget(list)->findChild<QTreeView*>();
    EXPECT_TRUE(tree->verticalScrollBar()->isVisible());
    EXPECT_FALSE(tree->horizontalScrollBar()->isVisible());
    EXPECT_NE(tree->frameWidth(), 0);
    EXPECT_EQ(tree->frameShape(), QFrame::StyledPanel);
    scroll->ResizeTo(300, 200);
    EXPECT_EQ(list->Frame(), BRect(0, 0, 300, 200));
    test::Turn();
    EXPECT_EQ(tree->size(), QSize(301, 201));
}

TEST_F(ScrollViewTest, ShortListsNeedNoBar)
{
    auto* list = new BListView(BRect(0, 0, 99, 99), "list");
    list->AddItem(new BStringItem("row"));
    fPage->AddChild(new BScrollView("scroll", list, B_FOLLOW_NONE, 0, true, true, B_NO_BORDER));
    test::Turn();
    auto* tree = kits::ViewWidget(list)->findChild<QTreeView*>();
    EXPECT_FALSE(tree->verticalScrollBar()->isVisible());
    EXPECT_EQ(tree->frameWidth(), 0);
}

TEST_F(ScrollViewTest, ATextScrollsToo)
{
    auto* text = new BTextView(BRect(0, 0, 99, 99), "text", BRect(0, 0, 80, 99), B_FOLLOW_NONE, B_WILL_DRAW);
    text->SetText(std::string(500, '\n').c_str());
    fPage->AddChild(new BScrollView("scroll", text, B_FOLLOW_NONE, 0, false, true, B_PLAIN_BORDER));
    test::Turn();
    auto* edit = kits::ViewWidget(text)->findChild<QTextEdit*>();
    EXPECT_TRUE(edit->verticalScrollBar()->isVisible());
    EXPECT_EQ(edit->frameShape(), QFrame::Box);
}

TEST_F(ScrollViewTest, ItsTargetMayBeAnyViewOrNone)
{
    auto* plain = new BView(BRect(0, 0, 50, 50), "plain", B_FOLLOW_NONE, B_WILL_DRAW);
    auto* scroll = new BScrollView("scroll", plain);
    fPage->AddChild(scroll);
    EXPECT_EQ(plain->Parent(), scroll);
    fPage->AddChild(new BScrollView("none", nullptr));
}
