// SPDX-License-Identifier: MIT
#include "kits/application/Roster.h"
#include "kits/interface/PopUpMenu.h"
#include "kits/interface/TabView.h"
#include "src/chart/ChartMenu.h"
#include "src/sampling/ServerConnection.h"
#include "src/support/Qel.h"
#include "src/support/ui/SmartWindow.h"
#include "tests/src/chart/ChartTestKit.h"
#include "tests/support/BoundProcess.h"
#include "tests/support/RuntimeFolder.h"
#include "tests/support/TempFolder.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>

#include <sys/stat.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <thread>

// A chart outside the application: its connection, its corner, its menu.

using Phase = ConnectionState::Phase;

namespace {

class ReplicantTest : public ChartWindowTest {
protected:
    void SetUp() override
    {
        ChartWindowTest::SetUp();
        path = getenv("PATH");
        setenv("PATH", folder.Path().c_str(), 1);
    }

    void TearDown() override
    {
        EndServer();
        for (QWidget* alert : Alerts())
            alert->close();
        ChartWindowTest::TearDown();
        setenv("PATH", path.c_str(), 1);
    }

    /// Makes it possible to start the application from now on: a sampler without windows.
    void InstallServer()
    {
        test::NameTest();
        // Closes the test's output, so that a reader of that output does not wait for a server that is left over.
        folder.Put("qel", "#!/bin/sh\nexec " SAMPLING_SERVER " " + std::string(signature) + " 10000 >/dev/null 2>&1\n");
        chmod(folder.Path("qel").c_str(), 0700);
    }

    static team_id ServerTeam() { return be_roster->TeamFor(signature); }

    static void EndServer()
    {
        for (team_id team; (team = ServerTeam()) >= 0;) {
            kill(team, SIGKILL);
            test::WaitFor([team] { return ServerTeam() != team; });
        }
    }

    void AddReplicant(float width = 100, float height = 60)
    {
        ChartView original;
        original.SetShowTitle(false);
        original.SetShowValue(false);
        original.ResizeTo(width, height);
        AddSources(original, 1);
        BMessage archive;
        ASSERT_EQ(original.Archive(&archive), B_OK);
        chart = ChartView::Instantiate(&archive);
        ASSERT_NE(chart, nullptr);
        ASSERT_TRUE(chart->IsReplicant());
        window->AddChild(chart);
    }

    bool AwaitPhase(Phase phase)
    {
        return test::WaitFor([this, phase] { return chart->Connection().Server()->Phase() == phase; });
    }

    /// Returns whether samples come and are drawn.
    bool AwaitColumn()
    {
        const float before = chart->Picture().Column();
        return test::WaitFor([this, before] {
            // The time-outs of a start must not be over before it has begun. Afterwards only the chart looks at the
            // clock, and draws no sample that comes too soon after another.
            if (chart->Connection().Server()->Phase() == Phase::kConnected)
                clock.now += 20001;
            return chart->Picture().Column() != before;
        });
    }

    static int32 AskServer(const char* name)
    {
        const BMessage question('info');
        BMessage reply;
        int32 number = -1;
        BMessenger(signature).SendMessage(&question, &reply, 10000000, 10000000);
        reply.FindInt32(name, &number);
        return number;
    }

    static QWidgetList Alerts()
    {
        QWidgetList alerts;
        for (QWidget* widget : QApplication::topLevelWidgets())
            if (widget->isVisible() && widget->windowTitle() == "Qel replicant error:")
                alerts.append(widget);
        return alerts;
    }

    void Post(uint32 code) { window->PostMessage(code, chart); }

    const test::RuntimeFolder runtime;
    TempFolder folder;
    std::string path;
};

} // namespace

TEST_F(ReplicantTest, StartsTheApplicationAndShowsItsSamples)
{
    InstallServer();
    AddReplicant();
    EXPECT_TRUE(AwaitColumn());
    EXPECT_TRUE(AwaitPhase(Phase::kConnected));
    EXPECT_EQ(AskServer("launched"), 1);
    EXPECT_EQ(AskServer("receivers"), 1);
    EXPECT_TRUE(Alerts().isEmpty());
}

TEST_F(ReplicantTest, SaysOnceForEachAttachThatItCannotStartIt)
{
    AddReplicant();
    ASSERT_TRUE(test::WaitFor([] { return Alerts().size() == 1; }));
    QStringList texts;
    for (const QLabel* label : Alerts()[0]->findChildren<QLabel*>())
        texts += label->text();
    EXPECT_TRUE(texts.join("").contains("Qel replicant:\n\nUnable to launch or estabilish connection to Qel !"))
        << texts.join("|").toStdString();
    const auto buttons = Alerts()[0]->findChildren<QPushButton*>();
    ASSERT_EQ(buttons.size(), 1);
    EXPECT_EQ(buttons[0]->text(), "OK");
    EXPECT_EQ(chart->Connection().Server()->Phase(), Phase::kWaiting);
    // Neither a message that anybody could send nor another attempt shows the alert again.
    Post(MSG_SERVER_UNREACHABLE);
    Post(MSG_RECONNECT);
    test::Turn();
    EXPECT_TRUE(AwaitPhase(Phase::kWaiting));
    test::Turn();
    EXPECT_EQ(Alerts().size(), 1);
    window->RemoveChild(chart);
    window->AddChild(chart);
    EXPECT_TRUE(test::WaitFor([] { return Alerts().size() == 2; }));
    // The application can be started by now.
    InstallServer();
    Post(MSG_RECONNECT);
    EXPECT_TRUE(AwaitColumn());
}

TEST_F(ReplicantTest, FindsAnApplicationThatIsStartedLater)
{
    AddReplicant();
    ASSERT_TRUE(AwaitPhase(Phase::kWaiting));
    InstallServer();
    std::thread launcher([] { be_roster->Launch(signature); });
    EXPECT_TRUE(AwaitColumn());
    launcher.join();
}

TEST_F(ReplicantTest, WaitsWhenTheApplicationGoesAndTakesItsSamplesAgainLater)
{
    InstallServer();
    AddReplicant();
    ASSERT_TRUE(AwaitColumn());
    BMessenger(signature).SendMessage(B_QUIT_REQUESTED);
    ASSERT_TRUE(AwaitPhase(Phase::kWaiting));
    EXPECT_GT(find_thread("ChartView: Waiting for Qel server..."), 0);
    // Now it starts nothing by itself.
    EXPECT_TRUE(test::WaitFor([] { return ServerTeam() < 0; }));
    Post(MSG_RECONNECT);
    ASSERT_TRUE(AwaitColumn());
    const team_id server = ServerTeam();
    ASSERT_GT(server, 0);
    kill(server, SIGKILL);
    ASSERT_TRUE(AwaitPhase(Phase::kWaiting));
    Post(MSG_RECONNECT);
    EXPECT_TRUE(AwaitColumn());
    EXPECT_TRUE(Alerts().isEmpty());
}

TEST_F(ReplicantTest, IsToldOfOtherApplicationsWithoutEffect)
{
    InstallServer();
    AddReplicant();
    ASSERT_TRUE(AwaitColumn());
    ASSERT_TRUE(AwaitPhase(Phase::kConnected));
    BMessage quit(B_SOME_APP_QUIT);
    chart->MessageReceived(&quit);
    quit.AddInt32("team", 1);
    chart->MessageReceived(&quit);
    EXPECT_EQ(chart->Connection().Server()->Phase(), Phase::kConnected);
    // A message that the sampler has gone makes it ask again, and has no other effect.
    BMessage gone(MSG_SERVER_GONE);
    chart->MessageReceived(&gone);
    EXPECT_TRUE(AwaitPhase(Phase::kConnected));
    EXPECT_EQ(AskServer("receivers"), 1);
}

TEST_F(ReplicantTest, APausedOneIsDisconnected)
{
    InstallServer();
    AddReplicant();
    ASSERT_TRUE(AwaitColumn());
    Post(MSG_CHART_PAUSE);
    EXPECT_TRUE(AwaitPhase(Phase::kOff));
    EXPECT_TRUE(test::WaitFor([] { return AskServer("receivers") == 0; }));
    Post(MSG_SERVER_GONE);
    Post(MSG_RECONNECT);
    test::Turn();
    EXPECT_EQ(chart->Connection().Server()->Phase(), Phase::kOff);
    Post(MSG_CHART_PAUSE);
    EXPECT_TRUE(AwaitColumn());
}

TEST_F(ReplicantTest, DisconnectsWhenItIsDeleted)
{
    InstallServer();
    AddReplicant();
    ASSERT_TRUE(AwaitColumn());
    chart->RemoveSelf();
    delete chart;
    EXPECT_TRUE(test::WaitFor([] { return AskServer("receivers") == 0; }));
}

TEST_F(ReplicantTest, MayGoInTheMiddleOfAnything)
{
    InstallServer();
    const std::function<bool()> isThatFar[] = {
        [] { return true; },
        [] { return ServerTeam() >= 0; },
        [this] { return chart->Connection().Server()->Phase() == Phase::kConnected; },
        [] { return AskServer("receivers") > 0; },
        [this] { return AwaitColumn(); },
    };
    for (int i = 0; i < 35; i++) {
        AddReplicant();
        ASSERT_TRUE(test::WaitFor(isThatFar[i % 5])) << i;
        chart->RemoveSelf();
        delete chart;
        if (i % 7 == 3)
            EndServer();
    }
    AddReplicant();
    EXPECT_TRUE(AwaitColumn());
    EXPECT_TRUE(Alerts().isEmpty());
}

TEST_F(ReplicantTest, HandsTheAboutRequestOn)
{
    InstallServer();
    AddReplicant();
    ASSERT_TRUE(AwaitColumn());
    Post(B_ABOUT_REQUESTED);
    EXPECT_TRUE(test::WaitFor([] { return AskServer("abouts") == 1; }));
    // Nobody is there, so nothing happens.
    EndServer();
    Post(B_ABOUT_REQUESTED);
    test::Turn();
}

TEST_F(ReplicantTest, ItsPreferencesHaveNoPageForTheSampler)
{
    AddReplicant();
    Post(MSG_CHART_PREFS);
    test::Turn();
    ASSERT_NE(chart->PreferencesWindow(), nullptr);
    std::vector<std::string> labels;
    for (int32 i = 0; i < chart->PreferencesWindow()->CountChildren(); i++) {
        if (const auto* tabs = dynamic_cast<BTabView*>(chart->PreferencesWindow()->ChildAt(i)))
            for (int32 tab = 0; tab < tabs->CountTabs(); tab++)
                labels.emplace_back(tabs->TabAt(tab)->Label());
    }
    EXPECT_EQ(labels.size(), 4u);
    EXPECT_EQ(std::count(labels.begin(), labels.end(), "Sysinfo"), 0);
}

TEST_F(ReplicantTest, ItsMenuOffersToReconnectAndNothingOfTheWindow)
{
    AddReplicant();
    test::Turn();
    ASSERT_NE(chart->Menu(), nullptr);
    EXPECT_NE(chart->Menu()->Menu()->FindItem(MSG_RECONNECT), nullptr);
    for (uint32 command : {MSG_CHART_ADD, MSG_CHART_DELETE, MSG_SYNC_OTHERS})
        EXPECT_EQ(chart->Menu()->Menu()->FindItem(command), nullptr);
}

TEST_F(ReplicantTest, ItsCornerFollowsTheMouseDownToTheSmallestSize)
{
    // Without a server an alert would come, and release the mouse.
    InstallServer();
    AddReplicant(100, 60);
    ASSERT_TRUE(AwaitColumn());
    test::Press(chart, BPoint(97, 57));
    const thread_id resizer = find_thread("Chart Resizer");
    EXPECT_GT(resizer, 0);
    test::MoveTo(chart, BPoint(150, 80));
    EXPECT_TRUE(test::WaitFor([this] { return chart->Bounds() == BRect(0, 0, 150, 80); }));
    EXPECT_EQ(chart->Picture().Bitmap()->Bounds(), BRect(0, 0, 150, 80));
    test::MoveTo(chart, BPoint(3, -40));
    EXPECT_TRUE(test::WaitFor([this] { return chart->Bounds() == BRect(0, 0, 20, 20); }));
    test::MoveTo(chart, BPoint(60, 10));
    EXPECT_TRUE(test::WaitFor([this] { return chart->Bounds() == BRect(0, 0, 60, 20); }));
    test::Release(chart, BPoint(60, 10));
    EXPECT_TRUE(test::WaitFor([resizer] {
        thread_info info;
        return get_thread_info(resizer, &info) != B_OK;
    }));
}

TEST_F(ReplicantTest, OnlyItsCornerResizesIt)
{
    AddReplicant(100, 60);
    test::Turn();
    // Six pixels away from the corner, and another button.
    for (BPoint where : {BPoint(94, 60), BPoint(100, 54), BPoint(95, 55), BPoint(2, 58)}) {
        test::Press(chart, where);
        EXPECT_LT(find_thread("Chart Resizer"), 0);
        test::Release(chart, where);
    }
    AddChart(100, 60);
    test::Press(chart, BPoint(99, 59));
    EXPECT_LT(find_thread("Chart Resizer"), 0);
    test::Release(chart, BPoint(99, 59));
}

TEST_F(ReplicantTest, MayGoWhileItsCornerIsHeld)
{
    // Without a server an alert would come, and release the mouse.
    InstallServer();
    AddReplicant(100, 60);
    ASSERT_TRUE(AwaitColumn());
    test::Press(chart, BPoint(99, 59));
    test::MoveTo(chart, BPoint(120, 70));
    EXPECT_TRUE(test::WaitFor([this] { return chart->Bounds().Width() == 120; }));
    chart->RemoveSelf();
    delete chart;
    EXPECT_LT(find_thread("Chart Resizer"), 0);
}
