// SPDX-License-Identifier: MIT
#include "src/pages/ChartFontsTab.h"

#include "kits/interface/ListView.h"
#include "kits/interface/NumberControl.h"
#include "kits/interface/ScrollView.h"
#include "kits/support/TypeConstants.h"
#include "src/pages/ChartGeneralTab.h"
#include "src/pages/FontSample.h"
#include "src/support/MessageCodes.h"
#include "tests/src/pages/PageTest.h"

#include <gtest/gtest.h>

#include <string>

namespace {

class ChartFontsTabTest : public PageTest {
protected:
    void SetUp() override
    {
        if (count_font_families() == 0)
            GTEST_SKIP() << "no fonts here";
        PageTest::SetUp();
        chart->SetShowValue(true);
        chart->SetShowTitle(true);
        test::CatchDrags();
    }
    void TearDown() override
    {
        if (chart != nullptr)
            PageTest::TearDown();
    }

    void ShowPage()
    {
        fPage = Show(new ChartFontsTab(chart));
        fTarget = FindNth<BMenuField>(fPage);
        fFamilies = dynamic_cast<BListView*>(FindNth<BScrollView>(fPage, 0)->Target());
        fStyles = dynamic_cast<BListView*>(FindNth<BScrollView>(fPage, 1)->Target());
        fSize = FindNth<BSlider>(fPage);
        fNumber = FindNth<BNumberControl>(fPage);
        fSample = FindNth<FontSample>(fPage);
    }

    /// Selects a row as the user would.
    static void Pick(BListView* list, int32 index)
    {
        list->Select(index);
        BMessage message(*list->SelectionMessage());
        list->BInvoker::Invoke(&message);
        test::Turn();
    }

    static int32 RowOf(const BListView* list, const std::string& text)
    {
        for (int32 i = 0; const BListItem* item = list->ItemAt(i); i++)
            if (item->Text() == text)
                return i;
        return -1;
    }

    static std::string Selected(const BListView* list)
    {
        const BListItem* item = list->ItemAt(list->CurrentSelection());
        return item != nullptr ? item->Text() : "none";
    }

    /// Returns whether the selected row is visible in its list.
    static bool SelectionShows(const BListView* list)
    {
        const BRect row = list->ItemFrame(list->CurrentSelection());
        return row.IsValid() && row.top >= 0 && row.bottom <= list->Bounds().bottom + 1;
    }

    static std::string FamilyOf(const BFont& font)
    {
        font_family family;
        font_style style;
        font.GetFamilyAndStyle(&family, &style);
        return family;
    }
    static std::string StyleOf(const BFont& font)
    {
        font_family family;
        font_style style;
        font.GetFamilyAndStyle(&family, &style);
        return style;
    }

    ChartFontsTab* fPage = nullptr;
    BMenuField* fTarget = nullptr;
    BListView* fFamilies = nullptr;
    BListView* fStyles = nullptr;
    BSlider* fSize = nullptr;
    BNumberControl* fNumber = nullptr;
    FontSample* fSample = nullptr;
};

} // namespace

TEST_F(ChartFontsTabTest, ListsTheFontsOfThisMachine)
{
    ShowPage();
    EXPECT_STREQ(fPage->Name(), "Fonts");
    ASSERT_EQ(fFamilies->CountItems(), count_font_families());
    font_family family;
    get_font_family(0, &family);
    EXPECT_STREQ(fFamilies->ItemAt(0)->Text(), family);
    EXPECT_STREQ(Marked(fTarget->Menu()), "< none >");
}

TEST_F(ChartFontsTabTest, BeginsWithTheFontOfTheValue)
{
    FFont font(chart->Settings().value.font);
    font.SetSize(33);
    chart->SetValueFont(&font);
    ShowPage();
    EXPECT_EQ(fSize->Value(), 33);
    EXPECT_STREQ(fSize->Label(), "Size 33");
    if (fFamilies->CurrentSelection() >= 0)
        EXPECT_EQ(fFamilies->ItemAt(fFamilies->CurrentSelection())->Text(), FamilyOf(font));
}

TEST_F(ChartFontsTabTest, WithoutATargetNothingChanges)
{
    ShowPage();
    const BMessage before = ChartSettings();
    Pick(fFamilies, fFamilies->CountItems() - 1);
    Use(fSize, 50);
    EXPECT_TRUE(ChartSettings().HasSameData(before));
}

TEST_F(ChartFontsTabTest, WithATargetEveryChoiceAppliesAtOnce)
{
    ShowPage();
    const BMessage before = ChartSettings();
    Choose(Item(fTarget, "Title"));
    EXPECT_TRUE(ChartSettings().HasSameData(before));
    Use(fSize, 22);
    EXPECT_EQ(chart->Settings().title.font.Size(), 22);
    EXPECT_EQ(chart->Settings().value.font.Size(), 15);
    Pick(fFamilies, fFamilies->CountItems() - 1);
    EXPECT_EQ(FamilyOf(chart->Settings().title.font), fFamilies->ItemAt(fFamilies->CountItems() - 1)->Text());
    ASSERT_GT(fStyles->CountItems(), 0);
    EXPECT_EQ(StyleOf(chart->Settings().title.font), Selected(fStyles));
    Pick(fStyles, fStyles->CountItems() - 1);
    EXPECT_EQ(StyleOf(chart->Settings().title.font), fStyles->ItemAt(fStyles->CountItems() - 1)->Text());

    Choose(Item(fTarget, "Value"));
    EXPECT_EQ(fSize->Value(), 15);
    Use(fSize, 8);
    EXPECT_EQ(chart->Settings().value.font.Size(), 8);
    EXPECT_EQ(chart->Settings().title.font.Size(), 22);
}

TEST_F(ChartFontsTabTest, OtherPropertiesOfTheCaptionStay)
{
    FFont font(chart->Settings().title.font);
    font.SetRotation(10);
    font.SetFlags(B_DISABLE_ANTIALIASING);
    chart->SetTitleFont(&font);
    ShowPage();
    Choose(Item(fTarget, "Title"));
    Use(fSize, 22);
    EXPECT_EQ(chart->Settings().title.font.Rotation(), 10);
    EXPECT_EQ(chart->Settings().title.font.Flags(), uint32(B_DISABLE_ANTIALIASING));
    EXPECT_EQ(chart->Settings().title.font.Mask(), 255u);
}

TEST_F(ChartFontsTabTest, RevertPutsBothFontsBack)
{
    const BMessage before = ChartSettings();
    ShowPage();
    Choose(Item(fTarget, "Title"));
    Use(fSize, 40);
    Choose(Item(fTarget, "Value"));
    Use(fSize, 6);
    Post(MSG_PREFS_REVERT);
    EXPECT_TRUE(ChartSettings().HasSameData(before));
    EXPECT_STREQ(Marked(fTarget->Menu()), "< none >");
    Use(fSize, 60);
    EXPECT_TRUE(ChartSettings().HasSameData(before));
}

TEST_F(ChartFontsTabTest, AfterARevertThePageShowsTheFontOfTheChart)
{
    FFont font(chart->Settings().title.font);
    font.SetSize(21);
    chart->SetTitleFont(&font);
    ShowPage();
    const std::string family = Selected(fFamilies);
    const std::string style = Selected(fStyles);
    for (const uint32 code : {MSG_PREFS_REVERT, MSG_PREFS_REVERT_ALL}) {
        Choose(Item(fTarget, "Title"));
        Pick(fFamilies, fFamilies->CurrentSelection() == 0 ? 1 : 0);
        Use(fSize, 60);
        Post(code);
        EXPECT_EQ(fSize->Value(), 21) << "of the caption that was changed";
        EXPECT_EQ(fNumber->Value(), 21);
        EXPECT_EQ(Selected(fFamilies), family);
        EXPECT_EQ(Selected(fStyles), style);
        EXPECT_EQ(fSample->AccessibleValue().substr(fSample->AccessibleValue().rfind(' ') + 1), "21");
    }
    // A choice that was only looked at is gone as well.
    Choose(Item(fTarget, "Value"));
    Choose(Item(fTarget, "< none >"));
    Use(fSize, 77);
    Post(MSG_PREFS_REVERT);
    EXPECT_EQ(fSize->Value(), 15);
}

TEST_F(ChartFontsTabTest, WhenItIsShownAgainItShowsWhatWasChosenLast)
{
    ShowPage();
    AddPage(new ChartGeneralTab(chart));
    Use(fSize, 77);
    TabView()->Select(1);
    test::Turn();
    TabView()->Select(0);
    test::Turn();
    EXPECT_EQ(fSize->Value(), 77);
    TabView()->Select(1);
    test::Turn();
    Post(MSG_PREFS_REVERT);
    TabView()->Select(0);
    test::Turn();
    EXPECT_EQ(fSize->Value(), 15) << "after a revert of another page too";
}

TEST_F(ChartFontsTabTest, AnotherFamilyKeepsTheStyleIfItHasIt)
{
    ShowPage();
    const int32 sans = RowOf(fFamilies, "DejaVu Sans");
    const int32 mono = RowOf(fFamilies, "DejaVu Sans Mono");
    const int32 serif = RowOf(fFamilies, "DejaVu Serif");
    if (sans < 0 || mono < 0 || serif < 0)
        GTEST_SKIP() << "the families are not installed";
    Choose(Item(fTarget, "Title"));
    Pick(fFamilies, sans);
    EXPECT_EQ(StyleOf(chart->Settings().title.font), "Book") << "from the default font, which has no style";
    Pick(fStyles, RowOf(fStyles, "Bold"));
    Pick(fFamilies, mono);
    EXPECT_EQ(FamilyOf(chart->Settings().title.font), "DejaVu Sans Mono");
    EXPECT_EQ(StyleOf(chart->Settings().title.font), "Bold");
    EXPECT_EQ(Selected(fStyles), "Bold");
    // One of them has no oblique style.
    const int32 oblique = RowOf(fStyles, "Bold Oblique");
    if (oblique >= 0) {
        Pick(fStyles, oblique);
        Pick(fFamilies, serif);
        EXPECT_EQ(StyleOf(chart->Settings().title.font), RowOf(fStyles, "Bold Oblique") >= 0 ? "Bold Oblique" : "Book");
    }
}

TEST_F(ChartFontsTabTest, TheFontOfTheChartIsSelectedAndShows)
{
    font_family family;
    ASSERT_EQ(get_font_family(count_font_families() - 1, &family), B_OK);
    font_style style;
    ASSERT_EQ(get_font_style(family, count_font_styles(family) - 1, &style), B_OK);
    FFont font(chart->Settings().title.font);
    font.SetFamilyAndStyle(family, style);
    chart->SetTitleFont(&font);
    ShowPage();
    // The default font has no style, and possibly a substituted family.
    for (const char* target : {"Value", "Title", "Value"}) {
        Choose(Item(fTarget, target));
        ASSERT_GE(fFamilies->CurrentSelection(), 0) << target;
        ASSERT_GE(fStyles->CurrentSelection(), 0) << target;
        EXPECT_TRUE(SelectionShows(fFamilies)) << target;
        EXPECT_TRUE(SelectionShows(fStyles)) << target;
    }
    Choose(Item(fTarget, "Title"));
    EXPECT_EQ(Selected(fFamilies), family);
    EXPECT_EQ(Selected(fStyles), style);
}

TEST_F(ChartFontsTabTest, TheSizeIsANumberToo)
{
    ShowPage();
    Choose(Item(fTarget, "Title"));
    EXPECT_EQ(fNumber->Value(), fSize->Value());
    Use(fSize, 22);
    EXPECT_EQ(fNumber->Value(), 22);
    Use(fNumber, 37);
    EXPECT_EQ(fSize->Value(), 37);
    EXPECT_STREQ(fSize->Label(), "Size 37");
    EXPECT_EQ(chart->Settings().title.font.Size(), 37);
}

TEST_F(ChartFontsTabTest, TheSampleIsAsTallAsTheSizeRequires)
{
    ShowPage();
    Choose(Item(fTarget, "Title"));
    Pick(fFamilies, fFamilies->CountItems() - 3);
    const BRect before = prefs->Bounds();
    for (const int32 size : {15, 60, 200, 100}) {
        Use(fSize, size);
        test::Turn();
        font_height height;
        FFont font(chart->Settings().title.font);
        EXPECT_EQ(font.Size(), size);
        font.GetHeight(&height);
        EXPECT_GE(fSample->Bounds().Height() + 1, height.ascent + height.descent) << size;
        EXPECT_LE(fSample->Frame().bottom, fPage->Bounds().bottom) << size;
        EXPECT_LE(fSize->Frame().bottom, fSample->Frame().top) << size;
        EXPECT_GT(fFamilies->Parent()->Bounds().Height(), 40) << size;
        EXPECT_TRUE(SelectionShows(fFamilies)) << size;
        EXPECT_TRUE(SelectionShows(fStyles)) << size;
    }
    EXPECT_GT(prefs->Bounds().Height(), before.Height()) << "the window has grown";
    EXPECT_EQ(prefs->Bounds().Width(), before.Width());
    float minimum = 0;
    float ignored = 0;
    Use(fSize, 15);
    prefs->GetSizeLimits(&ignored, &ignored, &minimum, &ignored);
    EXPECT_EQ(minimum, before.Height()) << "and may be made as small as before";
}

TEST_F(ChartFontsTabTest, ADragOfThePageCarriesBothFonts)
{
    ShowPage();
    BMessage message;
    EXPECT_TRUE(fPage->SavePrefsForDD(&message));
    EXPECT_EQ(message.what, uint32(MSG_PREFS_DROP));
    EXPECT_EQ(message.CountNames(B_ANY_TYPE), 2);
    FFont font;
    EXPECT_EQ(FindMessageFont(&message, "ValueFont", 0, &font), B_OK);
    EXPECT_EQ(FindMessageFont(&message, "TitleFont", 0, &font), B_OK);
}

TEST_F(ChartFontsTabTest, InADragOfAllPagesTheFontsAreThereOnce)
{
    auto* general = new ChartGeneralTab(chart);
    AddPage(general);
    AddPage(new ChartFontsTab(chart));
    BMessage message;
    for (int32 i = 0; BTab* tab = TabView()->TabAt(i); i++)
        dynamic_cast<PrefsTab*>(tab->View())->SavePrefsForDD(&message);
    for (const char* field : {"ValueFont", "TitleFont"}) {
        int32 count = 0;
        type_code type;
        ASSERT_EQ(message.GetInfo(field, &type, &count), B_OK);
        EXPECT_EQ(count, 1) << field;
    }
    BMessage expected(MSG_PREFS_DROP);
    chart->SaveGeneralPrefsTo(&expected);
    EXPECT_TRUE(message.HasSameData(expected));
}

TEST_F(ChartFontsTabTest, TheSampleIsDraggedOntoCaptions)
{
    ShowPage();
    Pick(fFamilies, 0);
    Use(fSize, 19);
    test::Press(fSample, BPoint(10, 10));
    const auto drag = test::TakeDrag();
    test::Release(fSample, BPoint(10, 10));
    ASSERT_NE(drag, nullptr);
    EXPECT_EQ(drag->message.what, uint32('!FNT'));
    FFont font;
    ASSERT_EQ(FindMessageFont(&drag->message, "font", 0, &font), B_OK);
    EXPECT_EQ(font.Size(), 19);
    EXPECT_EQ(font.Mask(), uint32(FFont::kFamilyAndStyle | FFont::kSize));
    EXPECT_EQ(FamilyOf(font), fFamilies->ItemAt(0)->Text());

    const BRect title = chart->Captions().Title().drawn;
    ASSERT_TRUE(title.IsValid());
    test::Drop(chart, drag->message, BPoint(title.left + 2, title.top + 2));
    EXPECT_EQ(chart->Settings().title.font.Size(), 19);
    EXPECT_EQ(chart->Settings().value.font.Size(), 15);
}

TEST_F(ChartFontsTabTest, TheSampleIsCopiedByKeyboard)
{
    ShowPage();
    Use(fSize, 19);
    EXPECT_NE(fSample->Flags() & B_NAVIGABLE, 0u);
    BMessage message;
    ASSERT_TRUE(fSample->CopyRequested(&message));
    EXPECT_EQ(message.what, uint32('!FNT'));
    FFont font;
    ASSERT_EQ(FindMessageFont(&message, "font", 0, &font), B_OK);
    EXPECT_EQ(font.Size(), 19);
}

TEST_F(ChartFontsTabTest, NothingOverlapsAtItsMinimumSize)
{
    ShowPage();
    float width = 0;
    float height = 0;
    fPage->GetMinimumSize(&width, &height);
    fPage->ResizeTo(width, height);
    fPage->Rerender();
    EXPECT_LE(fTarget->Frame().bottom, fFamilies->Parent()->Frame().top);
    EXPECT_GT(fFamilies->Parent()->Bounds().Height(), 40);
    EXPECT_LE(fFamilies->Parent()->Frame().right, fStyles->Parent()->Frame().left);
    EXPECT_LE(fFamilies->Parent()->Frame().bottom, fSize->Frame().top);
    EXPECT_LE(fSize->Frame().right, fNumber->Frame().left);
    EXPECT_LE(fNumber->Frame().right, fPage->Bounds().right);
    EXPECT_LE(fSize->Frame().bottom, fSample->Frame().top);
    EXPECT_LE(fSample->Frame().bottom, fPage->Bounds().bottom);
}

TEST_F(ChartFontsTabTest, AChartThatIsGoneIsNotTouched)
{
    ShowPage();
    Choose(Item(fTarget, "Title"));
    const BMessage before = ChartSettings();
    fPage->ForgetModel();
    Use(fSize, 44);
    Choose(Item(fTarget, "Value"));
    fPage->Revert();
    fPage->GetState();
    EXPECT_TRUE(ChartSettings().HasSameData(before));
}
