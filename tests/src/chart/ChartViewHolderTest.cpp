// SPDX-License-Identifier: MIT
#include "src/chart/ChartViewHolder.h"

#include "kits/application/MainThread.h"
#include "kits/interface/startup/Theme.h"
#include "kits/support/TypeConstants.h"
#include "src/chart/ChartSteps.h"
#include "src/support/MessageCodes.h"
#include "tests/src/chart/ChartTestKit.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMenu>

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

BMessage HolderArchive(int32 charts, BRect rect = BRect(0, 0, 200, 100))
{
    BMessage archive;
    archive.AddRect("Rect", rect);
    for (int32 i = 0; i < charts; i++) {
        BMessage chart;
        chart.AddString("Title", std::to_string(i));
        archive.AddMessage("Chart", &chart);
    }
    return archive;
}

void ExpectBands(const ChartViewHolder& holder)
{
    for (int32 i = 0; i < holder.CountCharts(); i++)
        EXPECT_EQ(holder.ChartAt(i)->Frame(), ChartBand(holder.Bounds(), holder.CountCharts(), i)) << i;
}

} // namespace

TEST(ChartViewHolderTest, ANewHolderHasThreeCharts)
{
    ChartViewHolder holder(BRect(5, 5, 205, 105));
    EXPECT_STREQ(holder.Name(), "Charts");
    EXPECT_EQ(holder.ResizingMode(), static_cast<uint32>(B_FOLLOW_ALL_SIDES));
    ASSERT_EQ(holder.CountCharts(), 3);
    EXPECT_EQ(holder.CountChildren(), 3);
    EXPECT_EQ(holder.ChartAt(0)->Frame(), BRect(0, 0, 200, 33));
    EXPECT_EQ(holder.ChartAt(1)->Frame(), BRect(0, 34, 200, 67));
    EXPECT_EQ(holder.ChartAt(2)->Frame(), BRect(0, 68, 200, 100));
    for (int32 i = 0; i < 3; i++)
        EXPECT_EQ(holder.ChartAt(i)->Owner(), &holder);
    EXPECT_EQ(holder.ChartAt(3), nullptr);
    EXPECT_EQ(holder.ChartAt(-1), nullptr);
}

TEST(ChartViewHolderTest, AnArchiveComesBackInOrder)
{
    BMessage archive = HolderArchive(4);
    ChartViewHolder holder(&archive);
    EXPECT_EQ(holder.Bounds(), BRect(0, 0, 200, 100));
    ASSERT_EQ(holder.CountCharts(), 4);
    for (int32 i = 0; i < 4; i++)
        EXPECT_EQ(holder.ChartAt(i)->Title(), std::to_string(i));
    ExpectBands(holder);

    BMessage written;
    EXPECT_EQ(holder.Archive(&written, true), B_OK);
    BRect rect;
    EXPECT_EQ(written.FindRect("Rect", &rect), B_OK);
    EXPECT_EQ(rect, BRect(0, 0, 200, 100));
    type_code type = 0;
    int32 count = 0;
    EXPECT_EQ(written.GetInfo("Chart", &type, &count), B_OK);
    EXPECT_EQ(type, static_cast<type_code>(B_MESSAGE_TYPE));
    EXPECT_EQ(count, 4);
    EXPECT_EQ(written.CountNames(B_ANY_TYPE), 2);

    ChartViewHolder again(&written);
    BMessage twice;
    again.Archive(&twice, true);
    EXPECT_TRUE(twice.HasSameData(written));
}

TEST(ChartViewHolderTest, ArchivingReplacesTheChartsThatAreThere)
{
    ChartViewHolder holder(BRect(0, 0, 100, 100));
    BMessage archive = HolderArchive(7);
    archive.RemoveName("Rect");
    holder.Archive(&archive, true);
    int32 count = 0;
    archive.GetInfo("Chart", nullptr, &count);
    EXPECT_EQ(count, 3);
}

TEST(ChartViewHolderTest, AnEmptyArchiveGivesAnEmptyHolder)
{
    BMessage archive;
    ChartViewHolder holder(&archive);
    EXPECT_EQ(holder.Bounds(), BRect(0, 0, 100, 100));
    EXPECT_EQ(holder.CountCharts(), 0);
    holder.Rerender();
    holder.ResizeTo(50, 50);
    EXPECT_EQ(holder.Bounds(), BRect(0, 0, 50, 50));
}

TEST(ChartViewHolderTest, SizesThatNoWindowHasAreLeftOut)
{
    for (BRect rect : {BRect(0, 0, NAN, 10), BRect(0, 0, 1e9f, 10), BRect(0, 0, -5, 10)}) {
        BMessage archive = HolderArchive(1, rect);
        ChartViewHolder holder(&archive);
        EXPECT_EQ(holder.Bounds(), BRect(0, 0, 100, 100));
    }
}

TEST(ChartViewHolderTest, LoadingAddsToWhatIsThere)
{
    ChartViewHolder holder(BRect(0, 0, 100, 100));
    BMessage archive = HolderArchive(2);
    holder.LoadPrefsFrom(&archive);
    EXPECT_EQ(holder.CountCharts(), 5);
    ExpectBands(holder);
}

TEST(ChartViewHolderTest, OneChartHasAllOfIt)
{
    BMessage archive = HolderArchive(1);
    ChartViewHolder holder(&archive);
    EXPECT_EQ(holder.ChartAt(0)->Frame(), BRect(0, 0, 200, 100));
}

TEST(ChartViewHolderTest, ResizingLaysOut)
{
    BMessage archive = HolderArchive(3);
    ChartViewHolder holder(&archive);
    holder.ResizeTo(299, 299);
    for (int32 i = 0; i < 3; i++)
        EXPECT_EQ(holder.ChartAt(i)->Frame(),
                  BRect(0, static_cast<float>(100 * i), 299, static_cast<float>(100 * i + 99)));
    // Setting the same size again touches nothing, not even a chart that someone moved.
    holder.ChartAt(0)->MoveTo(7, 7);
    holder.ResizeTo(299, 299);
    EXPECT_EQ(holder.ChartAt(0)->Frame().LeftTop(), BPoint(7, 7));
    holder.Rerender();
    EXPECT_EQ(holder.ChartAt(0)->Frame().LeftTop(), BPoint(0, 0));
}

TEST(ChartViewHolderTest, ARemovedChartIsTheCallers)
{
    BMessage archive = HolderArchive(3);
    ChartViewHolder holder(&archive);
    const std::unique_ptr<ChartView> chart(holder.ChartAt(1));
    holder.RemoveChartView(chart.get());
    EXPECT_EQ(chart->Owner(), nullptr);
    EXPECT_EQ(chart->Parent(), nullptr);
    ASSERT_EQ(holder.CountCharts(), 2);
    EXPECT_STREQ(holder.ChartAt(1)->Title(), "2");
    ExpectBands(holder);
}

TEST(ChartViewHolderTest, RemovingAnothersChartDoesNothing)
{
    BMessage archive = HolderArchive(2);
    ChartViewHolder holder(&archive);
    holder.ChartAt(0)->MoveTo(7, 7);
    ChartView other;
    holder.RemoveChartView(&other);
    holder.RemoveChartView(nullptr);
    EXPECT_EQ(holder.CountCharts(), 2);
    EXPECT_EQ(holder.ChartAt(0)->Frame().LeftTop(), BPoint(7, 7));
}

TEST(ChartViewHolderTest, AnAddedChartIsLaidOutWhenAsked)
{
    BMessage archive = HolderArchive(1);
    ChartViewHolder holder(&archive);
    auto* chart = new ChartView();
    holder.AddChartView(chart);
    EXPECT_EQ(holder.ChartAt(1), chart);
    EXPECT_EQ(chart->Parent(), &holder);
    EXPECT_EQ(chart->Frame(), BRect(0, 0, 100, 30));
    holder.Rerender();
    ExpectBands(holder);
}

TEST(ChartViewHolderTest, AHundredChartsHaveEachTheirBand)
{
    BMessage archive = HolderArchive(100, BRect(0, 0, 300, 150));
    ChartViewHolder holder(&archive);
    ASSERT_EQ(holder.CountCharts(), 100);
    float next = 0;
    for (int32 i = 0; i < 100; i++) {
        EXPECT_EQ(holder.ChartAt(i)->Frame().top, next);
        next = holder.ChartAt(i)->Frame().bottom + 1;
    }
    EXPECT_EQ(next, 151);
}

TEST(ChartViewHolderTest, PausesAllCharts)
{
    ChartViewHolder holder(BRect(0, 0, 100, 100));
    holder.Pause(true);
    for (int32 i = 0; i < 3; i++)
        EXPECT_TRUE(holder.ChartAt(i)->IsPaused());
    holder.Pause(false);
    for (int32 i = 0; i < 3; i++)
        EXPECT_FALSE(holder.ChartAt(i)->IsPaused());
}

TEST(ChartViewHolderTest, AFrameFromAFileIsNotAllocated)
{
    BMessage archive;
    for (int i = 0; i < 50; i++) {
        BMessage chart;
        chart.AddRect("_frame", BRect(0, 0, 8000, 8000));
        archive.AddMessage("Chart", &chart);
    }
    ChartViewHolder holder(&archive);
    EXPECT_EQ(holder.CountCharts(), 50);
    EXPECT_LE(holder.ChartAt(0)->Picture().Bitmap()->BitsLength(), 101 * 101 * 4);
}

TEST(ChartViewHolderTest, WhatIsNoWishIsNotPassedOn)
{
    // In no window, and with fields missing or of the wrong type: nothing happens.
    ChartViewHolder holder(BRect(0, 0, 100, 100));
    BMessage wish(MSG_SET_COLUMN);
    wish.AddFloat("Pos", 20);
    BMessage envelope(MSG_DISTRIBUTE);
    holder.MessageReceived(&envelope);
    envelope.AddMessage("Msg", &wish);
    holder.MessageReceived(&envelope);
    envelope.AddInt32("CView", 1);
    holder.MessageReceived(&envelope);
    envelope.RemoveName("CView");
    envelope.AddPointer("CView", holder.ChartAt(0));
    holder.MessageReceived(&envelope);
    for (int32 i = 0; i < 3; i++)
        EXPECT_EQ(holder.ChartAt(i)->Picture().Column(), 0);
}

class EmptyHolderTest : public ChartWindowTest {
protected:
    void SetUp() override
    {
        ChartWindowTest::SetUp();
        BMessage archive = HolderArchive(0, BRect(0, 0, 250, 179));
        holder = new ChartViewHolder(&archive);
        window->AddChild(holder);
        test::Turn();
    }

    ChartViewHolder* holder = nullptr;
};

namespace {

/// Returns the brightness that the eye sees, 0 to 1.
double Luminance(uint32 pixel)
{
    const auto part = [](uint32 value) {
        const double share = (value & 0xFF) / 255.0;
        return share <= 0.03928 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * part(pixel >> 16) + 0.7152 * part(pixel >> 8) + 0.0722 * part(pixel);
}

double Contrast(double one, double other)
{
    return (std::max(one, other) + 0.05) / (std::min(one, other) + 0.05);
}

double PanelLuminance()
{
    return Luminance(PixelWord(ui_color(B_PANEL_BACKGROUND_COLOR)));
}

/// Returns the contrast between the line and the panel that shows through the view: 1 for none, 21 for black on white.
double ContrastOfHint(const ChartViewHolder* holder)
{
    double most = 1;
    for (const uint32 pixel : test::PixelsOf(holder))
        if (pixel >> 24 == 0xFF)
            most = std::max(most, Contrast(Luminance(pixel), PanelLuminance()));
    return most;
}

} // namespace

TEST_F(EmptyHolderTest, AGreyLineThatTellsWhatToDoIsReadOnALightAndOnADarkDesktop)
{
    EXPECT_EQ(holder->AccessibleValue(), "Click here to add a chart.");
    kits::Theme::Start();
    for (const bool isDark : {false, true}) {
        kits::Theme::SetDesktopIsDark(isDark);
        test::Turn();
        const double text = Luminance(PixelWord(ui_color(B_PANEL_TEXT_COLOR)));
        EXPECT_GT(ContrastOfHint(holder), 4.5) << isDark;
        EXPECT_LT(ContrastOfHint(holder), 0.8 * Contrast(text, PanelLuminance())) << isDark;
    }
    kits::Theme::SetDesktopIsDark(false);
    kits::Theme::Stop();
}

TEST_F(EmptyHolderTest, TheLineGoesWithTheFirstChart)
{
    holder->AddChartView(new ChartView());
    holder->Rerender();
    const std::unique_ptr<ChartView> added(holder->ChartAt(0));
    EXPECT_NE(holder->AccessibleValue(), "Click here to add a chart.");
    holder->RemoveChartView(added.get());
    test::Turn();
    EXPECT_EQ(holder->AccessibleValue(), "Click here to add a chart.");
    EXPECT_GT(ContrastOfHint(holder), 4.5);
}

TEST_F(EmptyHolderTest, AMenuThatIsDismissedAddsNothing)
{
    bool open = false;
    kits::RunOnMainThread([&] {
        open = kits::NestedLoop::Count() == 1;
        kits::NestedLoop::CancelAll();
    });
    holder->MouseDown(BPoint(50, 50));
    EXPECT_TRUE(open);
    EXPECT_EQ(holder->CountCharts(), 0);
}

TEST_F(EmptyHolderTest, TheMenuAddsAChartThatHasAllOfIt)
{
    kits::RunOnMainThread([] {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        ASSERT_EQ(menu->actions().size(), 1);
        EXPECT_EQ(menu->actions().first()->text().remove('&'), "Add new chart");
        menu->setActiveAction(menu->actions().first());
        QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
        QCoreApplication::sendEvent(menu, &enter);
    });
    holder->MouseDown(BPoint(50, 50));
    ASSERT_EQ(holder->CountCharts(), 1);
    EXPECT_EQ(holder->ChartAt(0)->Frame(), holder->Bounds());
    EXPECT_EQ(holder->ChartAt(0)->Owner(), holder);
}

TEST_F(EmptyHolderTest, TheWindowMayGoUnderTheMenu)
{
    window->PostMessage(B_QUIT_REQUESTED);
    const BMessenger messenger(window);
    window = nullptr;
    test::Click(holder, BPoint(50, 50), B_SECONDARY_MOUSE_BUTTON);
    EXPECT_TRUE(test::WaitFor([&] { return !messenger.IsValid(); }));
}
