// SPDX-License-Identifier: MIT
#include "kits/application/InterfaceLock.h"
#include "kits/application/MainThread.h"
#include "kits/application/Message.h"
#include "kits/application/Timer.h"
#include "kits/interface/core/Pointer.h"
#include "kits/interface/startup/QtEventLoop.h"
#include "tests/support/GuiTest.h"

#include <QEventLoop>
#include <QMouseEvent>
#include <QThread>
#include <QTimer>

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <thread>

/// A friend class of the toolkit that marks an event as the system's.
class QSpontaneKeyEvent {
public:
    static void Mark(QEvent* event) { event->m_spont = true; }
};

namespace {

/// Counts its messages.
class Counting : public BView {
public:
    Counting()
        : BView(BRect(0, 0, 99, 49), "", 0, B_WILL_DRAW)
    {
    }
    void MessageReceived(BMessage*) override { received++; }

    std::atomic<int> received = 0;
};

/// An object of another thread. Its handler records what the application object did before it.
class Receiver : public QObject {
public:
    bool event(QEvent* event) override
    {
        if (!kits::IsMainThread()) {
            handled++;
            locked += kits::InterfaceLock::Get().ReleaseAll() > 0;
        }
        return QObject::event(event);
    }

    // Events handled on threads other than the main one.
    int handled = 0;
    int locked = 0; ///< how often the thread had the interface lock; it releases the lock at once
};

/// A window that gets messages while another thread of the toolkit has events.
class KitsApplicationTest : public testing::Test {
protected:
    KitsApplicationTest()
        : window(new BWindow(BRect(50, 50, 249, 149), "application", B_TITLED_WINDOW, 0))
        , view(new Counting)
        , poster([this] { window->PostMessage(1, view); })
    {
        window->AddChild(view);
        window->Show();
        poster.Start(2000);
        test::Turn();
    }
    ~KitsApplicationTest() override
    {
        poster.Stop();
        window->Quit();
        test::Turn();
    }
    /// Runs work on another thread. Runs the loop until the work is done and this many messages have come.
    /// @param work  ends at the latest when fMustEnd is true
    void RunBeside(const std::function<void()>& work, int messages)
    {
        std::atomic<bool> isDone = false;
        fMustEnd = false;
        std::thread worker([&] {
            work();
            isDone = true;
        });
        const int wanted = view->received + messages;
        EXPECT_TRUE(test::WaitFor([&] { return isDone && view->received >= wanted; }));
        fMustEnd = true;
        const int32 depth = kits::InterfaceLock::Get().ReleaseAll();
        worker.join();
        kits::InterfaceLock::Get().Restore(depth);
    }

    BWindow* window;
    Counting* view;
    kits::Timer poster;
    std::atomic<bool> fMustEnd = false; ///< the test has given up
};

} // namespace

TEST_F(KitsApplicationTest, AnEventOnAnotherThreadLeavesTheLockToTheMainThread)
{
    constexpr int kEvents = 2000;
    const uint64 before = kits::EventLoop::CountEventsElsewhere();
    Receiver receiver;
    receiver.moveToThread(nullptr);
    RunBeside(
        [&] {
            receiver.moveToThread(QThread::currentThread());
            // Events go on as long as the main thread's messages.
            for (int i = 0; i < kEvents || (view->received < 50 && !fMustEnd); i++) {
                QEvent event(QEvent::User);
                QCoreApplication::sendEvent(&receiver, &event);
                std::this_thread::yield();
            }
            // The toolkit does this with a plugin that some thread has loaded.
            receiver.moveToThread(qApp->thread());
        },
        50);
    EXPECT_GE(receiver.handled, kEvents);
    EXPECT_EQ(receiver.locked, 0);
    EXPECT_GE(kits::EventLoop::CountEventsElsewhere(), before + kEvents);
}

TEST_F(KitsApplicationTest, AnotherThreadMayRunALoopOfTheToolkit)
{
    int ticks = 0;
    int locked = 0;
    RunBeside(
        [&] {
            QEventLoop loop;
            QTimer timer;
            QObject::connect(&timer, &QTimer::timeout, [&] {
                locked += kits::InterfaceLock::Get().ReleaseAll() > 0;
                if (++ticks == 100)
                    loop.quit();
            });
            timer.start(1);
            loop.exec();
        },
        50);
    EXPECT_EQ(ticks, 100);
    EXPECT_EQ(locked, 0);
}

TEST_F(KitsApplicationTest, AnEventOnAnotherThreadIsNotTakenForOneOfTheUser)
{
    test::Press(view, BPoint(5, 5));
    const BPoint where = kits::Pointer::Where();
    const uint32 buttons = kits::Pointer::Buttons();
    test::Release(view, BPoint(5, 5));
    ASSERT_NE(buttons, 0u);
    Receiver receiver;
    receiver.moveToThread(nullptr);
    RunBeside(
        [&] {
            receiver.moveToThread(QThread::currentThread());
            QMouseEvent event(QEvent::MouseButtonPress, QPointF(1, 1), QPointF(901, 902), Qt::RightButton,
                              Qt::RightButton, Qt::NoModifier);
            QSpontaneKeyEvent::Mark(&event);
            // Not by sendEvent(), which would make it an event of the program.
            qApp->notify(&receiver, &event);
            receiver.moveToThread(nullptr);
        },
        1);
    EXPECT_EQ(kits::Pointer::Where(), where);
    EXPECT_EQ(kits::Pointer::Buttons(), 0u);
}
