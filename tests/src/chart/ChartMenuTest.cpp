// SPDX-License-Identifier: MIT
#include "src/chart/ChartMenu.h"

#include "kits/interface/PopUpMenu.h"
#include "src/chart/ChartViewHolder.h"
#include "src/support/ui/SmartWindow.h"
#include "tests/src/chart/ChartTestKit.h"

#include <QApplication>

namespace {

std::string Labels(const BMenu& menu)
{
    std::string labels;
    for (int32 i = 0; i < menu.CountItems(); i++)
        labels += (i > 0 ? "|" : "") + std::string(menu.ItemAt(i)->Label());
    return labels;
}

std::string SourceLabels(const ChartMenu& menu)
{
    return Labels(*menu.Menu()->FindItem("Sources...")->Submenu());
}

class ChartMenuInWindowTest : public HolderWindowTest {
protected:
    void SetUp() override
    {
        HolderWindowTest::SetUp();
        AddHolder(BRect(0, 0, 299, 199));
        chart = holder->ChartAt(1);
        AddSources(*chart, 2);
        test::Turn();
    }

    BPopUpMenu* Menu() const { return chart->Menu()->Menu(); }

    void OpenMenuAt(BPoint where, uint32 buttons = B_SECONDARY_MOUSE_BUTTON)
    {
        test::Click(chart, where, buttons);
        test::Turn();
    }

    /// Chooses it as the user would.
    void Choose(const char* label)
    {
        BMenuItem* item = Menu()->FindItem(label);
        ASSERT_NE(item, nullptr) << label;
        EXPECT_EQ(item->Invoke(), B_OK) << label;
        test::Turn();
    }
};

} // namespace

TEST(ChartMenuTest, AChartInTheApplicationHasAllCommands)
{
    const ChartMenu menu(false);
    EXPECT_EQ(Labels(*menu.Menu()),
              "Preferences...||Add new chart|Delete this chart||Synchronize others|Pause|Sources..."
              "||Save picture\xe2\x80\xa6|Save values\xe2\x80\xa6|Copy to desktop|Go to desktop|Copy settings|Paste");
    EXPECT_NE(menu.Menu()->FindItem(MSG_CHART_PREFS), nullptr);
    EXPECT_NE(menu.Menu()->FindItem(MSG_CHART_ADD), nullptr);
    EXPECT_NE(menu.Menu()->FindItem(MSG_CHART_DELETE), nullptr);
    EXPECT_NE(menu.Menu()->FindItem(MSG_SYNC_OTHERS), nullptr);
    EXPECT_NE(menu.Menu()->FindItem(MSG_CHART_PAUSE), nullptr);
    EXPECT_NE(menu.Menu()->FindItem(MSG_COPY_TO_DESKTOP), nullptr);
}

TEST(ChartMenuTest, AReplicantCanBeReconnected)
{
    const ChartMenu menu(true);
    EXPECT_EQ(Labels(*menu.Menu()),
              "Preferences...||Reconnect|Pause|Sources...||Save picture\xe2\x80\xa6|Save values\xe2\x80\xa6|"
              "Copy settings|Paste|Remove from desktop");
    EXPECT_NE(menu.Menu()->FindItem(MSG_RECONNECT), nullptr);
}

TEST(ChartMenuTest, SourcesComeAndGoByIndex)
{
    ChartMenu menu(false);
    menu.AddSource("one", 0);
    menu.AddSource("three", 1);
    menu.AddSource("two", 1);
    EXPECT_EQ(SourceLabels(menu), "one|two|three");
    BMenu* sources = menu.Menu()->FindItem("Sources...")->Submenu();
    EXPECT_STREQ(sources->SubmenuAt(1)->ItemAt(0)->Label(), "Remove");
    EXPECT_EQ(sources->SubmenuAt(1)->ItemAt(0)->Command(), static_cast<uint32>(MSG_REMOVE_SOURCE));
    EXPECT_EQ(sources->SubmenuAt(1)->ItemAt(1)->Command(), static_cast<uint32>(MSG_PASTE_COLOR));
    EXPECT_EQ(menu.SourceOf(sources->SubmenuAt(2)->ItemAt(0)), 2);
    EXPECT_EQ(menu.SourceOf(sources->SubmenuAt(1)->ItemAt(1)), 1);
    EXPECT_EQ(menu.SourceOf(sources), -1);
    EXPECT_EQ(menu.SourceOf(nullptr), -1);
    menu.RemoveSource(7);
    menu.RemoveSource(1);
    EXPECT_EQ(SourceLabels(menu), "one|three");
    menu.RemoveSource(-1);
    EXPECT_EQ(SourceLabels(menu), "");
}

TEST(ChartMenuTest, DistributionComesWithASeparatorAndGoesWithIt)
{
    ChartMenu menu(true);
    const std::string saving =
        "||Save picture\xe2\x80\xa6|Save values\xe2\x80\xa6|Copy settings|Paste|Remove from desktop";
    const std::string told = "Preferences...||Reconnect|Pause|Sources...";
    menu.Offer(MSG_DISTRIBUTE_VALUE_POS, "Distribute position", true);
    menu.Offer(MSG_DISTRIBUTE_VALUE_POS, "Distribute position", true);
    EXPECT_EQ(Labels(*menu.Menu()), told + "||Distribute position" + saving);
    menu.Offer(MSG_DISTRIBUTE_TITLE_POS, "Distribute pos.", true);
    menu.Offer(MSG_DISTRIBUTE_VALUE_POS, "Distribute position", false);
    EXPECT_EQ(Labels(*menu.Menu()), told + "||Distribute pos." + saving);
    menu.Offer(MSG_DISTRIBUTE_TITLE_POS, "Distribute pos.", false);
    menu.Offer(MSG_DISTRIBUTE_TITLE_POS, "Distribute pos.", false);
    EXPECT_EQ(Labels(*menu.Menu()), told + saving);
}

TEST_F(ChartMenuInWindowTest, ShowsTheSourcesThatTheChartHas)
{
    EXPECT_EQ(SourceLabels(*chart->Menu()), "Used memory|Allocated teams");
    BMessage archive = SourceArchive(VP_ALL_CPUS, VP_EXP_AVERAGE);
    chart->AddValueProvider(&archive, 1);
    EXPECT_EQ(SourceLabels(*chart->Menu()), "Used memory|All CPUs (exp. averaged)|Allocated teams");
    chart->RemoveValueProvider(0);
    EXPECT_EQ(SourceLabels(*chart->Menu()), "All CPUs (exp. averaged)|Allocated teams");
    chart->RemoveValueProvider(-1);
    EXPECT_EQ(SourceLabels(*chart->Menu()), "");
}

TEST_F(ChartMenuInWindowTest, RemovesTheSourceThatWasChosen)
{
    OpenMenuAt(BPoint(50, 40));
    BMenu* sources = Menu()->FindItem("Sources...")->Submenu();
    EXPECT_EQ(sources->SubmenuAt(0)->ItemAt(0)->Invoke(), B_OK);
    test::Turn();
    ASSERT_EQ(chart->CountValueProviders(), 1);
    EXPECT_EQ(chart->ValueProviderAt(0)->Target(), VP_ALLOCATED_TEAMS);
}

TEST_F(ChartMenuInWindowTest, RemovingWithoutKnowingWhatDoesNothing)
{
    BMessage message(MSG_REMOVE_SOURCE);
    chart->MessageReceived(&message);
    message.AddInt32("source", 0);
    chart->MessageReceived(&message);
    message.RemoveName("source");
    message.AddPointer("source", chart);
    chart->MessageReceived(&message);
    EXPECT_EQ(chart->CountValueProviders(), 2);
}

class ChartMenuButtonTest : public ChartMenuInWindowTest, public ::testing::WithParamInterface<uint32> {};

TEST_P(ChartMenuButtonTest, OpensTheMenuUnlessItIsThePrimaryOne)
{
    chart->Menu()->Offer(MSG_DISTRIBUTE_TITLE_POS, "Distribute pos.", true);
    OpenMenuAt(BPoint(250, 40), GetParam());
    // Opening adapts the items and sets their target.
    const bool opens = GetParam() != B_PRIMARY_MOUSE_BUTTON;
    EXPECT_EQ(Menu()->FindItem(MSG_DISTRIBUTE_TITLE_POS) == nullptr, opens);
    EXPECT_EQ(Menu()->FindItem(MSG_CHART_PAUSE)->Messenger() == BMessenger(chart), opens);
}

INSTANTIATE_TEST_SUITE_P(Buttons, ChartMenuButtonTest,
                         ::testing::Values(B_PRIMARY_MOUSE_BUTTON, B_SECONDARY_MOUSE_BUTTON, B_TERTIARY_MOUSE_BUTTON));

TEST_F(ChartMenuInWindowTest, OpensByKeyboard)
{
    chart->ContextMenuRequested(BPoint(100, 20));
    EXPECT_EQ(Menu()->FindItem(MSG_CHART_PAUSE)->Messenger(), BMessenger(chart));
}

TEST_F(ChartMenuInWindowTest, OffersToDistributeTheCaptionUnderThePointer)
{
    Show(*chart, {.memory = 1});
    chart->SetShowValue(true);
    chart->TrackValue(BPoint(200, 30));
    chart->SetTitle("Title");
    const BPoint onTitle(chart->Captions().Title().drawn.left + 2, chart->Captions().Title().drawn.top + 2);
    const BPoint onValue(chart->Captions().Value().drawn.left, chart->Captions().Value().drawn.top + 2);
    chart->ContextMenuRequested(onTitle);
    EXPECT_NE(Menu()->FindItem("Distribute pos."), nullptr);
    EXPECT_EQ(Menu()->FindItem("Distribute position"), nullptr);
    chart->ContextMenuRequested(onValue);
    EXPECT_EQ(Menu()->FindItem("Distribute pos."), nullptr);
    EXPECT_NE(Menu()->FindItem("Distribute position"), nullptr);
    chart->SetShowValue(false);
    chart->ContextMenuRequested(onValue);
    EXPECT_EQ(Menu()->FindItem("Distribute position"), nullptr);
}

TEST_F(ChartMenuInWindowTest, PausesAndGoesOn)
{
    OpenMenuAt(BPoint(50, 40));
    Choose("Pause");
    EXPECT_TRUE(chart->IsPaused());
    EXPECT_TRUE(Menu()->FindItem("Pause")->IsMarked());
    Choose("Pause");
    EXPECT_FALSE(chart->IsPaused());
    EXPECT_FALSE(Menu()->FindItem("Pause")->IsMarked());
    chart->Pause(true);
    EXPECT_TRUE(Menu()->FindItem("Pause")->IsMarked());
}

TEST_F(ChartMenuInWindowTest, AddsAChart)
{
    OpenMenuAt(BPoint(50, 40));
    Choose("Add new chart");
    ASSERT_EQ(holder->CountCharts(), 4);
    EXPECT_STREQ(holder->ChartAt(3)->Title(), ChartView().Title());
    for (int32 i = 0; i < 4; i++)
        EXPECT_EQ(holder->ChartAt(i)->Frame(), ChartBand(holder->Bounds(), 4, i));
}

TEST_F(ChartMenuInWindowTest, DeletesAChart)
{
    ChartView* first = holder->ChartAt(0);
    ChartView* last = holder->ChartAt(2);
    const BMessenger deleted(chart);
    OpenMenuAt(BPoint(50, 40));
    Choose("Delete this chart");
    ASSERT_EQ(holder->CountCharts(), 2);
    EXPECT_EQ(holder->ChartAt(0), first);
    EXPECT_EQ(holder->ChartAt(1), last);
    EXPECT_FALSE(deleted.IsValid());
    EXPECT_EQ(last->Frame(), ChartBand(holder->Bounds(), 2, 1));
}

TEST_F(ChartMenuInWindowTest, DeletingTwiceDeletesOnce)
{
    window->PostMessage(MSG_CHART_DELETE, chart);
    window->PostMessage(MSG_CHART_DELETE, chart);
    test::Turn();
    EXPECT_EQ(holder->CountCharts(), 2);
}

TEST_F(ChartMenuInWindowTest, AChartWithoutAHolderStays)
{
    ChartView alone;
    BMessage before, after;
    EXPECT_EQ(alone.Archive(&before), B_OK);
    for (uint32 what : {MSG_CHART_DELETE, MSG_CHART_ADD, MSG_SYNC_OTHERS, MSG_DISTRIBUTE_TITLE_POS}) {
        BMessage message(what);
        alone.MessageReceived(&message);
    }
    test::Turn();
    EXPECT_EQ(alone.Owner(), nullptr);
    EXPECT_EQ(alone.Archive(&after), B_OK);
    EXPECT_TRUE(after.HasSameData(before));
    EXPECT_EQ(holder->CountCharts(), 3);
}

TEST_F(ChartMenuInWindowTest, TheMenuGoesWithItsChart)
{
    OpenMenuAt(BPoint(50, 40));
    ASSERT_NE(QApplication::activePopupWidget(), nullptr);
    window->PostMessage(MSG_CHART_DELETE, chart);
    test::Turn();
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    EXPECT_EQ(holder->CountCharts(), 2);
}

TEST_F(ChartMenuInWindowTest, TheMenuGoesWithItsWindow)
{
    OpenMenuAt(BPoint(50, 40));
    ASSERT_NE(QApplication::activePopupWidget(), nullptr);
    const BMessenger gone(window);
    window->Quit();
    window = nullptr;
    test::Turn();
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    EXPECT_FALSE(gone.IsValid());
}

TEST_F(ChartMenuInWindowTest, TheOtherChartsGoOnUnderAMenu)
{
    ChartView* other = holder->ChartAt(0);
    AddSources(*other, 1);
    OpenMenuAt(BPoint(50, 40));
    ASSERT_NE(QApplication::activePopupWidget(), nullptr);
    clock.now += 1000000;
    const BMessage sample = SampleMessage({.memory = 500});
    window->PostMessage(&sample, other);
    test::Turn();
    EXPECT_EQ(other->Picture().Column(), kColumnZeroDrawn);
}

TEST_F(ChartMenuInWindowTest, StaysUsableWhenThePreferencesCloseUnderIt)
{
    window->PostMessage(MSG_CHART_PREFS, chart);
    test::Turn();
    ASSERT_NE(chart->PreferencesWindow(), nullptr);
    const BMessenger prefs(chart->PreferencesWindow());
    OpenMenuAt(BPoint(50, 40));
    prefs.SendMessage(B_QUIT_REQUESTED);
    test::Turn();
    EXPECT_FALSE(prefs.IsValid());
    EXPECT_EQ(chart->PreferencesWindow(), nullptr);
    BMessage settings;
    BMessage archive;
    EXPECT_EQ(chart->SaveGeneralPrefsTo(&settings), B_OK);
    EXPECT_EQ(settings.FindMessage("PrefsWindowArchive", &archive), B_OK);
    EXPECT_FALSE(archive.IsEmpty()) << "the window has told the chart where it was";
    Choose("Pause");
    EXPECT_TRUE(chart->IsPaused());
    Choose("Preferences...");
    EXPECT_NE(chart->PreferencesWindow(), nullptr);
}
