// SPDX-License-Identifier: MIT
#include "kits/interface/startup/QtEventLoop.h"

#include "kits/application/InterfaceLock.h"
#include "kits/application/MainThread.h"
#include "kits/application/Message.h"
#include "kits/application/Timer.h"
#include "kits/interface/core/ViewPrivate.h"
#include "kits/kernel/Clock.h"
#include "tests/support/GuiTest.h"

#include <QDrag>
#include <QMenu>
#include <QMessageBox>
#include <QSocketNotifier>
#include <QTimer>
#include <QWidget>

#include <gtest/gtest.h>
#include <unistd.h>

#include <atomic>
#include <thread>

namespace {

/// Sees every event before its object does, and counts events without the interface lock.
class LockWatch : public QObject {
public:
    LockWatch() { qApp->installEventFilter(this); }
    bool eventFilter(QObject*, QEvent*) override
    {
        events++;
        unlocked += !kits::InterfaceLock::Get().IsHeld();
        return false;
    }

    int events = 0;
    int unlocked = 0;
};

/// A thread that takes the lock repeatedly, as one that polls the mouse does.
class Rival {
public:
    Rival()
        : fThread([this] {
            while (!fStop) {
                if (kits::InterfaceLock::Get().Lock(100000) == B_OK) {
                    taken++;
                    kits::InterfaceLock::Get().Unlock();
                }
                std::this_thread::sleep_for(std::chrono::microseconds(200));
            }
        })
    {
    }
    ~Rival()
    {
        fStop = true;
        // The rival may wait for the lock that this thread has.
        const int32 depth = kits::InterfaceLock::Get().ReleaseAll();
        fThread.join();
        kits::InterfaceLock::Get().Restore(depth);
    }

    std::atomic<int> taken = 0;

private:
    std::atomic<bool> fStop = false;
    std::thread fThread;
};

class Counting : public BView {
public:
    Counting()
        : BView(BRect(0, 0, 99, 49), "", 0, B_WILL_DRAW)
    {
    }
    void MessageReceived(BMessage*) override
    {
        received++;
        unlocked += !kits::InterfaceLock::Get().IsHeld();
        SetHighColor(static_cast<uint8>(received), 0, 0);
        StrokeLine(BPoint(0, 0), BPoint(9, 9));
        Invalidate();
    }
    void Draw(BRect) override { unlocked += !kits::InterfaceLock::Get().IsHeld(); }

    int received = 0;
    int unlocked = 0;
};

/// A window in which a view keeps getting messages, and a rival for the lock.
class EventLoop : public testing::Test {
protected:
    EventLoop()
        : window(new BWindow(BRect(50, 50, 249, 149), "loop", B_TITLED_WINDOW, 0))
        , view(new Counting)
        , poster([this] { window->PostMessage(1, view); })
    {
        window->AddChild(view);
        window->Show();
        poster.Start(2000);
        test::Turn();
        before = kits::EventLoop::CountUnlockedEvents();
        elsewhere = kits::EventLoop::CountEventsElsewhere();
    }
    ~EventLoop() override
    {
        EXPECT_EQ(kits::EventLoop::CountUnlockedEvents(), before);
        EXPECT_EQ(kits::EventLoop::CountEventsElsewhere(), elsewhere);
        EXPECT_EQ(watch.unlocked, 0);
        EXPECT_EQ(view->unlocked, 0);
        EXPECT_GT(watch.events, 0);
        poster.Stop();
        window->Quit();
        test::Turn();
    }
    /// Lets this many messages come, and at least as many turns of the rival.
    bool Work(int messages)
    {
        const int wanted = view->received + messages;
        const int turns = rival.taken + messages;
        return test::WaitFor([=, this] { return view->received >= wanted && rival.taken >= turns; });
    }

    LockWatch watch;
    Rival rival;
    BWindow* window;
    Counting* view;
    kits::Timer poster;
    uint64 before = 0;
    uint64 elsewhere = 0;
};

} // namespace

TEST_F(EventLoop, EverythingIsHandledWithTheLock)
{
    int pipeEnds[2];
    ASSERT_EQ(pipe(pipeEnds), 0);
    QSocketNotifier notifier(pipeEnds[0], QSocketNotifier::Read);
    int notified = 0;
    QObject::connect(&notifier, &QSocketNotifier::activated, [&] {
        char byte = 0;
        notified += read(pipeEnds[0], &byte, 1) == 1;
        EXPECT_TRUE(kits::InterfaceLock::Get().IsHeld());
    });
    QTimer timer;
    int ticks = 0;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        ticks++;
        EXPECT_TRUE(kits::InterfaceLock::Get().IsHeld());
        EXPECT_EQ(write(pipeEnds[1], "x", 1), 1);
    });
    timer.start(1);
    EXPECT_TRUE(Work(100));
    EXPECT_GT(ticks, 5);
    EXPECT_GT(notified, 5);
    close(pipeEnds[0]);
    close(pipeEnds[1]);
}

TEST_F(EventLoop, InsideAMenuToo)
{
    QMenu menu;
    menu.addAction("one");
    const int32 depth = kits::InterfaceLock::Get().Depth();
    kits::InterfaceLock::Get().Lock();
    bool worked = false;
    QTimer::singleShot(0, &menu, [&] {
        EXPECT_EQ(kits::InterfaceLock::Get().Depth(), depth + 1);
        worked = Work(50);
        menu.close();
    });
    {
        const kits::NestedLoop nested([&] { menu.close(); });
        menu.exec(QPoint(60, 60));
    }
    EXPECT_TRUE(worked);
    EXPECT_EQ(kits::InterfaceLock::Get().Depth(), depth + 1);
    kits::InterfaceLock::Get().Unlock();
}

TEST_F(EventLoop, InsideAnAlertToo)
{
    QMessageBox box;
    box.setText("words");
    const int32 depth = kits::InterfaceLock::Get().Depth();
    bool worked = false;
    QTimer::singleShot(0, &box, [&] {
        worked = Work(50);
        box.close();
    });
    box.exec();
    EXPECT_TRUE(worked);
    EXPECT_EQ(kits::InterfaceLock::Get().Depth(), depth);
}

TEST_F(EventLoop, InsideADragToo)
{
    if (QGuiApplication::platformName() == "offscreen")
        GTEST_SKIP() << "the offscreen platform ends every drag at once; the runs with a display try this";
    bool worked = false;
    bool under = false;
    test::Press(view, BPoint(5, 5));
    BMessage message(7);
    view->DragMessage(&message, BRect(0, 0, 9, 9));
    QTimer starter;
    QObject::connect(&starter, &QTimer::timeout, [&] {
        if (kits::NestedLoop::Count() == 0)
            return;
        starter.stop();
        under = true;
        worked = Work(50);
        QDrag::cancel();
    });
    starter.start(1);
    EXPECT_TRUE(test::WaitFor([&] { return under && kits::NestedLoop::Count() == 0; }));
    EXPECT_TRUE(worked);
    test::Release(view, BPoint(5, 5));
}

TEST_F(EventLoop, AnotherThreadGetsTheLockWhileANestedLoopWaits)
{
    // No messages: only the rival's own turns.
    poster.Stop();
    const int32 depth = kits::InterfaceLock::Get().Depth();
    for (int level = 0; level < 3; level++) {
        QEventLoop loop;
        QTimer timer;
        const int wanted = rival.taken + 20;
        QObject::connect(&timer, &QTimer::timeout, [&] {
            if (rival.taken >= wanted)
                loop.quit();
        });
        timer.start(5);
        kits::InterfaceLock::Get().Lock();
        loop.exec();
        EXPECT_EQ(kits::InterfaceLock::Get().Depth(), depth + level + 1);
    }
    for (int level = 0; level < 3; level++)
        kits::InterfaceLock::Get().Unlock();
    EXPECT_EQ(kits::InterfaceLock::Get().Depth(), depth);
}

TEST_F(EventLoop, AWorkerDrawsUnderTheLock)
{
    poster.Stop();
    test::Turn();
    std::atomic<bool> done = false;
    std::thread worker([&] {
        for (int i = 0; i < 100; i++) {
            const kits::InterfaceLocker locker;
            view->SetHighColor(0, static_cast<uint8>(i), 0);
            view->FillRect(view->Bounds());
            view->MoveTo(static_cast<float>(i), 0);
            view->ResizeTo(99, static_cast<float>(20 + i % 5));
            view->DrawString("words", BPoint(5, 15));
            BPoint where;
            uint32 buttons = 0;
            view->GetMouse(&where, &buttons, false);
        }
        {
            const kits::InterfaceLocker locker;
            view->SetHighColor(9, 9, 9);
            view->StrokeLine(BPoint(0, 0), BPoint(0, 0));
        }
        done = true;
    });
    EXPECT_TRUE(test::WaitFor([&] { return done.load(); }));
    worker.join();
    test::Turn();
    EXPECT_EQ(test::PixelOf(view, 0, 0), 0xFF090909);
    EXPECT_EQ(kits::ViewWidget(view)->pos(), QPoint(99, 0));
    EXPECT_EQ(kits::ViewWidget(view)->size(), QSize(100, 25));
}

TEST_F(EventLoop, RunsUntilItsInnermostRunIsQuit)
{
    std::string log;
    kits::Timer inner([&] {
        log += "inner ";
        kits::EventLoop::Current().Quit();
    });
    kits::Timer outer([&] {
        log += "outer( ";
        inner.Start(1000, false);
        kits::EventLoop::Current().Run();
        log += ") ";
        kits::EventLoop::Current().Quit();
    });
    outer.Start(1000, false);
    kits::EventLoop::Current().Run();
    EXPECT_EQ(log, "outer( inner ) ");
}

TEST_F(EventLoop, TimersKeepTheirMoments)
{
    const bigtime_t start = system_time();
    bigtime_t first = 0;
    bigtime_t second = 0;
    kits::Timer late([&] {
        second = system_time();
        kits::EventLoop::Current().Quit();
    });
    kits::Timer early([&] { first = system_time(); });
    late.Start(60000, false);
    early.Start(20000, false);
    kits::EventLoop::Current().Run();
    EXPECT_GE(first - start, 20000);
    EXPECT_GE(second - start, 60000);
    EXPECT_LT(first, second);
}
