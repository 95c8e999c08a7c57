// SPDX-License-Identifier: MIT
#include "src/app/MainWindow.h"

#include "kits/application/Message.h"
#include "kits/interface/MenuBar.h"
#include "kits/interface/MenuItem.h"
#include "kits/interface/TabView.h"
#include "kits/support/TypeConstants.h"
#include "src/app/UptimeView.h"
#include "src/chart/ChartTab.h"
#include "src/chart/ChartViewHolder.h"
#include "src/support/MessageCodes.h"
#include "tests/src/app/AppTest.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

constexpr BRect kFrame(50, 50, 400, 200);

template <typename View> View* Find(const BWindow* window)
{
    for (int32 i = 0; i < window->CountChildren(); ++i)
        if (auto* view = dynamic_cast<View*>(window->ChildAt(i)))
            return view;
    return nullptr;
}

class MainWindowTest : public AppTest {
protected:
    void SetUp() override
    {
        AppTest::SetUp();
        Make();
    }

    void TearDown() override
    {
        Close();
        AppTest::TearDown();
    }

    void Close()
    {
        if (fWindow != nullptr && fWindow->Lock())
            fWindow->Quit();
    }

    void Open() { fWindow = new MainWindow(kFrame, &fWindow); }
    void Open(BMessage archive) { fWindow = new MainWindow(&archive, &fWindow); }

    BMessage Archived() const
    {
        BMessage archive;
        EXPECT_EQ(fWindow->Archive(&archive, false), B_OK);
        return archive;
    }

    BTabView* Tabs() const { return Find<BTabView>(fWindow); }
    ChartViewHolder* Charts() const { return dynamic_cast<ChartViewHolder*>(Tabs()->TabAt(1)->View()); }
    BPoint Size() const { return BPoint(fWindow->Frame().Width(), fWindow->Frame().Height()); }

    SmartWindow* fWindow = nullptr;
};

BPoint SizeOf(const BMessage& archive, const char* name)
{
    BRect rect;
    EXPECT_EQ(archive.FindRect(name, &rect), B_OK) << name;
    return BPoint(rect.Width(), rect.Height());
}

} // namespace

TEST_F(MainWindowTest, ShowsTheUptimesAtFirst)
{
    Open();
    EXPECT_EQ(fWindow->Frame(), kFrame);
    EXPECT_STREQ(fWindow->Title(), "Qel");
    ASSERT_EQ(Tabs()->CountTabs(), 2);
    EXPECT_EQ(Tabs()->Selection(), 0);
    EXPECT_STREQ(Tabs()->TabAt(0)->Label(), "Uptime");
    EXPECT_STREQ(Tabs()->TabAt(1)->Label(), "Charts");
    EXPECT_NE(dynamic_cast<UptimeView*>(Tabs()->TabAt(0)->View()), nullptr);
    EXPECT_EQ(Charts()->CountCharts(), 3);
    float limits[4];
    fWindow->GetSizeLimits(&limits[0], &limits[1], &limits[2], &limits[3]);
    EXPECT_EQ(std::vector<float>(limits, limits + 4), (std::vector<float>{100, 4000, 100, 4000}));
}

TEST_F(MainWindowTest, LaysItsPartsOut)
{
    Open();
    const auto* bar = Find<BMenuBar>(fWindow);
    const BRect bounds = fWindow->Bounds();
    EXPECT_EQ(Tabs()->Frame(), BRect(0, bar->Bounds().bottom + 1, bounds.right, bounds.bottom));
    const BRect tabs = Tabs()->Bounds();
    EXPECT_EQ(Tabs()->TabAt(0)->View()->Frame(),
              BRect(3, 3, 3 + tabs.Width() - 8, 3 + tabs.Height() - Tabs()->TabHeight() - 8));
}

TEST_F(MainWindowTest, HasOneMenu)
{
    Open();
    const auto* bar = Find<BMenuBar>(fWindow);
    ASSERT_EQ(bar->CountItems(), 1);
    EXPECT_STREQ(bar->ItemAt(0)->Label(), "File");
    const BMenu* menu = bar->SubmenuAt(0);
    ASSERT_EQ(menu->CountItems(), 5);
    struct Row {
        int32 index;
        const char* label;
        uint32 what;
        char shortcut;
    };
    for (const Row& row : {Row{0, "Preferences", MSG_OPEN_GLOBAL_PREFS, 'P'}, Row{2, "About", B_ABOUT_REQUESTED, 'A'},
                           Row{4, "Quit", B_QUIT_REQUESTED, 'Q'}}) {
        const BMenuItem* item = menu->ItemAt(row.index);
        EXPECT_STREQ(item->Label(), row.label);
        EXPECT_EQ(item->Command(), row.what);
        EXPECT_EQ(item->Shortcut(), row.shortcut);
        EXPECT_EQ(item->Messenger().Target(nullptr), be_app);
    }
    EXPECT_NE(dynamic_cast<BSeparatorItem*>(menu->ItemAt(1)), nullptr);
    EXPECT_NE(dynamic_cast<BSeparatorItem*>(menu->ItemAt(3)), nullptr);
}

TEST_F(MainWindowTest, ArchivesItsChartsSizesAndSelection)
{
    Open();
    const BMessage archive = Archived();
    BMessage charts;
    ASSERT_EQ(archive.FindMessage("ChartViewHolder", &charts), B_OK);
    type_code type = 0;
    int32 count = 0;
    EXPECT_EQ(charts.GetInfo("Chart", &type, &count), B_OK);
    EXPECT_EQ(count, 3);
    EXPECT_EQ(SizeOf(archive, "WindowFrameWithCharts"), BPoint(300, 150));
    EXPECT_EQ(SizeOf(archive, "WindowFrame"), BPoint(350, 150));
    int32 selection = -1;
    EXPECT_EQ(archive.FindInt32("Selection", &selection), B_OK);
    EXPECT_EQ(selection, 0);
    EXPECT_FALSE(archive.HasData("_views", B_MESSAGE_TYPE)) << "the window itself is shallow";
}

TEST_F(MainWindowTest, RemembersASizeForEachTab)
{
    Open();
    fWindow->ResizeTo(410, 260);
    fWindow->FrameResized(410, 260);
    Tabs()->Select(1);
    EXPECT_EQ(Size(), BPoint(300, 150));
    fWindow->ResizeTo(500, 400);
    fWindow->FrameResized(500, 400);
    const BMessage archive = Archived();
    EXPECT_EQ(SizeOf(archive, "WindowFrameWithCharts"), BPoint(500, 400));
    EXPECT_EQ(SizeOf(archive, "WindowFrame"), BPoint(410, 260));

    Close();
    Open(archive);
    EXPECT_EQ(Tabs()->Selection(), 1);
    EXPECT_EQ(Size(), BPoint(500, 400));
    EXPECT_EQ(fWindow->Frame().LeftTop(), kFrame.LeftTop());
    Tabs()->Select(0);
    EXPECT_EQ(Size(), BPoint(410, 260));
    Tabs()->Select(1);
    EXPECT_EQ(Size(), BPoint(500, 400));
}

TEST_F(MainWindowTest, ArchivedAgainIsTheSame)
{
    Open();
    Tabs()->Select(1);
    const BMessage archive = Archived();
    Close();
    Open(archive);
    EXPECT_TRUE(Archived().HasSameData(archive));
}

TEST_F(MainWindowTest, WithoutChartsInItsArchiveHasThreeOfThem)
{
    Open(BMessage());
    EXPECT_EQ(Charts()->CountCharts(), 3);
    EXPECT_EQ(Tabs()->Selection(), 0);
    EXPECT_EQ(Size(), BPoint(300, 200));
    Tabs()->Select(1);
    EXPECT_EQ(Size(), BPoint(300, 150));
}

TEST_F(MainWindowTest, WithoutASelectionShowsTheUptimes)
{
    Open();
    Tabs()->Select(1);
    BMessage archive = Archived();
    archive.RemoveName("Selection");
    Close();
    Open(archive);
    EXPECT_EQ(Tabs()->Selection(), 0);
}

TEST_F(MainWindowTest, KeepsAnEmptyHolderEmpty)
{
    BMessage archive;
    const BMessage charts;
    archive.AddMessage("ChartViewHolder", &charts);
    Open(archive);
    EXPECT_EQ(Charts()->CountCharts(), 0);
}

TEST_F(MainWindowTest, HoldsWhatIsNotSane)
{
    constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
    const BRect frames[] = {BRect(0, 0, kNaN, 100), BRect(0, 0, 1e30f, 1e30f), BRect(5, 5, 0, 0),
                            BRect(-INFINITY, 0, INFINITY, 10), BRect(0, 0, 3, 3)};
    for (const BRect& frame : frames) {
        for (int32 selection : {-1, 2, 7, INT32_MIN, INT32_MAX}) {
            BMessage archive;
            archive.AddRect("WindowFrame", frame);
            archive.AddRect("WindowFrameWithCharts", frame);
            archive.AddInt32("Selection", selection);
            const BMessage charts;
            archive.AddMessage("ChartViewHolder", &charts);
            Open(archive);
            EXPECT_EQ(Tabs()->Selection(), 0);
            for (int32 tab : {1, 0}) {
                Tabs()->Select(tab);
                EXPECT_TRUE(Size().x >= 100 && Size().x <= 4000) << Size().x;
                EXPECT_TRUE(Size().y >= 100 && Size().y <= 4000) << Size().y;
            }
            Close();
        }
    }
}
