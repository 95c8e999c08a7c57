// SPDX-License-Identifier: MIT
#include "kits/support/TypeConstants.h"
#include "src/pages/ChartColorTab.h"
#include "src/pages/ChartFontsTab.h"
#include "src/pages/ChartGeneralTab.h"
#include "src/pages/ChartSourcesTab.h"
#include "src/pages/SysinfoTab.h"
#include "src/support/MessageCodes.h"
#include "src/support/ui/ColorPreView.h"
#include "src/support/ui/SmartColorControl.h"
#include "tests/src/pages/PageTest.h"
#include "tests/support/FieldAt.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace {

/// A chart with all its pages, as in its preferences window.
class PagesTogetherTest : public PageTest {
protected:
    void SetUp() override
    {
        PageTest::SetUp();
        AddSources(*chart, 2);
        chart->SetShowValue(true);
        chart->SetShowTitle(true);
        chart->SetTitle("before");
    }

    void ShowAll()
    {
        fGeneral = new ChartGeneralTab(chart);
        fColors = new ChartColorTab(chart);
        for (PrefsTab* page : std::initializer_list<PrefsTab*>{fGeneral, fColors, new ChartSourcesTab(chart),
                                                               new ChartFontsTab(chart), new SysinfoTab(nullptr)})
            AddPage(page);
        prefs->Show();
        test::Turn();
    }

    /// Changes one setting of each kind that the pages offer.
    void ChangeAll() const
    {
        chart->SetTitle("after");
        chart->SetShowTitle(false);
        chart->SetShowValue(false);
        chart->SetShowBorder(true);
        chart->SetPageSize(0.1f);
        chart->SetSkipValue(20);
        chart->SetValueSkipValue(21);
        chart->SetChartType(kPointChart);
        chart->SetMode(kGaugeMode);
        chart->SetVertical(true);
        chart->SetTransparent(true);
        chart->SetChartColor({1, 2, 3, 255}, 0);
        chart->SetBackgroundColor({4, 5, 6, 255});
        chart->SetBorderColor({7, 8, 9, 255});
        chart->SetValueColor({10, 11, 12, 255});
        chart->SetTitleColor({13, 14, 15, 255});
        chart->SetTitleAAValue(0.9f);
        chart->SetValueAATarget(1);
        chart->RemoveValueProvider(0);
        FFont font(chart->Settings().title.font);
        font.SetSize(30);
        chart->SetTitleFont(&font);
    }

    /// Returns the fields in which two settings differ.
    static std::vector<std::string> Differences(const BMessage& one, const BMessage& other)
    {
        std::vector<std::string> names;
        const char* name = nullptr;
        type_code type;
        for (int32 i = 0; test::FieldAt(one, B_ANY_TYPE, i, &name, &type); i++) {
            BMessage left;
            BMessage right;
            Only(one, name, &left);
            Only(other, name, &right);
            if (!left.HasSameData(right))
                names.emplace_back(name);
        }
        EXPECT_EQ(one.CountNames(B_ANY_TYPE), other.CountNames(B_ANY_TYPE));
        return names;
    }

    ChartGeneralTab* fGeneral = nullptr;
    ChartColorTab* fColors = nullptr;

private:
    /// Returns a copy of a message with only one of its fields.
    static void Only(const BMessage& message, const char* name, BMessage* copy)
    {
        *copy = message;
        const char* found = nullptr;
        type_code type;
        for (int32 i = 0; test::FieldAt(*copy, B_ANY_TYPE, i, &found, &type);)
            if (std::strcmp(found, name) == 0)
                i++;
            else
                copy->RemoveName(std::string(found).c_str());
    }
};

typedef std::vector<std::string> Names;

} // namespace

TEST_F(PagesTogetherTest, OpeningChangesNothingButTheSkips)
{
    const BMessage before = ChartSettings();
    ShowAll();
    EXPECT_EQ(Differences(before, ChartSettings()), (Names{"SkipValue", "ValueSkipValue"}));
    EXPECT_EQ(chart->Settings().skip, 1);
    EXPECT_EQ(chart->Settings().valueSkip, 1);
}

TEST_F(PagesTogetherTest, RevertAllBringsBackAllButTheSkips)
{
    const BMessage before = ChartSettings();
    ShowAll();
    ChangeAll();
    EXPECT_GT(Differences(before, ChartSettings()).size(), 15u);
    Post(MSG_PREFS_REVERT_ALL);
    // Filling the controls again raises these two.
    EXPECT_EQ(Differences(before, ChartSettings()), (Names{"SkipValue", "ValueSkipValue"}));
    EXPECT_EQ(chart->Settings().skip, 1);
}

TEST_F(PagesTogetherTest, RevertAllWithAnotherPageInFrontBringsBackAll)
{
    const BMessage before = ChartSettings();
    ShowAll();
    ChangeAll();
    TabView()->Select(1);
    test::Turn();
    Post(MSG_PREFS_REVERT_ALL);
    EXPECT_EQ(Differences(before, ChartSettings()), Names());
}

TEST_F(PagesTogetherTest, CancelBringsBackAllAndCloses)
{
    const BMessage before = ChartSettings();
    ShowAll();
    ChangeAll();
    Post(MSG_PREFS_CANCEL);
    EXPECT_EQ(prefs, nullptr);
    EXPECT_EQ(Differences(before, ChartSettings()), Names());
}

TEST_F(PagesTogetherTest, RevertBringsBackOnlyThePageInFront)
{
    ShowAll();
    TabView()->Select(1);
    ChangeAll();
    Post(MSG_PREFS_REVERT);
    EXPECT_STREQ(chart->Title(), "after");
    EXPECT_EQ(chart->Settings().title.color, (rgb_color{216, 216, 216, 0}));
    EXPECT_EQ(chart->CountValueProviders(), 1);
}

TEST_F(PagesTogetherTest, ADragOfAllPagesMakesAnotherChartTheSame)
{
    ShowAll();
    ChangeAll();
    BMessage message;
    for (int32 i = 0; BTab* tab = TabView()->TabAt(i); i++)
        dynamic_cast<PrefsTab*>(tab->View())->SavePrefsForDD(&message);
    auto* other = new ChartView;
    other->ResizeTo(100, 50);
    other->MoveTo(120, 0);
    window->AddChild(other);
    test::Drop(other, message, BPoint(80, 45));
    BMessage settings;
    other->SavePrefsTo(&settings);
    EXPECT_EQ(Differences(ChartSettings(), settings), Names());
}

TEST_F(PagesTogetherTest, NothingLiesOverAnotherAtTheSmallestSize)
{
    ShowAll();
    float width = 0;
    float height = 0;
    float ignored = 0;
    prefs->GetSizeLimits(&width, &ignored, &height, &ignored);
    prefs->ResizeTo(width, height);
    // Twice: a page that comes back is not laid out again.
    for (int32 visit = 0; BTab* tab = TabView()->TabAt(visit % TabView()->CountTabs()); visit++) {
        if (visit == 2 * TabView()->CountTabs())
            break;
        TabView()->Select(visit % TabView()->CountTabs());
        test::Turn();
        const BView* page = tab->View();
        for (int32 i = 0; const BView* one = page->ChildAt(i); i++) {
            EXPECT_TRUE(page->Bounds().Contains(one->Frame().LeftTop())) << tab->Label() << i;
            EXPECT_LE(one->Frame().right, page->Bounds().right + 0.5) << tab->Label() << i;
            EXPECT_LE(one->Frame().bottom, page->Bounds().bottom + 0.5) << tab->Label() << i;
            for (int32 j = i + 1; const BView* two = page->ChildAt(j); j++) {
                const BRect both = one->Frame() & two->Frame();
                EXPECT_FALSE(both.IsValid() && both.Width() > 0.5 && both.Height() > 0.5)
                    << tab->Label() << " " << i << " and " << j;
            }
        }
    }
}

TEST_F(PagesTogetherTest, TheSmallestWindowHoldsThemWithAFontOfTwelvePixels)
{
    ShowAll();
    if (TabView()->StringWidth("BgColor = Desktop") > 115)
        GTEST_SKIP() << "with a larger font it grows";
    float width = 0;
    float height = 0;
    float ignored = 0;
    prefs->GetSizeLimits(&width, &ignored, &height, &ignored);
    EXPECT_EQ(width, 440);
    EXPECT_EQ(height, 280);
}

TEST_F(PagesTogetherTest, AChartThatIsDeletedWithItsWindowOpenIsNotTouched)
{
    ShowAll();
    BMessage command(MSG_PAGE_SIZE);
    prefs->PostMessage(&command, fGeneral);
    prefs->Quit();
    chart->RemoveSelf();
    delete chart;
    chart = nullptr;
    test::Turn();
    EXPECT_EQ(prefs, nullptr);
}

TEST_F(PagesTogetherTest, AfterARevertOfAnotherPageTheSwatchHasTheColorOfNoTarget)
{
    test::CatchDrags();
    ShowAll();
    auto* preview = FindNth<ColorPreView>(fColors);
    auto* target = Find<BMenuField>(fColors, "Target:");
    for (const uint32 code : {MSG_PREFS_REVERT, MSG_PREFS_REVERT_ALL}) {
        chart->SetBackgroundColor({200, 10, 20, 255});
        TabView()->Select(1);
        test::Turn();
        Choose(Item(target, "Background"));
        ASSERT_EQ(preview->ViewColor().red, 200);
        TabView()->Select(0);
        test::Turn();
        Post(code);
        TabView()->Select(1);
        test::Turn();
        EXPECT_STREQ(Marked(target->Menu()), "< none >");
        const rgb_color shown = FindNth<SmartColorControl>(fColors)->ValueAsColor();
        EXPECT_EQ(shown.red, 0);
        EXPECT_EQ(preview->ViewColor().red, 0);
        test::Press(preview, BPoint(10, 10));
        const auto drag = test::TakeDrag();
        test::Release(preview, BPoint(10, 10));
        ASSERT_NE(drag, nullptr);
        const void* data = nullptr;
        ssize_t size = 0;
        ASSERT_EQ(drag->message.FindData("RGBColor", B_RGB_COLOR_TYPE, &data, &size), B_OK);
        EXPECT_EQ(static_cast<const rgb_color*>(data)->red, 0);
    }
}
