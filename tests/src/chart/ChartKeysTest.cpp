// SPDX-License-Identifier: MIT
#include "kits/interface/Clipboard.h"
#include "kits/interface/Menu.h"
#include "kits/interface/MenuItem.h"
#include "kits/interface/PopUpMenu.h"
#include "src/chart/ChartMenu.h"
#include "src/chart/ChartViewHolder.h"
#include "src/support/ColorMessage.h"
#include "tests/src/chart/ChartTestKit.h"

#include <QApplication>
#include <QClipboard>
#include <QMimeData>
#include <QWidget>

// Actions on a chart that are usually done by mouse, done by keyboard.

namespace {

class ChartKeysTest : public HolderWindowTest {
protected:
    void SetUp() override
    {
        HolderWindowTest::SetUp();
        QGuiApplication::clipboard()->clear();
        AddHolder(BRect(0, 0, 250, 179));
        window->Activate();
        chart = holder->ChartAt(0);
        chart->SetTitle("Title");
        AddSources(*chart, 2);
        BMessage archive;
        const BMessage caption = SourceArchive(VP_ALLOCATED_TEAMS);
        archive.AddMessage("ValueVP", &caption);
        chart->LoadPrefsFrom(&archive);
        chart->TrackTitle(BPoint(20, 20));
        chart->TrackValue(BPoint(120, 40));
        Show(*chart, {.memory = 250, .teams = 250});
        chart->MakeFocus();
        test::Turn();
    }

    void Press(char key, uint32 modifiers = 0)
    {
        test::Key(window, key, modifiers);
        test::Turn();
    }

    void Copy(rgb_color color)
    {
        class Swatch : public BView {
        public:
            explicit Swatch(rgb_color color)
                : BView(BRect(0, 0, 9, 9), "", B_FOLLOW_NONE, 0)
                , fColor(color)
            {
            }
            bool CopyRequested(BMessage* message) override
            {
                MakeColorMessage(message, fColor);
                return true;
            }
            rgb_color fColor;
        } swatch(color);
        EXPECT_TRUE(kits::CopyFrom(&swatch));
    }

    /// Returns whether the caption is marked as the selected one.
    bool IsMarked(const BRect& caption) const
    {
        const auto x = static_cast<int32>(caption.left);
        const auto y = static_cast<int32>(caption.top);
        return Shown(x, y) == Word(ui_color(B_KEYBOARD_NAVIGATION_COLOR));
    }
};

} // namespace

TEST_F(ChartKeysTest, EnterChoosesTheCaptionsOneAfterTheOther)
{
    EXPECT_FALSE(IsMarked(chart->Captions().Title().drawn));
    Press(B_ENTER);
    EXPECT_TRUE(IsMarked(chart->Captions().Title().drawn));
    EXPECT_FALSE(IsMarked(chart->Captions().Value().drawn));
    Press(B_ENTER);
    EXPECT_FALSE(IsMarked(chart->Captions().Title().drawn));
    EXPECT_TRUE(IsMarked(chart->Captions().Value().drawn));
    Press(B_ENTER);
    EXPECT_FALSE(IsMarked(chart->Captions().Title().drawn));
    EXPECT_FALSE(IsMarked(chart->Captions().Value().drawn));
}

TEST_F(ChartKeysTest, OnlyWhatShowsCanBeChosen)
{
    chart->SetShowTitle(false);
    Press(B_ENTER);
    EXPECT_TRUE(IsMarked(chart->Captions().Value().drawn));
    chart->SetShowValue(false);
    Press(B_RIGHT_ARROW);
    EXPECT_EQ(chart->Settings().value.where, BPoint(120, 40));
    Press(B_ENTER);
    Press(B_RIGHT_ARROW);
    EXPECT_EQ(chart->Settings().value.where, BPoint(120, 40));
    EXPECT_EQ(chart->Settings().title.where, BPoint(20, 20));
}

TEST_F(ChartKeysTest, ArrowsMoveTheChosenCaption)
{
    Press(B_RIGHT_ARROW);
    EXPECT_EQ(chart->Settings().title.where, BPoint(20, 20));
    Press(B_ENTER);
    Press(B_RIGHT_ARROW);
    Press(B_RIGHT_ARROW);
    Press(B_DOWN_ARROW);
    EXPECT_EQ(chart->Settings().title.where, BPoint(22, 21));
    Press(B_RIGHT_ARROW, B_SHIFT_KEY);
    Press(B_DOWN_ARROW, B_SHIFT_KEY);
    EXPECT_EQ(chart->Settings().title.where, BPoint(32, 31));
    Press(B_LEFT_ARROW);
    Press(B_UP_ARROW);
    EXPECT_EQ(chart->Settings().title.where, BPoint(31, 30));
    EXPECT_EQ(chart->Settings().value.where, BPoint(120, 40));
    // It stays within the chart, as it does under the mouse.
    for (int i = 0; i < 10; i++)
        Press(B_LEFT_ARROW, B_SHIFT_KEY);
    EXPECT_EQ(chart->Settings().title.where.x, 1);
}

TEST_F(ChartKeysTest, WhereTheCaptionWasTheChartShowsAgain)
{
    const std::vector<uint32> before = test::PixelsOf(chart);
    Press(B_ENTER);
    Press(B_RIGHT_ARROW, B_SHIFT_KEY);
    EXPECT_NE(test::PixelsOf(chart), before);
    Press(B_ESCAPE);
    EXPECT_EQ(chart->Settings().title.where, BPoint(20, 20));
    EXPECT_EQ(test::PixelsOf(chart), before);
}

TEST_F(ChartKeysTest, WithoutTheFocusNothingIsChosen)
{
    Press(B_ENTER);
    holder->ChartAt(1)->MakeFocus();
    test::Turn();
    EXPECT_FALSE(IsMarked(chart->Captions().Title().drawn));
    chart->MakeFocus();
    test::Turn();
    Press(B_RIGHT_ARROW);
    EXPECT_EQ(chart->Settings().title.where, BPoint(20, 20));
    Press(B_ENTER);
    EXPECT_TRUE(IsMarked(chart->Captions().Title().drawn));
    test::Click(chart, BPoint(200, 40));
    test::Turn();
    EXPECT_FALSE(IsMarked(chart->Captions().Title().drawn));
}

TEST_F(ChartKeysTest, TheMenuOffersToDistributeThePlaceOfTheChosenCaption)
{
    Press(B_ENTER);
    chart->ContextMenuRequested(BPoint(125, 30));
    EXPECT_NE(chart->Menu()->Menu()->FindItem(MSG_DISTRIBUTE_TITLE_POS), nullptr);
    EXPECT_EQ(chart->Menu()->Menu()->FindItem(MSG_DISTRIBUTE_VALUE_POS), nullptr);
    if (QWidget* menu = QApplication::activePopupWidget())
        menu->close();
    test::Turn();
}

TEST_F(ChartKeysTest, SettingsAreCopiedFromChartToChart)
{
    chart->SetBackgroundColor({1, 2, 3, 255});
    Press('c', B_COMMAND_KEY);
    ChartView* other = holder->ChartAt(2);
    other->MakeFocus();
    test::Turn();
    Press('v', B_COMMAND_KEY);
    EXPECT_EQ(std::string(other->Title()), "Title");
    EXPECT_EQ(other->Settings().backgroundColor, chart->Settings().backgroundColor);
    EXPECT_EQ(other->Settings().title.where, BPoint(20, 20));
    ASSERT_EQ(other->CountValueProviders(), 2);
    EXPECT_EQ(other->ValueProviderAt(1)->Target(), VP_ALLOCATED_TEAMS);
    EXPECT_EQ(std::string(holder->ChartAt(1)->Title()).substr(0, 4), "Def.");
}

TEST_F(ChartKeysTest, TheItemsOfTheMenuDoTheSame)
{
    for (const uint32 command : {MSG_COPY_SETTINGS, MSG_PASTE}) {
        BMessage message(command);
        holder->ChartAt(command == MSG_COPY_SETTINGS ? 0 : 1)->MessageReceived(&message);
        test::Turn();
    }
    EXPECT_EQ(std::string(holder->ChartAt(1)->Title()), "Title");
}

TEST_F(ChartKeysTest, AColourGoesToTheChosenCaptionElseToTheBackground)
{
    const rgb_color source = chart->ChartColor(0);
    Copy({10, 200, 30, 255});
    Press(B_ENTER);
    Press('v', B_COMMAND_KEY);
    EXPECT_EQ(chart->Settings().title.color, make_color(10, 200, 30));
    Copy({10, 30, 200, 255});
    Press(B_ENTER);
    Press('v', B_COMMAND_KEY);
    EXPECT_EQ(chart->Settings().value.color, make_color(10, 30, 200));
    Copy({20, 0, 0, 255});
    Press(B_ENTER);
    Press('v', B_COMMAND_KEY);
    EXPECT_EQ(chart->Settings().backgroundColor, make_color(20, 0, 0));
    EXPECT_EQ(chart->Settings().title.color, make_color(10, 200, 30));
    EXPECT_EQ(chart->ChartColor(0), source);
}

TEST_F(ChartKeysTest, InAGaugeTooAColourGoesToTheBackground)
{
    chart->SetMode(kGaugeMode);
    Show(*chart, {.memory = 500, .teams = 250});
    const rgb_color source = chart->ChartColor(0);
    Copy({20, 0, 0, 255});
    Press('v', B_COMMAND_KEY);
    EXPECT_EQ(chart->Settings().backgroundColor, make_color(20, 0, 0));
    EXPECT_EQ(chart->ChartColor(0), source);
}

TEST_F(ChartKeysTest, EverySourceTakesAColourByItsMenu)
{
    const BMenu* sources = chart->Menu()->Menu()->FindItem("Sources...")->Submenu();
    ASSERT_EQ(sources->CountItems(), 2);
    chart->ContextMenuRequested(BPoint(125, 30));
    QApplication::activePopupWidget()->close();
    test::Turn();
    BMenuItem* paste = sources->SubmenuAt(1)->ItemAt(1);
    Copy({10, 200, 30, 255});
    EXPECT_EQ(paste->Invoke(), B_OK);
    test::Turn();
    EXPECT_EQ(chart->ChartColor(1), make_color(10, 200, 30));
    // Refused as a drop would be: the other source has this colour.
    Copy(chart->ChartColor(0));
    EXPECT_EQ(paste->Invoke(), B_OK);
    test::Turn();
    EXPECT_EQ(chart->ChartColor(1), make_color(10, 200, 30));
    // No colour.
    QGuiApplication::clipboard()->setText("text");
    EXPECT_EQ(paste->Invoke(), B_OK);
    BMessage message(MSG_PASTE_COLOR);
    chart->MessageReceived(&message);
    test::Turn();
    EXPECT_EQ(chart->ChartColor(1), make_color(10, 200, 30));
}

TEST_F(ChartKeysTest, TextIsPastedOnTheTitleAlone)
{
    QGuiApplication::clipboard()->setText("From an editor");
    Press('v', B_COMMAND_KEY);
    EXPECT_STREQ(chart->Title(), "Title");
    Press(B_ENTER);
    Press('v', B_COMMAND_KEY);
    EXPECT_STREQ(chart->Title(), "From an editor");
}

TEST_F(ChartKeysTest, AnEmptyHolderOffersANewChart)
{
    while (holder->CountCharts() > 0) {
        ChartView* last = holder->ChartAt(0);
        holder->RemoveChartView(last);
        delete last;
    }
    chart = nullptr;
    test::Turn();
    EXPECT_NE(holder->Flags() & B_NAVIGABLE, 0u);
    holder->MakeFocus();
    test::Turn();
    EXPECT_EQ(test::PixelOf(holder, 0, 0) & 0xFFFFFF, Word(ui_color(B_KEYBOARD_NAVIGATION_COLOR)));
    holder->MakeFocus(false);
    test::Turn();
    EXPECT_EQ(test::PixelOf(holder, 0, 0), 0u);
    holder->AddChartView(new ChartView());
    EXPECT_EQ(holder->Flags() & B_NAVIGABLE, 0u);
}
