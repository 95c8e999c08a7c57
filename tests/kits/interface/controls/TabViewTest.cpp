// SPDX-License-Identifier: MIT
#include "kits/interface/TabView.h"

#include "tests/kits/interface/WidgetTest.h"

#include <QImage>
#include <QTabBar>

#include <algorithm>

namespace {

using Log = std::vector<std::string>;

class Page : public BView {
public:
    Page(const char* name, Log& log)
        : BView(BRect(3, 3, 100, 80), name, B_FOLLOW_ALL, B_WILL_DRAW)
        , fLog(log)
    {
    }
    void AllAttached() override { fLog.push_back(std::string(Name()) + " attached"); }
    void AllDetached() override
    {
        fLog.push_back(std::string(Name()) + (Window() != nullptr ? " detached in window" : " detached"));
    }

private:
    Log& fLog;
};

class Tab : public BTab {
public:
    explicit Tab(Log& log)
        : fLog(log)
    {
    }
    void Select(BView* owner) override
    {
        fLog.push_back("select");
        fOwner = owner;
        BTab::Select(owner);
    }
    void Deselect() override
    {
        fLog.push_back("deselect");
        BTab::Deselect();
    }
    void DrawLabel(BView* owner, BRect frame) override
    {
        fFrame = frame;
        BTab::DrawLabel(owner, frame);
    }

    BView* fOwner = nullptr;
    BRect fFrame;

private:
    Log& fLog;
};

class View : public BTabView {
public:
    using BTabView::BTabView;
    void MouseDown(BPoint where) override
    {
        fDown = where;
        BTabView::MouseDown(where);
    }
    void MouseMoved(BPoint, uint32 transit, const BMessage*) override { fTransits.push_back(transit); }

    BPoint fDown;
    std::vector<uint32> fTransits;
};

} // namespace

class TabViewTest : public WidgetTest {
protected:
    TabViewTest()
        : fTabs(new View(BRect(0, 0, 300, 200), "tabs", B_WIDTH_AS_USUAL))
    {
        fPage->AddChild(fTabs);
        for (const char* name : {"Uptime", "Charts", "More"}) {
            auto* tab = new Tab(fLog);
            fAll.push_back(tab);
            fTabs->AddTab(new Page(name, fLog), tab);
        }
    }

    ~TabViewTest() override
    {
        if (fWindow != nullptr)
            Close();
    }

    QTabBar* Strip() const { return kits::ViewWidget(fTabs)->findChild<QTabBar*>(); }
    BPoint OnTab(int32 index) const
    {
        const QPoint place = Strip()->tabRect(index).center();
        return BPoint(static_cast<float>(place.x()), static_cast<float>(place.y()));
    }

    Log fLog;
    View* fTabs;
    std::vector<Tab*> fAll;
};

TEST_F(TabViewTest, AddingSelectsNothing)
{
    EXPECT_EQ(fTabs->Selection(), -1);
    EXPECT_EQ(fTabs->CountTabs(), 3);
    EXPECT_EQ(fTabs->TabAt(1), fAll[1]);
    EXPECT_EQ(fTabs->TabAt(3), nullptr);
    EXPECT_EQ(fTabs->TabAt(-1), nullptr);
    EXPECT_TRUE(fLog.empty());
}

TEST_F(TabViewTest, SelectingDeselectsTheFormerFirst)
{
    fTabs->Select(0);
    EXPECT_EQ(fLog, (Log{"select", "Uptime attached"}));
    fLog.clear();
    fTabs->Select(1);
    EXPECT_EQ(fLog, (Log{"deselect", "Uptime detached in window", "select", "Charts attached"}));
    EXPECT_EQ(fTabs->Selection(), 1);
    EXPECT_FALSE(fAll[0]->IsSelected());
    EXPECT_TRUE(fAll[1]->IsSelected());
    fLog.clear();
    fTabs->Select(1);
    fTabs->Select(7);
    fTabs->Select(-1);
    EXPECT_TRUE(fLog.empty());
    EXPECT_EQ(fTabs->Selection(), 1);
}

TEST_F(TabViewTest, TheOwnerIsTheWholeTabViewAndPagesLieBelowTheStrip)
{
    fTabs->Select(0);
    EXPECT_EQ(fAll[0]->fOwner, fTabs);
    EXPECT_EQ(fAll[0]->View()->Parent(), fTabs->ContainerView());
    EXPECT_EQ(fAll[0]->View()->Frame(), BRect(3, 3, 100, 80)) << "nothing lays it out";
    EXPECT_EQ(fTabs->ContainerView()->Frame(), BRect(0, fTabs->TabHeight(), 300, 200));
    EXPECT_EQ(fTabs->TabHeight(), static_cast<float>(Strip()->height()));
    EXPECT_EQ(Strip()->geometry(), QRect(0, 0, 301, Strip()->sizeHint().height()));
}

TEST_F(TabViewTest, TheStripIsAsHighWithoutTabs)
{
    BTabView empty(BRect(0, 0, 300, 200), "empty");
    EXPECT_EQ(empty.TabHeight(), fTabs->TabHeight());
}

TEST_F(TabViewTest, PagesFollowAResizeByTheirModes)
{
    fTabs->Select(0);
    fTabs->ResizeTo(350, 260);
    EXPECT_EQ(fTabs->ContainerView()->Frame(), BRect(0, fTabs->TabHeight(), 350, 260));
    EXPECT_EQ(fAll[0]->View()->Frame(), BRect(3, 3, 150, 140));
    test::Turn();
    EXPECT_EQ(Strip()->width(), 351);
}

TEST_F(TabViewTest, PaintingCallsDrawLabelForEachTab)
{
    fTabs->Select(0);
    const QImage painted = kits::ViewWidget(fTabs)->grab().toImage();
    for (int i = 0; i < 3; i++) {
        EXPECT_EQ(fAll[static_cast<std::size_t>(i)]->fFrame, kits::FromQRect(Strip()->tabRect(i)));
        // The label is visible: there is more than one colour within the tab.
        const QRect tab = Strip()->tabRect(i).adjusted(8, 6, -8, -6);
        bool plain = true;
        for (int x = tab.left(); x <= tab.right(); x++)
            for (int y = tab.top(); y <= tab.bottom(); y++)
                plain = plain && qGray(painted.pixel(x, y)) > 140;
        EXPECT_FALSE(plain) << i;
    }
}

TEST_F(TabViewTest, APressOnATabSelectsItAndReachesTheView)
{
    fTabs->Select(0);
    test::Press(fTabs, OnTab(2));
    EXPECT_EQ(fTabs->Selection(), 2);
    EXPECT_EQ(fTabs->fDown, OnTab(2));
    test::Release(fTabs, OnTab(2));
    test::Click(fTabs, OnTab(1), B_SECONDARY_MOUSE_BUTTON);
    EXPECT_EQ(fTabs->Selection(), 1);
    test::Click(fTabs, BPoint(298, 3));
    EXPECT_EQ(fTabs->Selection(), 1) << "beside the tabs";
}

TEST_F(TabViewTest, LeavingAcrossTheStripIsSeen)
{
    fTabs->MoveTo(20, 20);
    fTabs->Select(0);
    test::Turn();
    test::Press(fTabs, OnTab(0));
    test::MoveTo(fTabs, OnTab(0) + BPoint(1, 0));
    fTabs->fTransits.clear();
    test::MoveTo(fTabs, BPoint(10, -10));
    EXPECT_NE(std::find(fTabs->fTransits.begin(), fTabs->fTransits.end(), B_EXITED_VIEW), fTabs->fTransits.end());
    test::Release(fTabs, BPoint(10, -10));
}

TEST_F(TabViewTest, TheArrowKeysSelect)
{
    fTabs->Select(0);
    fTabs->MakeFocus();
    ASSERT_TRUE(fTabs->IsFocus());
    test::Key(fWindow, B_RIGHT_ARROW);
    EXPECT_EQ(fTabs->Selection(), 1);
    EXPECT_TRUE(fTabs->IsFocus());
    test::Key(fWindow, B_LEFT_ARROW);
    EXPECT_EQ(fTabs->Selection(), 0);
}

TEST_F(TabViewTest, TheLabelIsTheNameOfTheViewUntilOneIsSet)
{
    EXPECT_STREQ(fAll[1]->Label(), "Charts");
    EXPECT_EQ(Strip()->tabText(1), QLatin1String("Charts"));
    fAll[1]->SetLabel("A & B");
    EXPECT_STREQ(fAll[1]->Label(), "A & B");
    EXPECT_EQ(Strip()->tabText(1), QLatin1String("A && B"));
    fAll[1]->SetLabel(nullptr);
    EXPECT_STREQ(fAll[1]->Label(), "Charts");
}

TEST_F(TabViewTest, AnotherViewOfTheSelectedTabShowsAtOnce)
{
    fTabs->Select(0);
    fLog.clear();
    fAll[0]->SetView(new Page("Other", fLog));
    EXPECT_EQ(fLog, (Log{"Uptime detached in window", "Other attached"}));
    EXPECT_EQ(fAll[0]->View()->Parent(), fTabs->ContainerView());
    EXPECT_EQ(Strip()->tabText(0), QLatin1String("Other"));
}

TEST_F(TabViewTest, ClosingTheWindowDetachesTheSelectedPageOnceAndDeselectsNothing)
{
    fTabs->Select(0);
    fLog.clear();
    Close();
    EXPECT_EQ(fLog, (Log{"Uptime detached in window"}));
}

TEST_F(TabViewTest, InANarrowViewAllTabsStayReachable)
{
    fTabs->ResizeTo(100, 100);
    test::Turn();
    kits::ViewWidget(fTabs)->grab();
    EXPECT_LE(Strip()->tabRect(2).right(), 101);
    test::Click(fTabs, OnTab(2));
    EXPECT_EQ(fTabs->Selection(), 2);
}
