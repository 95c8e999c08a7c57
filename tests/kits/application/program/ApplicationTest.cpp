// SPDX-License-Identifier: MIT
#include "kits/application/Application.h"

#include "kits/application/EventLoop.h"
#include "kits/application/InterfaceLock.h"
#include "kits/application/MainThread.h"
#include "kits/application/Timer.h"
#include "kits/kernel/Errors.h"
#include "kits/storage/Path.h"
#include "tests/support/Loop.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <filesystem>
#include <thread>

using kits::InterfaceLock;
using test::RecordingLooper;

namespace {

/// Logs its hooks, and quits on "quit" in a message of code 9.
class TestApplication : public BApplication {
public:
    TestApplication()
        : BApplication("application/x-vnd.kits-test")
    {
    }
    void ReadyToRun() override
    {
        log += "ready ";
        if (atReady != nullptr)
            atReady();
    }
    void AboutRequested() override { log += "about "; }
    void Pulse() override
    {
        log += "pulse ";
        if (atPulse != nullptr)
            atPulse();
    }
    bool QuitRequested() override
    {
        log += "quit? ";
        return quitAnswers.empty() ? BApplication::QuitRequested() : TakeAnswer();
    }
    void MessageReceived(BMessage* message) override
    {
        log += std::to_string(message->what) + " ";
        if (message->what == 9)
            Quit();
    }

    std::string log;
    std::function<void()> atReady;
    std::function<void()> atPulse;
    std::vector<bool> quitAnswers;

private:
    bool TakeAnswer()
    {
        const bool answer = quitAnswers.front();
        quitAnswers.erase(quitAnswers.begin());
        return answer;
    }
};

} // namespace

TEST(Application, IsTheOneOfItsProcess)
{
    EXPECT_EQ(be_app, nullptr);
    {
        status_t status = B_ERROR;
        BApplication app("application/x-vnd.kits-test", &status);
        EXPECT_EQ(status, B_OK);
        EXPECT_EQ(app.InitCheck(), B_OK);
        EXPECT_EQ(be_app, &app);
        EXPECT_TRUE(be_app_messenger.IsValid());
        EXPECT_STREQ(app.Signature(), "application/x-vnd.kits-test");
        EXPECT_TRUE(InterfaceLock::Get().IsHeld());
        {
            BApplication second("application/x-vnd.kits-other", &status);
            EXPECT_EQ(status, B_NOT_ALLOWED);
            EXPECT_EQ(second.Run(), B_NO_INIT);
        }
        EXPECT_EQ(be_app, &app);
    }
    EXPECT_EQ(be_app, nullptr);
    EXPECT_FALSE(be_app_messenger.IsValid());
    EXPECT_EQ(be_app_messenger.SendMessage(1), B_BAD_HANDLER);
    EXPECT_FALSE(InterfaceLock::Get().IsHeld());
}

TEST(Application, NeedsASignature)
{
    for (const char* signature : {"", "x-vnd.kits", "text/plain", "application/", "application/a/b"}) {
        BApplication app(signature);
        EXPECT_EQ(app.InitCheck(), B_BAD_VALUE) << signature;
        EXPECT_EQ(app.Run(), B_NO_INIT);
    }
    EXPECT_EQ(BApplication(nullptr).InitCheck(), B_BAD_VALUE);
    EXPECT_EQ(BApplication(("application/" + std::string(300, 'x')).c_str()).InitCheck(), B_BAD_VALUE);
}

TEST(Application, HandlesLaunchMessagesThenIsReadyThenRuns)
{
    TestApplication app;
    app.PostMessage(5);
    app.AddLaunchMessage(std::make_unique<BMessage>(3));
    app.AddLaunchMessage(std::make_unique<BMessage>(2));
    app.AddLaunchMessage(nullptr);
    app.atReady = [&app] {
        EXPECT_TRUE(InterfaceLock::Get().IsHeld());
        app.AddLaunchMessage(std::make_unique<BMessage>(4));
        app.PostMessage(9);
    };
    EXPECT_EQ(app.Run(), find_thread(nullptr));
    EXPECT_EQ(app.log, "3 2 ready 5 9 ");
    EXPECT_EQ(app.Run(), B_ALREADY_RUNNING);
    EXPECT_TRUE(InterfaceLock::Get().IsHeld());
}

TEST(Application, AnswersTheUsualMessages)
{
    TestApplication app;
    app.PostMessage(B_ABOUT_REQUESTED);
    app.PostMessage(B_READY_TO_RUN);
    app.quitAnswers = {false, true};
    app.PostMessage(B_QUIT_REQUESTED);
    app.PostMessage(5);
    app.PostMessage(B_QUIT_REQUESTED);
    app.PostMessage(6);
    app.Run();
    EXPECT_EQ(app.log, "ready about quit? 5 quit? ");
    EXPECT_EQ(app.PostMessage(7), B_BAD_HANDLER);
}

TEST(Application, MayQuitBeforeItRuns)
{
    TestApplication app;
    app.atReady = [&app] { app.Quit(); };
    app.Run();
    EXPECT_EQ(app.log, "ready ");
}

TEST(Application, AsksTheOtherLoopersBeforeItQuits)
{
    TestApplication app;
    bool firstGone = false, lastGone = false;
    auto* first = new RecordingLooper;
    auto* refusing = new RecordingLooper;
    auto* last = new RecordingLooper;
    auto* hidden = new RecordingLooper;
    first->destroyed = &firstGone;
    last->destroyed = &lastGone;
    for (RecordingLooper* looper : {first, refusing, last})
        looper->Run();
    refusing->quitAnswer = false;
    app.PostMessage(B_QUIT_REQUESTED);
    kits::Timer timer([&] {
        EXPECT_TRUE(firstGone);
        EXPECT_FALSE(lastGone);
        EXPECT_EQ(hidden->codes.size(), 0u);
        refusing->quitAnswer = true;
        app.PostMessage(B_QUIT_REQUESTED);
    });
    timer.Start(1000, false);
    app.Run();
    EXPECT_EQ(app.log, "ready quit? quit? ");
    EXPECT_TRUE(lastGone);
    delete hidden;
}

TEST(Application, EndsWhatIsLeftWithIt)
{
    bool gone[2] = {};
    std::string order;
    {
        TestApplication app;
        for (bool& flag : gone) {
            auto* looper = new RecordingLooper;
            looper->destroyed = &flag;
            looper->Run();
        }
        kits::RunAtOutermostLoop([&order] { order += "outermost "; });
        kits::RunOnMainThread([&order] { order += "soon "; });
    }
    EXPECT_TRUE(gone[0]);
    EXPECT_TRUE(gone[1]);
    EXPECT_EQ(order, "outermost soon ");
}

TEST(Application, PulsesAtItsRate)
{
    test::MockClock clock;
    TestApplication app;
    app.SetPulseRate(600000000);
    EXPECT_EQ(app.PulseRate(), 600000000);
    // No pulse comes before it is ready, though time passes in a loop that runs earlier.
    clock.now += 700000000;
    kits::EventLoop::RunDue();
    EXPECT_EQ(app.log, "");
    int count = 0;
    app.atReady = [&clock] { clock.now += 600000000; };
    app.atPulse = [&] {
        if (++count == 3)
            app.PostMessage(9);
        else
            kits::RunOnMainThread([&clock] { clock.now += 600000000; });
    };
    app.Run();
    EXPECT_EQ(app.log, "ready pulse pulse pulse 9 ");
    app.SetPulseRate(0);
    EXPECT_EQ(kits::EventLoop::Deadline(), B_INFINITE_TIMEOUT);
}

TEST(Application, QuitsOnSignals)
{
    for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
        TestApplication app;
        app.quitAnswers = {true};
        app.atReady = [number] { std::thread([number] { kill(getpid(), number); }).detach(); };
        app.Run();
        EXPECT_EQ(app.log, "ready quit? ");
        // After the loop, a signal no longer interrupts the writes at the end.
        kill(getpid(), number);
    }
}

TEST(Application, TakesSignalsToQuitWithItsMainThreadAlone)
{
    TestApplication app;
    app.quitAnswers = {true};
    std::atomic<bool> isOver = false;
    // Started as the toolkit starts its threads.
    std::thread other([&isOver] {
        EXPECT_TRUE(test::Await([] {
            sigset_t blocked;
            pthread_sigmask(SIG_SETMASK, nullptr, &blocked);
            return sigismember(&blocked, SIGTERM) == 1 && sigismember(&blocked, SIGINT) == 1 &&
                   sigismember(&blocked, SIGHUP) == 1;
        }));
        isOver = true;
    });
    app.atReady = [&app, &isOver] {
        app.atPulse = [&app, &isOver] {
            app.SetPulseRate(0);
            EXPECT_TRUE(test::Await([&isOver] { return isOver.load(); }));
            kill(getpid(), SIGTERM);
        };
        app.SetPulseRate(1000);
    };
    app.Run();
    other.join();
    EXPECT_EQ(app.log, "ready pulse quit? ");
}

TEST(Application, ClosesMenusAndAlertsBeforeItIsAskedToQuit)
{
    TestApplication app;
    app.quitAnswers = {true};
    bool isCanceled = false;
    app.atReady = [&] {
        auto* window = new RecordingLooper([&](BMessage*) {
            const kits::NestedLoop nested([&isCanceled] {
                isCanceled = true;
                kits::EventLoop::Current().Quit();
            });
            kill(getpid(), SIGTERM);
            kits::EventLoop::Current().Run();
            EXPECT_EQ(app.log, "ready ");
        });
        window->Run();
        window->PostMessage(1);
    };
    app.Run();
    EXPECT_TRUE(isCanceled);
    EXPECT_EQ(app.log, "ready quit? ");
}

TEST(Application, ClosesAnAlertThatIsShownBeforeItRuns)
{
    TestApplication app;
    app.PostMessage(5);
    bool isCanceled = false;
    {
        const kits::NestedLoop alert([&isCanceled] {
            isCanceled = true;
            kits::EventLoop::Current().Quit();
        });
        app.PostMessage(B_QUIT_REQUESTED);
        kits::EventLoop::Current().Run();
    }
    EXPECT_TRUE(isCanceled);
    EXPECT_EQ(app.log, "");
    app.quitAnswers = {true};
    app.Run();
    EXPECT_EQ(app.log, "ready 5 quit? ");
}

TEST(Application, KnowsItsExecutable)
{
    TestApplication app;
    app_info info;
    EXPECT_EQ(app.GetAppInfo(&info), B_OK);
    EXPECT_EQ(info.team, getpid());
    EXPECT_EQ(info.thread, find_thread(nullptr));
    EXPECT_EQ(info.signature, "application/x-vnd.kits-test");
    const std::filesystem::path path = std::filesystem::read_symlink("/proc/self/exe");
    EXPECT_EQ(info.ref.directory, path.parent_path());
    EXPECT_EQ(info.ref.name, path.filename());
    EXPECT_EQ(be_roster->GetRunningAppInfo(getpid(), nullptr), B_BAD_VALUE);
    EXPECT_EQ(be_roster->GetRunningAppInfo(1, &info), B_BAD_VALUE);
    EXPECT_NE(BApplication::AppResources(), nullptr);
}
