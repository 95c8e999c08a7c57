// SPDX-License-Identifier: MIT
#include "kits/application/Looper.h"

#include "kits/application/EventLoop.h"
#include "kits/application/InterfaceLock.h"
#include "kits/application/MainThread.h"
#include "kits/application/Messenger.h"
#include "kits/kernel/Errors.h"
#include "tests/support/AllocationCounter.h"
#include "tests/support/Loop.h"
#include "tests/support/ReplaceValue.h"

#include <gtest/gtest.h>

#include <atomic>

using kits::InterfaceLock;
using test::Recorder;
using test::RecordingLooper;
using Codes = std::vector<uint32>;

namespace {

class LooperTest : public testing::Test {
protected:
    LooperTest() { fLooper->Run(); }
    ~LooperTest() override
    {
        const kits::InterfaceLocker locker;
        if (fLooper != nullptr)
            fLooper->Quit();
        EXPECT_EQ(kits::EventLoop::CountUnlockedEvents(), fUnlocked);
    }

    /// Handles all waiting messages.
    void Drain()
    {
        bool isDone = false;
        kits::RunOnMainThread([&isDone] { kits::RunOnMainThread([&isDone] { isDone = true; }); });
        ASSERT_TRUE(test::RunUntil([&isDone] { return isDone; }));
    }

    RecordingLooper* fLooper = new RecordingLooper;
    const uint64 fUnlocked = kits::EventLoop::CountUnlockedEvents();
};

BMessage Newest(uint32 code, int32 number = 0)
{
    BMessage message(code);
    message.SetNewestWins(true);
    message.AddInt32("number", number);
    return message;
}

} // namespace

TEST_F(LooperTest, GetsMessagesInTheOrderOfPosting)
{
    Recorder handler;
    fLooper->AddHandler(&handler);
    std::vector<uint32> order;
    auto* other = new RecordingLooper([&order](BMessage* message) { order.push_back(message->what); });
    Recorder third([&order](BMessage* message) { order.push_back(message->what); });
    fLooper->AddHandler(&third);
    other->Run();
    for (uint32 i = 0; i < 20; ++i)
        EXPECT_EQ(i % 3 == 0 ? other->PostMessage(i) : fLooper->PostMessage(i, i % 3 == 1 ? &third : nullptr), B_OK);
    EXPECT_EQ(fLooper->PostMessage(100, &handler), B_OK);
    EXPECT_EQ(other->CountMessages(), 7);
    EXPECT_EQ(fLooper->CountMessages(), 14);
    EXPECT_TRUE(fLooper->codes.empty());
    Drain();
    EXPECT_EQ(order, (Codes{0, 1, 3, 4, 6, 7, 9, 10, 12, 13, 15, 16, 18, 19}));
    EXPECT_EQ(fLooper->codes, (Codes{2, 5, 8, 11, 14, 17}));
    EXPECT_EQ(handler.codes, Codes{100});
    EXPECT_EQ(fLooper->CountMessages(), 0);
    const kits::InterfaceLocker locker;
    other->Quit();
}

TEST_F(LooperTest, GetsACopyOfTheMessage)
{
    BMessage message(1);
    message.AddInt32("number", 7);
    int32 number = 0;
    const BMessage* received = nullptr;
    Recorder handler([&](BMessage* got) {
        received = got;
        EXPECT_EQ(got->FindInt32("number", &number), B_OK);
        EXPECT_TRUE(got->WasDelivered());
        EXPECT_FALSE(got->IsSourceWaiting());
        EXPECT_EQ(fLooper->CurrentMessage(), got);
    });
    fLooper->AddHandler(&handler);
    EXPECT_EQ(fLooper->PostMessage(&message, &handler), B_OK);
    test::ReplaceInt32(message, "number", 8);
    EXPECT_EQ(fLooper->CurrentMessage(), nullptr);
    Drain();
    EXPECT_EQ(number, 7);
    EXPECT_NE(received, &message);
    EXPECT_EQ(fLooper->CurrentMessage(), nullptr);
}

TEST_F(LooperTest, RefusesWhatItCannotDeliver)
{
    Recorder stranger;
    EXPECT_EQ(fLooper->PostMessage(nullptr), B_BAD_VALUE);
    EXPECT_EQ(fLooper->PostMessage(1, &stranger), B_MISMATCHED_VALUES);
    auto* other = new RecordingLooper;
    EXPECT_EQ(fLooper->PostMessage(1, other), B_MISMATCHED_VALUES);
    fLooper->AddHandler(&stranger);
    EXPECT_EQ(fLooper->PostMessage(1, &stranger), B_OK);
    EXPECT_EQ(other->PostMessage(1, &stranger), B_MISMATCHED_VALUES);
    const kits::InterfaceLocker locker;
    other->Quit();
}

TEST_F(LooperTest, HasABoundedQueue)
{
    for (int32 i = 0; i < BLooper::kQueueCapacity; ++i)
        ASSERT_EQ(fLooper->PostMessage(1), B_OK);
    EXPECT_EQ(fLooper->PostMessage(2), B_WOULD_BLOCK);
    const BMessage newest = Newest(3);
    EXPECT_EQ(fLooper->PostMessage(&newest), B_WOULD_BLOCK);
    // Each looper has its own.
    auto* other = new RecordingLooper;
    EXPECT_EQ(other->PostMessage(2), B_OK);
    Drain();
    EXPECT_EQ(fLooper->codes, Codes(BLooper::kQueueCapacity, 1));
    EXPECT_EQ(fLooper->PostMessage(2), B_OK);
    const kits::InterfaceLocker locker;
    other->Quit();
}

TEST_F(LooperTest, LetsTheNewestReplaceTheOneThatWaits)
{
    std::vector<int32> numbers;
    Recorder handler([&numbers](BMessage* message) {
        int32 number = -1;
        message->FindInt32("number", &number);
        numbers.push_back(number);
    });
    Recorder other;
    fLooper->AddHandler(&handler);
    fLooper->AddHandler(&other);
    const auto post = [&](uint32 code, int32 number, BHandler* to) {
        const BMessage message = Newest(code, number);
        EXPECT_EQ(fLooper->PostMessage(&message, to), B_OK);
    };
    post(1, 10, &handler);
    EXPECT_EQ(fLooper->PostMessage(2, &handler), B_OK);
    post(1, 11, &handler);
    post(1, 12, &other);
    post(3, 13, &handler);
    for (int32 i = 0; i < 2 * BLooper::kQueueCapacity; ++i)
        post(1, 1000 + i, &handler);
    // Messages without this mark neither replace others nor are replaced.
    EXPECT_EQ(fLooper->PostMessage(1, &handler), B_OK);
    EXPECT_EQ(fLooper->CountMessages(), 5);
    Drain();
    EXPECT_EQ(handler.codes, (Codes{1, 2, 3, 1}));
    EXPECT_EQ(numbers, (std::vector<int32>{1000 + 2 * BLooper::kQueueCapacity - 1, -1, 13, -1}));
    EXPECT_EQ(other.codes, Codes{1});
    post(1, 20, &handler);
    Drain();
    EXPECT_EQ(handler.codes.size(), 5u);
}

TEST_F(LooperTest, LetsTheNewestWaitAgainWhileOneIsHandled)
{
    int count = 0;
    Recorder handler([&](BMessage*) {
        const BMessage message = Newest(1);
        if (++count < 3) {
            EXPECT_EQ(fLooper->PostMessage(&message, &handler), B_OK);
            EXPECT_EQ(fLooper->PostMessage(&message, &handler), B_OK);
        }
    });
    fLooper->AddHandler(&handler);
    const BMessage message = Newest(1);
    fLooper->PostMessage(&message, &handler);
    EXPECT_TRUE(test::RunUntil([&count] { return count == 3; }));
    Drain();
    EXPECT_EQ(count, 3);
}

TEST_F(LooperTest, HoldsMessagesBackUntilItRuns)
{
    auto* looper = new RecordingLooper;
    Recorder handler;
    looper->AddHandler(&handler);
    BMessage message = Newest(1, 1);
    looper->PostMessage(&message, &handler);
    looper->PostMessage(2);
    test::ReplaceInt32(message, "number", 2);
    looper->PostMessage(&message, &handler);
    Drain();
    EXPECT_EQ(looper->CountMessages(), 2);
    EXPECT_TRUE(looper->codes.empty());
    fLooper->PostMessage(3);
    EXPECT_EQ(looper->Run(), looper->Thread());
    EXPECT_EQ(looper->Thread(), find_thread(nullptr));
    looper->PostMessage(&message, &handler);
    EXPECT_EQ(looper->CountMessages(), 2);
    Drain();
    EXPECT_EQ(looper->codes, Codes{2});
    EXPECT_EQ(handler.codes, Codes{1});
    looper->Run();
    const kits::InterfaceLocker locker;
    looper->RemoveHandler(&handler);
    looper->Quit();
}

TEST_F(LooperTest, KnowsItsHandlers)
{
    Recorder first, second;
    EXPECT_EQ(fLooper->CountHandlers(), 1);
    EXPECT_EQ(fLooper->Looper(), fLooper);
    fLooper->AddHandler(&first);
    fLooper->AddHandler(&second);
    fLooper->AddHandler(nullptr);
    EXPECT_EQ(first.Looper(), fLooper);
    EXPECT_EQ(second.Looper(), fLooper);
    EXPECT_EQ(fLooper->CountHandlers(), 3);

    RecordingLooper other;
    other.AddHandler(&first);
    EXPECT_EQ(first.Looper(), fLooper);
    EXPECT_FALSE(other.RemoveHandler(&first));
    EXPECT_FALSE(fLooper->RemoveHandler(fLooper));
    EXPECT_TRUE(fLooper->RemoveHandler(&second));
    EXPECT_EQ(second.Looper(), nullptr);
    EXPECT_FALSE(fLooper->RemoveHandler(&second));
    EXPECT_EQ(fLooper->CountHandlers(), 2);
}

TEST_F(LooperTest, DropsMessagesForHandlersThatLeftOrWent)
{
    auto gone = std::make_unique<Recorder>();
    Recorder left, back;
    fLooper->AddHandler(gone.get());
    fLooper->AddHandler(&left);
    fLooper->AddHandler(&back);
    fLooper->PostMessage(1, gone.get());
    fLooper->PostMessage(2, &left);
    const BMessage newest = Newest(3);
    fLooper->PostMessage(&newest, &back);
    fLooper->PostMessage(4);
    gone = nullptr;
    EXPECT_EQ(fLooper->CountMessages(), 3);
    fLooper->RemoveHandler(&left);
    // A handler that returns before its message is reached gets it, as a page does that is taken out and put in again.
    fLooper->RemoveHandler(&back);
    fLooper->AddHandler(&back);
    Drain();
    EXPECT_TRUE(left.codes.empty());
    EXPECT_EQ(back.codes, Codes{3});
    EXPECT_EQ(fLooper->codes, Codes{4});
    EXPECT_EQ(fLooper->CountMessages(), 0);
}

TEST_F(LooperTest, HandsOnWhatIsNotKnown)
{
    BHandler handler("handler");
    EXPECT_STREQ(handler.Name(), "handler");
    handler.SetName(nullptr);
    EXPECT_STREQ(handler.Name(), "");
    fLooper->AddHandler(&handler);
    fLooper->PostMessage(1, &handler);
    Drain();
    EXPECT_EQ(fLooper->codes, Codes{1});
    BLooper plain;
    BMessage message(2);
    plain.MessageReceived(&message);
    fLooper->RemoveHandler(&handler);
    handler.MessageReceived(&message);
    EXPECT_EQ(fLooper->codes, Codes{1}) << "neither a looper nor a handler without one hands on";
}

TEST_F(LooperTest, TakesMessagesAtOnceFromTheKits)
{
    Recorder handler([&](BMessage* message) {
        EXPECT_EQ(fLooper->CurrentMessage(), message);
        EXPECT_FALSE(kits::IsOutermost());
        if (message->what == 1) {
            fLooper->DeliverNow(std::make_unique<BMessage>(2), &handler);
            EXPECT_EQ(fLooper->CurrentMessage(), message);
        }
    });
    const kits::InterfaceLocker locker;
    fLooper->AddHandler(&handler);
    fLooper->DeliverNow(std::make_unique<BMessage>(1), &handler);
    EXPECT_EQ(handler.codes, (Codes{1, 2}));
    EXPECT_EQ(fLooper->CurrentMessage(), nullptr);
}

TEST_F(LooperTest, QuitsAtOnceWhenNothingIsInItsWay)
{
    bool destroyed = false;
    fLooper->destroyed = &destroyed;
    const BMessenger messenger(fLooper);
    ASSERT_TRUE(fLooper->Lock());
    fLooper->PostMessage(1);
    fLooper->Quit();
    fLooper = nullptr;
    EXPECT_TRUE(destroyed);
    EXPECT_FALSE(messenger.IsValid());
    EXPECT_TRUE(InterfaceLock::Get().IsHeld());
    InterfaceLock::Get().Unlock();
}

TEST_F(LooperTest, QuitsAfterTheMessageThatAskedForIt)
{
    bool destroyed = false;
    fLooper->destroyed = &destroyed;
    const BMessenger messenger(fLooper);
    Recorder handler([&](BMessage*) {
        fLooper->Quit();
        fLooper->Quit();
        EXPECT_FALSE(destroyed);
        // From now on it is gone for everybody.
        EXPECT_FALSE(messenger.IsValid());
        EXPECT_EQ(messenger.SendMessage(1), B_BAD_HANDLER);
        EXPECT_EQ(fLooper->PostMessage(1), B_BAD_HANDLER);
        EXPECT_FALSE(fLooper->Lock());
        EXPECT_EQ(fLooper->LockWithTimeout(0), B_BAD_HANDLER);
        EXPECT_FALSE(messenger.LockTarget());
    });
    fLooper->AddHandler(&handler);
    fLooper->PostMessage(1, &handler);
    fLooper->PostMessage(2);
    EXPECT_TRUE(test::RunUntil([&destroyed] { return destroyed; }));
    fLooper = nullptr;
    EXPECT_EQ(handler.Looper(), nullptr);
}

TEST_F(LooperTest, IsAskedBeforeItQuits)
{
    bool destroyed = false;
    fLooper->destroyed = &destroyed;
    fLooper->quitAnswer = false;
    fLooper->PostMessage(B_QUIT_REQUESTED);
    Drain();
    EXPECT_EQ(fLooper->codes, Codes{B_QUIT_REQUESTED});
    EXPECT_FALSE(destroyed);
    // One of its handlers gets it as any other message.
    Recorder handler;
    fLooper->AddHandler(&handler);
    fLooper->PostMessage(B_QUIT_REQUESTED, &handler);
    Drain();
    EXPECT_EQ(handler.codes, Codes{B_QUIT_REQUESTED});
    fLooper->RemoveHandler(&handler);
    fLooper->quitAnswer = true;
    fLooper->PostMessage(B_QUIT_REQUESTED);
    EXPECT_TRUE(test::RunUntil([&destroyed] { return destroyed; }));
    fLooper = nullptr;
}

TEST_F(LooperTest, IsAskedToQuitOnlyWhenNoNestedLoopIsLeft)
{
    bool destroyed = false, isCanceled = false;
    fLooper->destroyed = &destroyed;
    auto* menu = new RecordingLooper([&](BMessage*) {
        kits::NestedLoop nested([&isCanceled] {
            isCanceled = true;
            kits::EventLoop::Current().Quit();
        });
        fLooper->PostMessage(B_QUIT_REQUESTED);
        fLooper->PostMessage(1);
        kits::EventLoop::Current().Run();
        EXPECT_TRUE(nested.WasCanceled());
        EXPECT_EQ(fLooper->codes, Codes{1});
        EXPECT_FALSE(destroyed);
    });
    menu->Run();
    menu->PostMessage(1);
    EXPECT_TRUE(test::RunUntil([&destroyed] { return destroyed; }));
    EXPECT_TRUE(isCanceled);
    fLooper = nullptr;
    const kits::InterfaceLocker locker;
    menu->Quit();
}

TEST_F(LooperTest, IsDestroyedByTheMainThread)
{
    bool destroyed = false;
    fLooper->destroyed = &destroyed;
    std::thread([this, &destroyed] {
        ASSERT_TRUE(fLooper->Lock());
        fLooper->Quit();
        EXPECT_FALSE(destroyed);
        InterfaceLock::Get().Unlock();
        EXPECT_EQ(BMessenger(fLooper).SendMessage(1), B_BAD_HANDLER);
    }).join();
    EXPECT_FALSE(destroyed);
    EXPECT_TRUE(test::RunUntil([&destroyed] { return destroyed; }));
    fLooper = nullptr;
}

TEST_F(LooperTest, IsLockedByTheOneLock)
{
    Recorder handler;
    EXPECT_FALSE(handler.LockLooper());
    EXPECT_EQ(handler.LockLooperWithTimeout(0), B_BAD_HANDLER);
    fLooper->AddHandler(&handler);
    EXPECT_TRUE(fLooper->Lock());
    EXPECT_TRUE(handler.LockLooper());
    EXPECT_EQ(InterfaceLock::Get().Depth(), 2);
    std::thread([&] {
        EXPECT_FALSE(InterfaceLock::Get().IsHeld());
        EXPECT_EQ(fLooper->LockWithTimeout(0), B_WOULD_BLOCK);
        EXPECT_EQ(fLooper->LockWithTimeout(1000), B_TIMED_OUT);
        EXPECT_EQ(handler.LockLooperWithTimeout(0), B_WOULD_BLOCK);
    }).join();
    handler.UnlockLooper();
    fLooper->Unlock();
    EXPECT_FALSE(InterfaceLock::Get().IsHeld());
}

TEST_F(LooperTest, FailsToLockWhatGoesWhileItIsWaitedFor)
{
    auto handler = std::make_unique<Recorder>();
    fLooper->AddHandler(handler.get());
    ASSERT_TRUE(fLooper->Lock());
    status_t ofHandler = B_OK, ofLooper = B_OK;
    auto lockHandler =
        std::make_unique<test::KitThread>([&] { ofHandler = handler->LockLooperWithTimeout(B_INFINITE_TIMEOUT); });
    ASSERT_TRUE(test::AwaitState(lockHandler->Id(), B_THREAD_WAITING));
    auto lockLooper =
        std::make_unique<test::KitThread>([&] { ofLooper = fLooper->LockWithTimeout(B_INFINITE_TIMEOUT); });
    ASSERT_TRUE(test::AwaitState(lockLooper->Id(), B_THREAD_WAITING));
    handler = nullptr;
    fLooper->Quit();
    fLooper = nullptr;
    InterfaceLock::Get().ReleaseAll();
    lockHandler = nullptr;
    lockLooper = nullptr;
    EXPECT_EQ(ofHandler, B_BAD_HANDLER);
    EXPECT_EQ(ofLooper, B_BAD_HANDLER);
    EXPECT_EQ(InterfaceLock::Get().Lock(0), B_OK);
    InterfaceLock::Get().Unlock();
}

TEST_F(LooperTest, IsPostedToWhileTheLockIsHeld)
{
    ASSERT_TRUE(fLooper->Lock());
    std::thread([this] {
        EXPECT_EQ(fLooper->PostMessage(1), B_OK);
        EXPECT_EQ(BMessenger(fLooper).SendMessage(2), B_OK);
    }).join();
    fLooper->Unlock();
    Drain();
    EXPECT_EQ(fLooper->codes, (Codes{1, 2}));
}

TEST_F(LooperTest, TakesASampleWithTwoAllocations)
{
    Recorder handler;
    fLooper->AddHandler(&handler);
    BMessage message(1);
    message.AddPointer("Sysinfo*", this);
    message.SetNewestWins(true);
    const BMessenger messenger(&handler);
    constexpr size_t kRounds = 60;
    size_t count = 0;
    for (size_t round = 0; round < kRounds; ++round) {
        {
            const AllocationCounter counter;
            messenger.SendMessage(&message);
            messenger.SendMessage(&message);
            count += counter.Count();
        }
        Drain();
    }
    EXPECT_EQ(handler.codes.size(), kRounds);
    // Now and then the queue allocates another block.
    EXPECT_LE(count, 2 * 2 * kRounds + kRounds / 10);
}

TEST_F(LooperTest, SurvivesThreadsThatPostLockAndLoseIt)
{
    constexpr int kRounds = 200;
    std::atomic<int64> handled = 0;
    std::atomic<bool> ends = false;
    // Messengers that change under the threads; guarded by the mutex.
    std::mutex mutex;
    BMessenger toHandler, toLooper;

    const auto work = [&](unsigned seed) {
        for (unsigned i = seed; !ends; ++i) {
            BMessenger handler, looper;
            {
                std::lock_guard lock(mutex);
                handler = toHandler;
                looper = toLooper;
            }
            const BMessage newest = Newest(1, 1);
            switch (i % 5) {
            case 0:
                handler.SendMessage(1);
                break;
            case 1:
                handler.SendMessage(&newest);
                break;
            case 2:
                if (handler.LockTarget()) {
                    BLooper* owner = nullptr;
                    BHandler* target = handler.Target(&owner);
                    // A thread with the lock finds both alive.
                    EXPECT_NE(target, nullptr);
                    EXPECT_EQ(target->Looper(), owner);
                    owner->Unlock();
                }
                break;
            case 3:
                if (looper.LockTarget()) {
                    BLooper* owner = nullptr;
                    looper.Target(&owner);
                    if (i % 3 == 0)
                        owner->Quit();
                    InterfaceLock::Get().Unlock();
                }
                break;
            case 4:
                looper.SendMessage(2);
                EXPECT_GE(looper.Team(), -1);
                break;
            }
        }
    };
    std::vector<std::unique_ptr<test::KitThread>> threads;
    for (unsigned i = 0; i < 3; ++i)
        threads.push_back(std::make_unique<test::KitThread>([&work, i] { work(i); }));

    struct LooperWithHandler : RecordingLooper {
        explicit LooperWithHandler(const std::function<void(BMessage*)>& count)
            : RecordingLooper(count)
            , handler(count)
        {
            AddHandler(&handler);
        }
        Recorder handler;
    };
    const auto replace = [&](LooperWithHandler* looper) {
        BLooper* old = nullptr;
        toLooper.Target(&old);
        {
            std::lock_guard lock(mutex);
            toHandler = looper != nullptr ? BMessenger(&looper->handler) : BMessenger();
            toLooper = looper != nullptr ? BMessenger(looper) : BMessenger();
        }
        if (looper != nullptr)
            looper->Run();
        if (old != nullptr)
            old->Quit();
    };
    for (int round = 0; round < kRounds; ++round) {
        const int64 before = handled;
        {
            const kits::InterfaceLocker locker;
            replace(new LooperWithHandler([&handled](BMessage*) { ++handled; }));
        }
        ASSERT_TRUE(test::RunUntil([&] { return handled > before || !toHandler.IsValid(); }));
    }
    ends = true;
    threads.clear();
    {
        const kits::InterfaceLocker locker;
        replace(nullptr);
    }
    Drain();
    EXPECT_GT(handled, 0);
}
