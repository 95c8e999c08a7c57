// SPDX-License-Identifier: MIT
#include "kits/interface/shortcuts/DispatcherWait.h"

#include "kits/application/InterfaceLock.h"
#include "kits/application/Message.h"
#include "kits/application/Messenger.h"
#include "kits/application/Timer.h"
#include "kits/interface/Shortcuts.h"
#include "kits/interface/core/EventScope.h"
#include "kits/interface/startup/QtEventLoop.h"
#include "tests/support/GuiTest.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QObject>
#include <QTimer>

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <thread>

namespace {

constexpr uint32 kStream = 'strm';

class Receiver : public BView {
public:
    Receiver()
        : BView(BRect(0, 0, 99, 49), "", 0, B_WILL_DRAW)
    {
    }
    void MessageReceived(BMessage* message) override { onMessage(message); }

    std::function<void(BMessage*)> onMessage;
};

/// A view to which another thread sends one message while the main thread waits in its loop.
class DispatcherWait : public testing::Test {
protected:
    DispatcherWait()
        : window(new BWindow(BRect(50, 50, 249, 149), "wait", B_TITLED_WINDOW, 0))
        , receiver(new Receiver)
        , guard([this] { End(false); })
    {
        kits::UseShortcuts("wait");
        window->AddChild(receiver);
        window->Show();
        test::Turn();
    }
    ~DispatcherWait() override
    {
        window->Quit();
        test::Turn();
        kits::UseShortcuts();
    }

    /// Runs the loop until End; returns false if that did not come in time.
    bool Run(bool isStream = true, bool isSentAgain = false)
    {
        isOver = false;
        std::thread sender([=, this] {
            BMessage message(kStream);
            message.SetNewestWins(isStream);
            do {
                // The lock is free only while the main thread waits.
                EXPECT_EQ(kits::InterfaceLock::Get().Lock(B_INFINITE_TIMEOUT), B_OK);
                EXPECT_EQ(BMessenger(receiver).SendMessage(&message), B_OK);
                kits::InterfaceLock::Get().Unlock();
                std::this_thread::yield();
            } while (isSentAgain && !isOver);
        });
        guard.Start(20000000, false);
        kits::EventLoop::Current().Run();
        guard.Stop();
        isOver = true;
        // The other thread may wait for the lock that this thread has.
        const int32 depth = kits::InterfaceLock::Get().ReleaseAll();
        sender.join();
        kits::InterfaceLock::Get().Restore(depth);
        return isInTime;
    }
    void End(bool inTime = true)
    {
        isInTime = inTime;
        kits::EventLoop::Current().Quit();
    }

    BWindow* window;
    Receiver* receiver;
    kits::Timer guard;
    bool isInTime = false;
    std::atomic<bool> isOver = false;
};

bool IsGlib()
{
    return QAbstractEventDispatcher::instance()->inherits("QEventDispatcherGlib");
}

} // namespace

TEST_F(DispatcherWait, AStreamIsHandledInIt)
{
    // If something else has come as well, it is the dispatcher's turn, so not every wait is ours.
    receiver->onMessage = [&](BMessage*) {
        EXPECT_TRUE(kits::InterfaceLock::Get().IsHeld());
        if (kits::EventScope::IsOpen() != IsGlib())
            End();
    };
    EXPECT_TRUE(Run(true, true));
}

TEST_F(DispatcherWait, WithoutItAStreamIsHandledAsAnEvent)
{
    kits::UseShortcuts("copy,pixels");
    int received = 0;
    receiver->onMessage = [&](BMessage*) {
        EXPECT_TRUE(kits::EventScope::IsOpen());
        if (++received == 20)
            End();
    };
    EXPECT_TRUE(Run(true, true));
}

TEST_F(DispatcherWait, WhatIsNoStreamIsHandledAsAnEvent)
{
    bool isEvent = false;
    receiver->onMessage = [&](BMessage*) {
        isEvent = kits::EventScope::IsOpen();
        End();
    };
    EXPECT_TRUE(Run(false));
    EXPECT_TRUE(isEvent);
}

TEST_F(DispatcherWait, ATimerOfTheToolkitThatIsStartedInItRings)
{
    QTimer timer;
    QObject::connect(
        &timer, &QTimer::timeout, [&] { End(); });
    receiver->onMessage = [&](BMessage*) { timer.start(1); };
    EXPECT_TRUE(Run());
}

TEST_F(DispatcherWait, ATimerOfOursThatIsStartedInItRings)
{
    kits::Timer timer([&] { End(); });
    receiver->onMessage = [&](BMessage*) { timer.Start(1000, false); };
    EXPECT_TRUE(Run());
}

TEST_F(DispatcherWait, WhatIsGivenUpInItGoes)
{
    auto* const object = new QObject;
    QObject::connect(
        object, &QObject::destroyed, [&] { End(); });
    receiver->onMessage = [&](BMessage*) { object->deleteLater(); };
    EXPECT_TRUE(Run());
}

TEST_F(DispatcherWait, AnEventThatIsPostedInItComes)
{
    class Object : public QObject {
    public:
        bool event(QEvent* event) override
        {
            if (event->type() == QEvent::User)
                onEvent();
            return QObject::event(event);
        }
        std::function<void()> onEvent;
    } object;
    object.onEvent = [&] { End(); };
    receiver->onMessage = [&](BMessage*) { QCoreApplication::postEvent(&object, new QEvent(QEvent::User)); };
    EXPECT_TRUE(Run());
}

TEST_F(DispatcherWait, ALoopInsideItWaitsAsWell)
{
    QTimer timer;
    int inner = 0;
    receiver->onMessage = [&](BMessage* message) {
        if (message->what != kStream) {
            inner++;
            return;
        }
        QEventLoop loop;
        QObject::connect(&timer, &QTimer::timeout, [&] {
            if (inner > 0)
                loop.quit();
        });
        timer.start(1);
        BMessage next(kStream + 1);
        next.SetNewestWins(true);
        BMessenger(receiver).SendMessage(&next);
        loop.exec();
        timer.disconnect();
        End();
    };
    EXPECT_TRUE(Run());
    EXPECT_EQ(inner, 1);
}

TEST(DispatcherWaitAlone, SaysNoToADescriptorThatNobodyWatches)
{
    EXPECT_FALSE(kits::DispatcherWait::Await(-1));
}
