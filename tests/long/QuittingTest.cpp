// SPDX-License-Identifier: MIT
#include "kits/interface/TabView.h"
#include "kits/kernel/Threads.h"
#include "src/prefs/store/Preferences.h"
#include "src/sampling/Sysinfo.h"
#include "src/sampling/ValueProvider.h"
#include "src/support/MessageCodes.h"
#include "src/support/Qel.h"
#include "tests/long/LongTest.h"
#include "tests/src/app/AppTest.h"
#include "tests/src/app/AppWindows.h"
#include "tests/support/GuiTest.h"

#include <chrono>
#include <cstdio>
#include <map>
#include <random>
#include <thread>

namespace {

constexpr int kFull = 500;
constexpr int kShort = 100;
constexpr int kLatest = 30000; ///< moment of a request to quit, in microseconds
constexpr const char* kSampler = "Sysinfo sampler";
constexpr const char* kTracker = "MouseTracker";

} // namespace

/// A thread asks the application to quit at a random moment while others are at work: the sampler a hundred times a
/// second, and threads that follow the pointer, write the stores, write a file, or are being replaced.
class QuittingTest : public AppTest {
protected:
    int Below(int end) { return static_cast<int>(fRandom() % static_cast<unsigned>(end)); }
    bool Coin() { return Below(2) == 0; }

    void StartWork(QelApp& app)
    {
        Tabs(app)->Select(1);
        app.Sampler()->SetSamplingDelay(Sysinfo::kMinDelay);
        ChartView* const chart = FirstChart(app);
        if (chart->CountValueProviders() == 0) {
            BMessage source;
            ValueProvider(VP_ALL_CPUS, 0).Archive(&source);
            chart->AddValueProvider(&source, -1);
        }
        chart->SetShowTitle(true);
        chart->SetTitle(("Title " + std::to_string(Below(100))).c_str());
        if (Coin())
            app.Pulse();
        if (Coin())
            chart->SaveFile(fFiles.Path("values.csv"), std::string(100000, 'v'));
        if (Coin())
            app.PostMessage(MSG_OPEN_GLOBAL_PREFS);
        if (Coin())
            app.Window()->PostMessage(MSG_CHART_PREFS, chart);
    }

    /// Call it once the chart has been laid out and drawn: the button stays down, and a thread follows the pointer.
    void TakeTitle(QelApp& app)
    {
        // A window that was asked to close may have gone before the application quits.
        if (app.Window() == nullptr || app.Sampler() == nullptr)
            return;
        ChartView* const chart = FirstChart(app);
        const BRect title = chart->Captions().Title().drawn;
        const BPoint onTitle(title.left + 3, (title.top + title.bottom) / 2);
        test::Release(chart, onTitle); // from the last time
        test::Press(chart, onTitle);
    }

    void GoOn(QelApp& app)
    {
        if (Coin())
            app.Sampler()->SetSamplingDelay(Sysinfo::kMinDelay + Below(1000));
        test::MoveTo(FirstChart(app), BPoint(static_cast<float>(Below(200)), static_cast<float>(Below(50))));
    }

    /// Asks the application to quit once, or the window to close, or both.
    void Ask(int after, int how)
    {
        std::this_thread::sleep_for(std::chrono::microseconds(after));
        for (auto& [worker, met] : fMet)
            met += find_thread(worker) >= 0 ? 1 : 0;
        const BMessage request(B_QUIT_REQUESTED);
        if (how != 1)
            be_app_messenger.SendMessage(&request);
        if (how != 0)
            fWindow.SendMessage(&request);
    }

    void RunOnce()
    {
        std::thread asker;
        Run({[&](QelApp& app) {
                 StartWork(app);
                 fWindow = BMessenger(app.Window());
                 asker = std::thread([this, after = Below(kLatest), how = Below(3)] { Ask(after, how); });
             },
             [this](QelApp& app) { TakeTitle(app); },
             [this](QelApp& app) {
                 // Until it quits.
                 Await([this, &app] {
                     if (app.Window() != nullptr && app.Sampler() != nullptr)
                         GoOn(app);
                     return false;
                 });
             }});
        asker.join();
        Finish();
    }

    /// No worker is left, and the stores are whole.
    void Check()
    {
        EXPECT_EQ(fConfig.Names(),
                  (std::set<std::string>{"x-vnd.kvt-Qel.boot", "x-vnd.kvt-Qel.common", "x-vnd.kvt-Qel.user"}));
        const Preferences user(signature, false, true);
        BMessage window;
        BMessage charts;
        ASSERT_EQ(user.FindMessage("MainWindow", &window), B_OK);
        ASSERT_EQ(window.FindMessage("ChartViewHolder", &charts), B_OK);
        type_code type = 0;
        int32 count = 0;
        EXPECT_EQ(charts.GetInfo("Chart", &type, &count), B_OK);
        EXPECT_EQ(count, 3);
        const Preferences common(signature, true, true);
        int32 boots = 0;
        EXPECT_EQ(common.FindInt32("BootCount", &boots), B_OK);
        EXPECT_EQ(boots, 1);
    }

    std::mt19937 fRandom{17};
    TempFolder fFiles;
    BMessenger fWindow;
    /// How many requests came while a thread of this name existed. Those that write are quick.
    std::map<const char*, int> fMet{{kSampler, 0}, {kTracker, 0}, {"Store writer", 0}, {"Chart saving", 0}};
};

TEST_F(QuittingTest, EndsAtAnyMomentWithWorkersRunning)
{
    const int times = LongTest::IsFull() ? kFull : kShort;
    for (int turn = 0; turn < times; turn++) {
        SCOPED_TRACE(turn);
        RunOnce();
        Check();
        if (HasFailure())
            return;
    }
    // The sampler is replaced now and then, and a request may come before the chart is drawn.
    EXPECT_GT(fMet[kSampler], 0);
    EXPECT_GT(fMet[kTracker], 0);
    if (LongTest::IsFull()) {
        std::printf("quit %d times\n", times);
        for (const auto& [worker, met] : fMet)
            std::printf("beside %s: %d\n", worker, met);
    }
}
