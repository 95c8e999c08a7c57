#include "src/pages/ChartFontsTab.h"

#include "kits/interface/ListView.h"
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
        fSample = FindNth<FontSample>(fPage);
    }

    /// As the user would select a row.
    static void Pick(BListView* list, int32 index)
    {
        list->Select(index);
        BMessage message(*list->SelectionMessage());
        list->BInvoker::Invoke(&message);
        test::Turn();
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
    FFont font(chart->ValueFont());
    font.SetSize(33);
    chart->SetValueFont(&font);
    ShowPage();
    EXPECT_EQ(fSize->Value(), 33);
    EXPECT_STREQ(fSize->Label(), "Size 33");
    if (fFamilies->CurrentSelection() >= 0) {
        EXPECT_EQ(fFamilies->ItemAt(fFamilies->CurrentSelection())->Text(), FamilyOf(font));
    }
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
    EXPECT_EQ(chart->TitleFont().Size(), 22);
    EXPECT_EQ(chart->ValueFont().Size(), 15);
    Pick(fFamilies, fFamilies->CountItems() - 1);
    EXPECT_EQ(FamilyOf(chart->TitleFont()), fFamilies->ItemAt(fFamilies->CountItems() - 1)->Text());
    ASSERT_GT(fStyles->CountItems(), 0);
    EXPECT_EQ(StyleOf(chart->TitleFont()), fStyles->ItemAt(0)->Text());
    Pick(fStyles, fStyles->CountItems() - 1);
    EXPECT_EQ(StyleOf(chart->TitleFont()), fStyles->ItemAt(fStyles->CountItems() - 1)->Text());

    Choose(Item(fTarget, "Value"));
    EXPECT_EQ(fSize->Value(), 15);
    Use(fSize, 8);
    EXPECT_EQ(chart->ValueFont().Size(), 8);
    EXPECT_EQ(chart->TitleFont().Size(), 22);
}

TEST_F(ChartFontsTabTest, OtherPropertiesOfTheCaptionStay)
{
    FFont font(chart->TitleFont());
    font.SetRotation(10);
    font.SetFlags(B_DISABLE_ANTIALIASING);
    chart->SetTitleFont(&font);
    ShowPage();
    Choose(Item(fTarget, "Title"));
    Use(fSize, 22);
    EXPECT_EQ(chart->TitleFont().Rotation(), 10);
    EXPECT_EQ(chart->TitleFont().Flags(), uint32(B_DISABLE_ANTIALIASING));
    EXPECT_EQ(chart->TitleFont().Mask(), 255u);
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

    const BRect title = chart->TitleRect();
    ASSERT_TRUE(title.IsValid());
    test::Drop(chart, drag->message, BPoint(title.left + 2, title.top + 2));
    EXPECT_EQ(chart->TitleFont().Size(), 19);
    EXPECT_EQ(chart->ValueFont().Size(), 15);
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
