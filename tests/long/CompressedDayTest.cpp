// SPDX-License-Identifier: MIT
#include "kits/application/Message.h"
#include "kits/kernel/Clock.h"
#include "tests/long/LongTest.h"
#include "tests/support/GuiTest.h"

#include <atomic>
#include <functional>
#include <random>

namespace {

constexpr bigtime_t kDelay = 200000;
constexpr int64 kFirstMinute = 60 * 1000000 / kDelay;
constexpr int64 kFull = 1000000;
constexpr int64 kShort = 3000;
/// Settings change now and then; this many samples lie between changes on average.
constexpr int kSamplesPerChange = 10;
/// The growth that the caches of texts and fonts may show after the first minute.
constexpr int64 kAllowance = 3 * 1024 * 1024;

/// A clock that the test moves; the sampler's thread reads it too.
class DayClock : public kits::ClockSource {
public:
    DayClock() { kits::SetClockSource(this); }
    ~DayClock() override { kits::SetClockSource(nullptr); }
    bigtime_t SystemTime() override { return fNow; }
    bigtime_t WallTime() override { return 1700000000000000 + fNow; }
    std::string BootId() override { return ""; }
    void Advance(bigtime_t time) { fNow += time; }

private:
    std::atomic<bigtime_t> fNow = 1000000000;
};

} // namespace

/// Samples as fast as the machine can take them, on a clock that jumps from one to the next, while the user changes
/// everything that can be changed.
class CompressedDayTest : public LongTest {
protected:
    int32 Below(int32 end) { return static_cast<int32>(fRandom() % static_cast<uint32>(end)); }
    float Share() { return static_cast<float>(Below(1001)) / 1000; }
    bool Coin() { return Below(2) == 0; }
    rgb_color Color() { return make_color(Byte(), Byte(), Byte()); }
    ChartView& AnyChart() { return *fHolder->ChartAt(Below(fHolder->CountCharts())); }

    void ChangeSomething()
    {
        const std::function<void()> changes[] = {
            [this] { AnyChart().SetMode(static_cast<int16>(1 + Below(2))); },
            [this] { AnyChart().SetChartType(static_cast<int16>(1 + Below(3))); },
            [this] { AnyChart().SetVertical(Coin()); },
            [this] { AnyChart().SetPageSize(Share()); },
            [this] { AnyChart().SetShowBorder(Coin()); },
            [this] { AnyChart().SetShowTitle(Coin()); },
            [this] { AnyChart().SetShowValue(Coin()); },
            [this] { AnyChart().SetTransparent(Coin()); },
            [this] { AnyChart().SetChartColor(Color(), Below(kMaxSources)); },
            [this] { AnyChart().SetBackgroundColor(Color()); },
            [this] { AnyChart().SetValueColor(Color()); },
            [this] { AnyChart().SetTitleAAValue(Share()); },
            [this] { AnyChart().SetSkipValue(static_cast<int16>(Below(3))); },
            [this] { AnyChart().SetTitle(("Chart " + std::to_string(Below(1000))).c_str()); },
            [this] { ChangeFont(); },
            [this] { ChangeSources(); },
            [this] { CopySettings(); },
            [this] { ReplaceChart(); },
            [this] { fHolder->ResizeTo(static_cast<float>(100 + Below(300)), static_cast<float>(100 + Below(400))); },
            [this] { fSampler->SetNodesToKeep(static_cast<int16>(2 + Below(30))); },
            [this] { fSampler->SetSamplingDelay(kDelay + Below(2)); },
        };
        changes[Below(static_cast<int32>(std::size(changes)))]();
    }

    /// Restores the initial state, so that memory can be compared.
    void PutBack()
    {
        fSampler->SetNodesToKeep(10);
        while (fHolder->CountCharts() > 0) {
            ChartView* const chart = fHolder->ChartAt(0);
            fHolder->RemoveChartView(chart);
            delete chart;
        }
        fHolder->ResizeTo(400, 500);
        for (int32 i = 0; i < kCharts; i++)
            AddChart();
        for (int i = 0; i < 100; i++)
            TakeSample();
    }

    void TakeSample()
    {
        fClock.Advance(kDelay);
        fSampler->Sample();
        test::Turn();
    }

    std::mt19937 fRandom{7};

private:
    uint8 Byte() { return static_cast<uint8>(Below(256)); }

    void ChangeFont()
    {
        FFont font;
        font.SetSize(static_cast<float>(6 + Below(20)));
        AnyChart().SetValueFont(&font);
        AnyChart().SetTitleFont(&font);
    }

    void ChangeSources()
    {
        ChartView& chart = AnyChart();
        if (Coin()) {
            BMessage source;
            ValueProvider(static_cast<vptarget_t>(VP_USED_MEMORY), Below(4)).Archive(&source);
            chart.AddValueProvider(&source, Below(3) - 1);
        } else if (chart.CountValueProviders() > 1) {
            chart.RemoveValueProvider(Below(chart.CountValueProviders()));
        }
    }

    void CopySettings()
    {
        BMessage settings;
        AnyChart().SavePrefsTo(&settings);
        AnyChart().LoadPrefsFrom(&settings);
    }

    void ReplaceChart()
    {
        ChartView& chart = AnyChart();
        fHolder->RemoveChartView(&chart);
        delete &chart;
        AddChart();
    }

    DayClock fClock;
};

TEST_F(CompressedDayTest, EndsWithTheMemoryOfItsFirstMinute)
{
    const int64 samples = IsFull() ? kFull : kShort;
    Memory first;
    for (int64 i = 0; i < samples; i++) {
        if (i == kFirstMinute) {
            PutBack();
            first = MeasureMemory();
        }
        TakeSample();
        if (Below(kSamplesPerChange) == 0)
            ChangeSomething();
    }
    ASSERT_EQ(fHolder->CountCharts(), kCharts);
    // The last round still reached the charts.
    PutBack();
    for (int32 i = 0; i < kCharts; i++)
        EXPECT_GT(fHolder->ChartAt(i)->Picture().Column(), 0) << i;

    const Memory last = MeasureMemory();
    RecordProperty("used_first", std::to_string(first.used));
    RecordProperty("used_last", std::to_string(last.used));
    RecordProperty("resident_first", std::to_string(first.resident));
    RecordProperty("resident_last", std::to_string(last.resident));
    if (IsFull())
        std::printf("in use: %ld kB after the first minute, %ld kB at the end; resident: %ld kB, %ld kB\n",
                    static_cast<long>(first.used / 1024), static_cast<long>(last.used / 1024),
                    static_cast<long>(first.resident / 1024), static_cast<long>(last.resident / 1024));
    if (MemoryCounts()) {
        EXPECT_LT(last.used, first.used + kAllowance);
        EXPECT_LT(last.resident, first.resident + 2 * kAllowance);
    }
}
