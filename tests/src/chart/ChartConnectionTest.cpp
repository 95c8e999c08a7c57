// SPDX-License-Identifier: MIT
#include "kits/support/TypeConstants.h"
#include "src/chart/ChartViewHolder.h"
#include "tests/src/chart/ChartTestKit.h"

// How charts register for samples, and which samples they take.

namespace {

struct Registration {
    uint32 what;
    BMessenger messenger;
};

class ChartConnectionTest : public ChartWindowTest {
protected:
    std::vector<Registration> Registrations()
    {
        test::Turn();
        std::vector<Registration> found;
        for (const BMessage& message : application->received) {
            BMessenger messenger;
            if ((message.what == MSG_CONNECT || message.what == MSG_DISCONNECT) &&
                message.FindMessenger("Messenger", &messenger) == B_OK)
                found.push_back({message.what, messenger});
        }
        application->received.clear();
        return found;
    }
};

} // namespace

TEST_F(ChartConnectionTest, AnAttachedChartRegisters)
{
    AddChart(100, 30);
    const std::vector<Registration> found = Registrations();
    ASSERT_FALSE(found.empty());
    for (const Registration& registration : found) {
        EXPECT_EQ(registration.what, MSG_CONNECT);
        EXPECT_EQ(registration.messenger, BMessenger(chart));
    }
}

TEST_F(ChartConnectionTest, APausedChartUnregisters)
{
    AddChart(100, 30);
    Registrations();
    chart->Pause(true);
    chart->Pause(true);
    std::vector<Registration> found = Registrations();
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0].what, MSG_DISCONNECT);
    EXPECT_EQ(found[0].messenger, BMessenger(chart));
    chart->Pause(false);
    found = Registrations();
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0].what, MSG_CONNECT);
}

TEST_F(ChartConnectionTest, ReconnectingRegistersAgain)
{
    AddChart(100, 30);
    Registrations();
    window->PostMessage(MSG_RECONNECT, chart);
    const std::vector<Registration> found = Registrations();
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0].what, MSG_CONNECT);
}

TEST_F(ChartConnectionTest, ADeletedChartUnregistersUnderTheSameName)
{
    AddChart(100, 30);
    const BMessenger messenger(chart);
    Registrations();
    chart->RemoveSelf();
    delete chart;
    chart = nullptr;
    const std::vector<Registration> found = Registrations();
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0].what, MSG_DISCONNECT);
    EXPECT_EQ(found[0].messenger, messenger);
}

TEST_F(ChartConnectionTest, AHolderRegistersAllItsChartsWhileItShows)
{
    auto* holder = new ChartViewHolder(BRect(0, 0, 100, 100));
    holder->ChartAt(1)->Pause(true);
    Registrations();
    window->AddChild(holder);
    std::vector<Registration> found = Registrations();
    for (int32 i = 0; i < 3; i++) {
        // A paused one too: it takes part again as soon as it is told to.
        EXPECT_TRUE(std::any_of(found.begin(), found.end(), [&](const Registration& registration) {
            return registration.what == MSG_CONNECT && registration.messenger == BMessenger(holder->ChartAt(i));
        })) << i;
    }
    std::vector<BMessenger> messengers;
    for (int32 i = 0; i < 3; i++)
        messengers.emplace_back(holder->ChartAt(i));
    holder->RemoveSelf();
    found = Registrations();
    ASSERT_EQ(found.size(), 3u);
    for (size_t i = 0; i < 3; i++) {
        EXPECT_EQ(found[i].what, MSG_DISCONNECT);
        EXPECT_EQ(found[i].messenger, messengers[i]);
    }
    delete holder;
}

TEST_F(ChartConnectionTest, TakesASampleOfAnotherProcess)
{
    AddChart(100, 30);
    AddSources(*chart, 1);
    clock.now += 1000000;
    BMessage sample = SampleMessage({.memory = 500});
    chart->MessageReceived(&sample);
    EXPECT_EQ(chart->Picture().Column(), kColumnZeroDrawn);
    EXPECT_GT(Heights(*chart)[0], 1);
}

TEST_F(ChartConnectionTest, TakesTheNewestSampleOfItsOwnSampler)
{
    AddChart(100, 30);
    AddSources(*chart, 1);
    clock.now += 1000000;
    Sysinfo sampler(10);
    sampler.Attach(new SysinfoNode());
    BMessage sample(MSG_SYSINFO_SAMPLE);
    sample.AddPointer("Sysinfo*", &sampler);
    // Not from the application's sampler: it may be gone already.
    chart->MessageReceived(&sample);
    EXPECT_EQ(chart->Picture().Column(), 0);
    application_sampler = &sampler;
    chart->MessageReceived(&sample);
    EXPECT_EQ(chart->Picture().Column(), kColumnZeroDrawn);
    application_sampler = nullptr;
}

TEST_F(ChartConnectionTest, SamplesThatAreNoneChangeNothing)
{
    AddChart(100, 30);
    AddSources(*chart, 1);
    clock.now += 1000000;
    const BMessage whole = SampleMessage({.memory = 500});
    for (const char* missing : {kSysinfoBodyField.Name(), kNodeBodyField.Name()}) {
        BMessage sample(whole);
        sample.RemoveName(missing);
        chart->MessageReceived(&sample);
        sample.AddString(missing, "of another type");
        chart->MessageReceived(&sample);
        sample.RemoveName(missing);
        sample.AddData(missing, B_RAW_TYPE, "short", 5);
        chart->MessageReceived(&sample);
    }
    BMessage pointer(MSG_SYSINFO_SAMPLE);
    pointer.AddPointer("Sysinfo*", nullptr);
    chart->MessageReceived(&pointer);
    EXPECT_EQ(chart->Picture().Column(), 0);
}

TEST_F(ChartConnectionTest, NoTwoSamplesAreDrawnWithinTwentyMilliseconds)
{
    AddChart(100, 30);
    AddSources(*chart, 1);
    BMessage sample = SampleMessage({.memory = 500});
    clock.now += 20001;
    chart->MessageReceived(&sample);
    EXPECT_EQ(chart->Picture().Column(), kColumnZeroDrawn);
    clock.now += 20000;
    chart->MessageReceived(&sample);
    EXPECT_EQ(chart->Picture().Column(), kColumnZeroDrawn);
    clock.now += 1;
    chart->MessageReceived(&sample);
    EXPECT_EQ(chart->Picture().Column(), 1);
}

TEST_F(ChartConnectionTest, DrawsEveryNthSample)
{
    AddChart(100, 30);
    AddSources(*chart, 1);
    chart->SetSkipValue(2);
    BMessage sample = SampleMessage({.memory = 500});
    std::vector<float> columns;
    for (int i = 0; i < 7; i++) {
        clock.now += 1000000;
        chart->MessageReceived(&sample);
        columns.push_back(chart->Picture().Column());
    }
    EXPECT_EQ(columns, (std::vector<float>{0, 0, kColumnZeroDrawn, kColumnZeroDrawn, kColumnZeroDrawn, 1, 1}));
}

TEST_F(ChartConnectionTest, APausedChartDrawsNothing)
{
    AddChart(100, 30);
    AddSources(*chart, 1);
    chart->Pause(true);
    clock.now += 1000000;
    BMessage sample = SampleMessage({.memory = 500});
    chart->MessageReceived(&sample);
    EXPECT_EQ(chart->Picture().Column(), 0);
}

TEST(ChartConnectionTestNoWindow, AChartInNoWindowDrawsNothing)
{
    StillClock clock;
    ChartView chart;
    AddSources(chart, 1);
    clock.now += 1000000;
    BMessage sample = SampleMessage({.memory = 500});
    chart.MessageReceived(&sample);
    EXPECT_EQ(chart.Picture().Column(), 0);
}
