// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Application.h"
#include "kits/application/Message.h"
#include "kits/interface/Window.h"
#include "kits/kernel/Clock.h"
#include "src/chart/ChartView.h"
#include "src/chart/ChartViewHolder.h"
#include "src/chart/PixelRows.h"
#include "src/pages/ChartPreferences.h"
#include "src/sampling/Sysinfo.h"
#include "src/support/MessageCodes.h"
#include "tests/support/GuiTest.h"
#include "tests/support/Samples.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

/// Shared by the tests of charts: samples with chosen values, a clock that stands still, and a chart in a window.

/// A clock that moves only on request.
class StillClock : public kits::ClockSource {
public:
    StillClock() { kits::SetClockSource(this); }
    ~StillClock() override { kits::SetClockSource(nullptr); }
    bigtime_t SystemTime() override { return now; }
    bigtime_t WallTime() override { return 1700000000000000 + now; }
    std::string BootId() override { return ""; }

    bigtime_t now = 1000000000;
};

/// Draws a sample without the pauses between samples that Refresh() makes.
inline void Show(ChartView& chart, const Shares& shares)
{
    const BMessage message = SampleMessage(shares);
    Sysinfo sampler(&message);
    SysinfoNode node(&message);
    ASSERT_EQ(sampler.InitCheck(), B_OK);
    ASSERT_EQ(node.InitCheck(), B_OK);
    if (chart.Settings().mode == kChartMode)
        chart.RefreshChart(&sampler, &node);
    else
        chart.RefreshGauge(&sampler, &node);
}

/// Gives a chart the first @p count of the test's sources.
inline void AddSources(ChartView& chart, int32 count)
{
    for (int32 i = 0; i < count; i++) {
        BMessage archive = SourceArchive(kTestTargets[i]);
        chart.AddValueProvider(&archive, -1);
    }
}

/// Returns one column of a picture, top first, one letter per pixel: '0' to '7' for a source's colour, '.' for the
/// colour to which the chart is cleared, '?' for anything else.
inline std::string Column(const ChartView& chart, int32 x)
{
    PixelRows rows(chart.Picture().Bitmap());
    std::string letters;
    for (int32 y = 0; y < rows.Height(); y++) {
        const rgb_color color = PixelColor(rows.At(x, y));
        char letter = color == chart.Picture().LowColor() ? '.' : '?';
        for (int32 i = 0; i < kMaxSources; i++)
            if (color == chart.ChartColor(i))
                letter = static_cast<char>('0' + i);
        letters.push_back(letter);
    }
    return letters;
}

/// Returns the heights of a picture's columns: how many pixels of each show a source.
inline std::vector<int> Heights(const ChartView& chart)
{
    std::vector<int> heights;
    for (int32 x = 0; x < PixelRows(chart.Picture().Bitmap()).Width(); x++) {
        const std::string column = Column(chart, x);
        heights.push_back(
            static_cast<int>(column.size() - static_cast<size_t>(std::count(column.begin(), column.end(), '.'))));
    }
    return heights;
}

inline constexpr BRect kTestWindow{60, 70, 359, 269};

/// Plays the application: keeps the messages that charts send to it.
class RecordingLooper : public BLooper {
public:
    RecordingLooper() { Run(); }
    void MessageReceived(BMessage* message) override { received.push_back(*message); }

    std::vector<BMessage> received;
};

/// A shown window, with a chart in it after AddChart(), and a clock that stands still.
class ChartWindowTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        UseChartPreferences();
        application = new RecordingLooper();
        be_app_messenger = BMessenger(application);
        window = new BWindow(kTestWindow, "Test", B_TITLED_WINDOW, 0);
        window->Show();
        test::Turn();
    }

    void TearDown() override
    {
        if (window != nullptr)
            window->Quit();
        test::Turn();
        be_app_messenger = BMessenger();
        application->Quit();
    }

    /// Adds a chart without captions at the window's corner; it belongs to the window.
    void AddChart(float width, float height)
    {
        chart = new ChartView();
        chart->SetShowTitle(false);
        chart->SetShowValue(false);
        chart->ResizeTo(width, height);
        window->AddChild(chart);
        test::Turn();
    }

    /// Returns a pixel of the chart's picture on the screen, without alpha.
    uint32 Shown(int32 x, int32 y) const { return test::PixelOf(chart, x, y) & 0xFFFFFF; }

    /// Returns the same for a colour.
    static uint32 Word(rgb_color color) { return PixelWord(color) & 0xFFFFFF; }

    StillClock clock;
    RecordingLooper* application = nullptr;
    BWindow* window = nullptr;
    ChartView* chart = nullptr;
};

/// The same with a holder of charts after AddHolder().
class HolderWindowTest : public ChartWindowTest {
protected:
    /// Adds a holder with the charts of a first start; it belongs to the window.
    void AddHolder(BRect frame)
    {
        holder = new ChartViewHolder(frame);
        window->AddChild(holder);
    }

    ChartViewHolder* holder = nullptr;
};
