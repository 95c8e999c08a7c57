// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Application.h"
#include "kits/application/EventLoop.h"
#include "kits/application/InterfaceLock.h"
#include "kits/application/Looper.h"
#include "kits/application/Message.h"
#include "kits/application/Messenger.h"

#include <functional>
#include <memory>
#include <utility>

/// Counts received messages, and keeps the last one.
class Received {
public:
    void Take(const BMessage& message)
    {
        fCount++;
        fLast = message;
    }
    int TakeCount() { return std::exchange(fCount, 0); }
    const BMessage& Last() const { return fLast; }

private:
    int fCount = 0;
    BMessage fLast;
};

/// A receiver of samples, on the main thread of a test, which plays the event loop with TakeAll().
class Receiver {
public:
    Receiver()
        : fLooper(new ReceivingLooper(&fReceived))
    {
        kits::InterfaceLocker lock;
        fLooper->Run();
    }
    ~Receiver()
    {
        kits::InterfaceLocker lock;
        fLooper->Quit();
    }
    Receiver(const Receiver&) = delete;
    Receiver& operator=(const Receiver&) = delete;

    BMessenger Messenger() const { return BMessenger(fLooper); }

    /// Handles all waiting messages.
    /// @return how many have come since the last call
    int TakeAll()
    {
        kits::InterfaceLocker lock;
        kits::EventLoop::RunDue();
        return fReceived.TakeCount();
    }
    const BMessage& Last() const { return fReceived.Last(); }

private:
    class ReceivingLooper : public BLooper {
    public:
        explicit ReceivingLooper(Received* received)
            : BLooper("receiver")
            , fReceived(received)
        {
        }
        void MessageReceived(BMessage* message) override { fReceived->Take(*message); }

    private:
        Received* fReceived;
    };

    Received fReceived;
    ReceivingLooper* fLooper; // deletes itself
};

/// An application that runs for one action, and until all messages sent to it meanwhile have been handled.
class ReceivingApplication : public BApplication {
public:
    ReceivingApplication()
        : BApplication("application/x-vnd.test")
    {
    }

    void RunFor(std::function<void()> action)
    {
        fAction = std::move(action);
        Run();
    }
    int TakeCount() { return fReceived.TakeCount(); }
    const BMessage& Last() const { return fReceived.Last(); }

    void ReadyToRun() override
    {
        fAction();
        PostMessage(B_QUIT_REQUESTED);
    }
    void MessageReceived(BMessage* message) override { fReceived.Take(*message); }

private:
    std::function<void()> fAction;
    Received fReceived;
};
