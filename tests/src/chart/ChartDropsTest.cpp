// SPDX-License-Identifier: MIT
#include "kits/support/TypeConstants.h"
#include "src/chart/ChartSettings.h"
#include "tests/src/chart/ChartTestKit.h"

#include <QApplication>
#include <QWidget>

// Drops on a chart, and those that it refuses.

namespace {

constexpr uint32 kFontDrop = '!FNT';
constexpr BPoint kElsewhere{180, 35};

class ChartDropsTest : public ChartWindowTest {
protected:
    void SetUp() override
    {
        ChartWindowTest::SetUp();
        AddChart(200, 79);
        chart->SetTitle("Title");
        chart->SetShowTitle(true);
        chart->TrackTitle(BPoint(20, 20));
        BMessage archive;
        const BMessage caption = SourceArchive(VP_ALLOCATED_TEAMS);
        archive.AddMessage("ValueVP", &caption);
        archive.AddPoint("ValueCoord", BPoint(20, 60));
        chart->LoadPrefsFrom(&archive);
    }

    void TearDown() override
    {
        for (QWidget* alert : Alerts())
            alert->close();
        ChartWindowTest::TearDown();
    }

    void AddShownSources(int32 count)
    {
        AddSources(*chart, count);
        chart->SetShowValue(true);
        for (int i = 0; i < 190; i++)
            Show(*chart, {.memory = 500, .teams = 500});
        chart->SetShowValue(true);
        onTitle = BPoint(chart->Captions().Title().drawn.left + 3, chart->Captions().Title().drawn.top + 3);
        onValue = BPoint(chart->Captions().Value().drawn.left + 3, chart->Captions().Value().drawn.top + 3);
    }

    static BMessage TextDrop(const std::string& text, uint32 what = B_SIMPLE_DATA)
    {
        BMessage message(what);
        message.AddData("text/plain", B_MIME_TYPE, text.data(), static_cast<ssize_t>(text.size()), false);
        return message;
    }

    static BMessage ColorDrop(rgb_color color)
    {
        BMessage message(B_PASTE);
        message.AddData("RGBColor", B_RGB_COLOR_TYPE, &color, sizeof(color));
        return message;
    }

    static BMessage SourceDrop(std::initializer_list<vptarget_t> targets)
    {
        BMessage message(MSG_SOURCE_DROP);
        for (vptarget_t target : targets) {
            const BMessage archive = SourceArchive(target);
            message.AddMessage("ValueProvider", &archive);
        }
        return message;
    }

    /// Returns the open alerts.
    static QWidgetList Alerts()
    {
        QWidgetList alerts;
        for (QWidget* widget : QApplication::topLevelWidgets())
            if (widget->isVisible() && widget->windowTitle() == "Qel alert")
                alerts.append(widget);
        return alerts;
    }

    BMessage Settings() const
    {
        BMessage settings;
        chart->SavePrefsTo(&settings);
        return settings;
    }

    BPoint onTitle;
    BPoint onValue;
};

} // namespace

TEST_F(ChartDropsTest, TextOnTheTitleBecomesTheTitle)
{
    AddShownSources(1);
    test::Drop(chart, TextDrop("From an editor"), onTitle);
    EXPECT_STREQ(chart->Title(), "From an editor");
    test::Drop(chart, TextDrop("Another", B_MIME_DATA), onTitle);
    EXPECT_STREQ(chart->Title(), "Another");
}

TEST_F(ChartDropsTest, TextElsewhereIsNotTaken)
{
    AddShownSources(1);
    test::Drop(chart, TextDrop("x"), kElsewhere);
    test::Drop(chart, TextDrop("x"), onValue);
    chart->SetShowTitle(false);
    test::Drop(chart, TextDrop("x"), onTitle);
    EXPECT_STREQ(chart->Title(), "Title");
    // A message that was not dropped has no place.
    BMessage sent = TextDrop("x");
    chart->MessageReceived(&sent);
    EXPECT_STREQ(chart->Title(), "Title");
}

TEST_F(ChartDropsTest, TextBecomesOneLineOfASaneLength)
{
    AddShownSources(1);
    test::Drop(chart, TextDrop("two\nlines\tand a tab"), onTitle);
    EXPECT_STREQ(chart->Title(), "two lines and a tab");
    test::Drop(chart, TextDrop(std::string("ends\0here", 9)), onTitle);
    EXPECT_STREQ(chart->Title(), "ends");
    test::Drop(chart, TextDrop(std::string(10 * 1024 * 1024, 'x')), onTitle);
    EXPECT_EQ(std::string(chart->Title()), std::string(kMaxTitleLength, 'x'));
}

TEST_F(ChartDropsTest, TextThatIsNoneIsNotTaken)
{
    AddShownSources(1);
    test::Drop(chart, BMessage(B_SIMPLE_DATA), onTitle);
    BMessage wrong(B_SIMPLE_DATA);
    wrong.AddInt32("text/plain", 5);
    test::Drop(chart, wrong, onTitle);
    test::Drop(chart, TextDrop(""), onTitle);
    EXPECT_STREQ(chart->Title(), "Title");
}

TEST_F(ChartDropsTest, ASourceIsAddedOrNamesTheTitleOrTakesTheCaption)
{
    AddShownSources(1);
    test::Drop(chart, SourceDrop({VP_ALL_CPUS, VP_FREE_MEMORY}), kElsewhere);
    ASSERT_EQ(chart->CountValueProviders(), 3);
    EXPECT_EQ(chart->ValueProviderAt(1)->Target(), VP_ALL_CPUS);
    EXPECT_EQ(chart->ValueProviderAt(2)->Target(), VP_FREE_MEMORY);

    test::Drop(chart, SourceDrop({VP_ALL_CPUS_IDLE}), onTitle);
    EXPECT_STREQ(chart->Title(), "All CPUs idle");
    test::Drop(chart, SourceDrop({VP_ALLOCATED_PORTS}), onValue);
    EXPECT_EQ(chart->ValueVP()->Target(), VP_ALLOCATED_PORTS);
    EXPECT_EQ(chart->CountValueProviders(), 3);
}

TEST_F(ChartDropsTest, HiddenCaptionsTakeNoSource)
{
    AddShownSources(1);
    chart->SetShowTitle(false);
    chart->SetShowValue(false);
    test::Drop(chart, SourceDrop({VP_ALL_CPUS}), onTitle);
    test::Drop(chart, SourceDrop({VP_FREE_MEMORY}), onValue);
    EXPECT_EQ(chart->CountValueProviders(), 3);
}

TEST_F(ChartDropsTest, ACaptionWithoutASourceTakesTheFirstOneThatIsAdded)
{
    BMessage archive;
    const BMessage none = SourceArchive(VP_NONE);
    archive.AddMessage("ValueVP", &none);
    chart->LoadPrefsFrom(&archive);
    test::Drop(chart, SourceDrop({VP_ALL_CPUS, VP_FREE_MEMORY}), kElsewhere);
    EXPECT_EQ(chart->ValueVP()->Target(), VP_ALL_CPUS);
    EXPECT_EQ(chart->CountValueProviders(), 2);
}

TEST_F(ChartDropsTest, ANewSourcesLineBeginsAtTheChartsColumn)
{
    AddShownSources(1);
    chart->SetChartType(kLineChart);
    const auto column = static_cast<int32>(chart->Picture().Column());
    test::Drop(chart, SourceDrop({VP_ALLOCATED_TEAMS}), kElsewhere);
    Show(*chart, {.memory = 500, .teams = 500});
    // The new source has no part in columns from before.
    for (int32 x = 0; x < column; x++)
        EXPECT_EQ(Column(*chart, x).find('1'), std::string::npos) << x;
    EXPECT_NE(Column(*chart, column + 1).find('1'), std::string::npos);
}

TEST_F(ChartDropsTest, TheNinthSourceRaisesOneAlert)
{
    AddShownSources(1);
    for (int i = 0; i < 7; i++)
        test::Drop(chart, SourceDrop({2 * i + 2}), kElsewhere);
    EXPECT_EQ(chart->CountValueProviders(), 8);
    EXPECT_EQ(Alerts().size(), 0);
    test::Drop(chart, SourceDrop({VP_ALL_CPUS}), kElsewhere);
    EXPECT_EQ(chart->CountValueProviders(), 8);
    EXPECT_EQ(Alerts().size(), 1);
}

TEST_F(ChartDropsTest, TheWindowMayGoUnderTheAlert)
{
    AddSources(*chart, 5);
    AddSources(*chart, 3);
    test::Drop(chart, SourceDrop({VP_ALL_CPUS}), kElsewhere);
    EXPECT_EQ(Alerts().size(), 1);
    window->Quit();
    window = nullptr;
    test::Turn();
}

TEST_F(ChartDropsTest, AHundredThousandSourcesFillTheChartAndRaiseOneAlert)
{
    BMessage message(MSG_SOURCE_DROP);
    const BMessage archive = SourceArchive(VP_ALL_CPUS);
    for (int i = 0; i < 100000; i++)
        message.AddMessage("ValueProvider", &archive);
    test::Drop(chart, message, kElsewhere);
    EXPECT_EQ(chart->CountValueProviders(), 8);
    EXPECT_EQ(Alerts().size(), 1);
}

TEST_F(ChartDropsTest, SourcesThatAreNoneAreNotTaken)
{
    const BMessage before = Settings();
    test::Drop(chart, BMessage(MSG_SOURCE_DROP), kElsewhere);
    BMessage wrong(MSG_SOURCE_DROP);
    wrong.AddString("ValueProvider", "x");
    test::Drop(chart, wrong, kElsewhere);
    test::Drop(chart, SourceDrop({0, -1, 99999}), kElsewhere);
    EXPECT_TRUE(Settings().HasSameData(before));
}

TEST_F(ChartDropsTest, ASourceThatIsSentIsAdded)
{
    // By keyboard, the source list sends its message without a drag.
    BMessage message = SourceDrop({VP_ALL_CPUS});
    chart->MessageReceived(&message);
    EXPECT_EQ(chart->CountValueProviders(), 1);
}

TEST_F(ChartDropsTest, AColourGoesToTheCaptionUnderIt)
{
    AddShownSources(1);
    test::Drop(chart, ColorDrop({250, 1, 2, 255}), onTitle);
    EXPECT_EQ(chart->Settings().title.color, (rgb_color{250, 1, 2, 255}));
    test::Drop(chart, ColorDrop({1, 250, 2, 255}), onValue);
    EXPECT_EQ(chart->Settings().value.color, (rgb_color{1, 250, 2, 255}));
    EXPECT_EQ(chart->Settings().backgroundColor, (rgb_color{0, 0, 0, 0}));
}

TEST_F(ChartDropsTest, AColourGoesToWhatShowsThere)
{
    AddShownSources(2);
    const std::string column = Column(*chart, 150);
    const auto first = static_cast<float>(column.find('0'));
    const auto second = static_cast<float>(column.find('1'));
    test::Drop(chart, ColorDrop({250, 1, 2, 255}), BPoint(150, first));
    EXPECT_EQ(chart->ChartColor(0), (rgb_color{250, 1, 2, 255}));
    test::Drop(chart, ColorDrop({1, 250, 2, 255}), BPoint(150, second));
    EXPECT_EQ(chart->ChartColor(1), (rgb_color{1, 250, 2, 255}));
    test::Drop(chart, ColorDrop({1, 2, 250, 255}), BPoint(150, 1));
    EXPECT_EQ(chart->Settings().backgroundColor, (rgb_color{1, 2, 250, 255}));
    EXPECT_EQ(chart->Picture().LowColor(), (rgb_color{1, 2, 250, 255}));
    EXPECT_EQ(Column(*chart, 150), column);
}

TEST_F(ChartDropsTest, NoTwoThingsGetTheSameColour)
{
    AddShownSources(2);
    const BMessage before = Settings();
    const std::string column = Column(*chart, 150);
    const BPoint onFirst(150, static_cast<float>(column.find('0')));
    const BPoint onBackground(150, 1);
    // Two colours that differ only in alpha look the same.
    rgb_color second = chart->ChartColor(1);
    test::Drop(chart, ColorDrop(second), onFirst);
    second.alpha = 0;
    test::Drop(chart, ColorDrop(second), onFirst);
    test::Drop(chart, ColorDrop(second), onBackground);
    test::Drop(chart, ColorDrop(chart->Picture().LowColor()), onFirst);
    test::Drop(chart, ColorDrop(chart->ChartColor(0)), onBackground);
    EXPECT_TRUE(Settings().HasSameData(before));
}

TEST_F(ChartDropsTest, ABackgroundInTheColourOfASlotWithoutASourceIsTheBackground)
{
    AddShownSources(2);
    const rgb_color unused = chart->ChartColor(2);
    chart->SetBackgroundColor(unused);
    test::Drop(chart, ColorDrop({1, 2, 250, 255}), BPoint(150, 1));
    EXPECT_EQ(chart->ChartColor(2), unused);
    EXPECT_EQ(chart->Settings().backgroundColor, (rgb_color{1, 2, 250, 255}));
    EXPECT_EQ(Shown(150, 1), Word({1, 2, 250, 255}));
}

TEST_F(ChartDropsTest, AColourOnALockedBackgroundUnlocksIt)
{
    AddShownSources(1);
    chart->SetLockBgColor(true);
    test::Drop(chart, ColorDrop({1, 2, 250, 255}), BPoint(150, 1));
    EXPECT_FALSE(chart->Settings().lockBgColor);
    EXPECT_EQ(chart->Picture().LowColor(), (rgb_color{1, 2, 250, 255}));
    EXPECT_EQ(PixelColor(PixelRows(chart->Picture().Bitmap()).At(150, 1)), (rgb_color{1, 2, 250, 255}));
}

TEST_F(ChartDropsTest, AColourOnATransparentBackgroundIsKeptForLater)
{
    AddShownSources(1);
    chart->SetTransparent(true);
    test::Drop(chart, ColorDrop({1, 2, 250, 255}), BPoint(150, 1));
    EXPECT_EQ(chart->Settings().backgroundColor, (rgb_color{1, 2, 250, 255}));
    EXPECT_EQ(chart->Picture().LowColor(), B_TRANSPARENT_COLOR);
}

TEST_F(ChartDropsTest, AColourOnAGaugeGoesToTheSegment)
{
    AddSources(*chart, 2);
    chart->SetShowTitle(false);
    chart->SetMode(kGaugeMode);
    Show(*chart, {.memory = 500, .teams = 500});
    // The gauge's sectors end at 49.5 and 100.
    test::Drop(chart, ColorDrop({250, 1, 2, 255}), BPoint(30, 40));
    EXPECT_EQ(chart->ChartColor(0), (rgb_color{250, 1, 2, 255}));
    test::Drop(chart, ColorDrop({1, 250, 2, 255}), BPoint(90, 40));
    EXPECT_EQ(chart->ChartColor(1), (rgb_color{1, 250, 2, 255}));
    test::Drop(chart, ColorDrop({1, 2, 250, 255}), BPoint(150, 40));
    EXPECT_EQ(chart->Settings().backgroundColor, (rgb_color{1, 2, 250, 255}));
    test::Drop(chart, ColorDrop({1, 250, 2, 255}), BPoint(30, 40));
    EXPECT_EQ(chart->ChartColor(0), (rgb_color{250, 1, 2, 255}));

    chart->SetVertical(true);
    Show(*chart, {.memory = 500, .teams = 500});
    test::Drop(chart, ColorDrop({9, 9, 9, 255}), BPoint(30, 78));
    EXPECT_EQ(chart->ChartColor(0), (rgb_color{9, 9, 9, 255}));
    test::Drop(chart, ColorDrop({8, 8, 8, 255}), BPoint(30, 2));
    EXPECT_EQ(chart->Settings().backgroundColor, (rgb_color{8, 8, 8, 255}));
}

TEST_F(ChartDropsTest, ColoursThatAreNoneAreNotTaken)
{
    AddShownSources(1);
    const BMessage before = Settings();
    BMessage sent = ColorDrop({1, 2, 3, 4});
    chart->MessageReceived(&sent);
    test::Drop(chart, BMessage(B_PASTE), kElsewhere);
    BMessage wrong(B_PASTE);
    wrong.AddInt32("RGBColor", 5);
    test::Drop(chart, wrong, kElsewhere);
    BMessage raw(B_PASTE);
    raw.AddData("RGBColor", B_RAW_TYPE, "abc", 3);
    test::Drop(chart, raw, kElsewhere);
    EXPECT_TRUE(Settings().HasSameData(before));
    // Outside of the picture, as a drop on the very edge of a scaled screen may be.
    test::Drop(chart, ColorDrop({1, 2, 250, 255}), BPoint(-5, 5000));
}

TEST_F(ChartDropsTest, AFontGoesToTheCaptionUnderIt)
{
    AddShownSources(1);
    FFont font(be_plain_font);
    font.SetSize(22);
    BMessage message(kFontDrop);
    AddMessageFont(&message, "font", &font);
    test::Drop(chart, message, onTitle);
    EXPECT_EQ(chart->Settings().title.font.Size(), 22);
    EXPECT_EQ(chart->Settings().value.font.Size(), 15);
    test::Drop(chart, message, onValue);
    EXPECT_EQ(chart->Settings().value.font.Size(), 22);
    EXPECT_TRUE(chart->Bounds().Contains(chart->Captions().Value().drawn));
}

TEST_F(ChartDropsTest, AFontChangesWhatItCarries)
{
    AddShownSources(1);
    FFont font(be_plain_font);
    font.SetSize(22);
    font.SetFace(B_BOLD_FACE);
    font.SetMask(FFont::kFace);
    BMessage message(kFontDrop);
    AddMessageFont(&message, "font", &font);
    test::Drop(chart, message, onTitle);
    EXPECT_EQ(chart->Settings().title.font.Size(), 15);
    EXPECT_EQ(chart->Settings().title.font.Face(), B_BOLD_FACE);
}

TEST_F(ChartDropsTest, FontsThatAreNoneAreNotTaken)
{
    AddShownSources(1);
    const BMessage before = Settings();
    test::Drop(chart, BMessage(kFontDrop), onTitle);
    BMessage wrong(kFontDrop);
    wrong.AddString("font", "x");
    test::Drop(chart, wrong, onTitle);
    FFont huge(be_plain_font);
    huge.SetSize(900);
    BMessage message(kFontDrop);
    AddMessageFont(&message, "font", &huge);
    test::Drop(chart, message, onTitle);
    test::Drop(chart, message, kElsewhere);
    chart->MessageReceived(&message);
    EXPECT_TRUE(Settings().HasSameData(before));
}
