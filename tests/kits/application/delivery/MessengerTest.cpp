// SPDX-License-Identifier: MIT
#include "kits/application/Messenger.h"

#include "kits/application/EventLoop.h"
#include "kits/application/InterfaceLock.h"
#include "kits/application/MainThread.h"
#include "kits/application/messages/MessagePrivate.h"
#include "kits/kernel/Errors.h"
#include "kits/support/TypeConstants.h"
#include "tests/support/Loop.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <atomic>

using kits::InterfaceLock;
using test::KitThread;
using test::Recorder;
using test::RecordingLooper;
using Codes = std::vector<uint32>;

namespace {

/// A handler that answers code 1 with 101, code 2 not at all, code 3 with a question of its own, and code 5 with 105 if
/// it still can. It keeps a message of code 4.
class MessengerTest : public testing::Test {
protected:
    MessengerTest()
    {
        fLooper->Run();
        fLooper->AddHandler(&fHandler);
    }
    ~MessengerTest() override
    {
        const kits::InterfaceLocker locker;
        fLooper->RemoveHandler(&fHandler);
        fLooper->Quit();
    }

    /// Sends on another thread and waits for the reply, while the main thread runs its loop.
    status_t Ask(const BMessenger& messenger, uint32 code, BMessage* reply, bigtime_t timeout = B_INFINITE_TIMEOUT)
    {
        std::atomic<bool> isDone = false;
        status_t status = B_ERROR;
        KitThread thread([&] {
            const BMessage message(code);
            status = messenger.SendMessage(&message, reply, 0, timeout);
            isDone = true;
        });
        EXPECT_TRUE(test::RunUntil([&isDone] { return isDone.load(); }));
        return status;
    }

    RecordingLooper* fLooper = new RecordingLooper;
    std::unique_ptr<BMessage> fKept;
    Recorder fHandler{[this](BMessage* message) {
        switch (message->what) {
        case 1: {
            BMessage reply(101);
            reply.AddInt32("number", 7);
            EXPECT_TRUE(message->ReturnAddress().IsValid());
            EXPECT_EQ(message->SendReply(&reply, static_cast<BHandler*>(nullptr), B_INFINITE_TIMEOUT), B_OK);
            fAnswered = message->IsSourceWaiting() ? B_ERROR : message->SendReply(102);
            break;
        }
        case 3:
            message->SendReply(103, &fHandler);
            break;
        case 4:
            fKept = std::make_unique<BMessage>(std::move(*message));
            break;
        case 5:
            message->SendReply(105);
            break;
        default:
            break;
        }
    }};
    status_t fAnswered = B_OK;
};

} // namespace

TEST_F(MessengerTest, LeadsToWhatItWasMadeFor)
{
    status_t status = B_OK;
    EXPECT_FALSE(BMessenger(nullptr, nullptr, &status).IsValid());
    EXPECT_EQ(status, B_BAD_VALUE);
    Recorder stranger;
    EXPECT_FALSE(BMessenger(&stranger, nullptr, &status).IsValid());
    EXPECT_EQ(status, B_BAD_HANDLER);
    EXPECT_FALSE(BMessenger(&stranger, fLooper, &status).IsValid());
    EXPECT_EQ(status, B_BAD_HANDLER);
    RecordingLooper other;
    EXPECT_FALSE(BMessenger(&fHandler, &other, &status).IsValid());
    EXPECT_EQ(status, B_MISMATCHED_VALUES);
    EXPECT_TRUE(BMessenger(&fHandler, fLooper, &status).IsValid());
    EXPECT_EQ(status, B_OK);

    const BMessenger messenger(&fHandler);
    BLooper* looper = nullptr;
    EXPECT_EQ(messenger.Target(&looper), &fHandler);
    EXPECT_EQ(looper, fLooper);
    EXPECT_TRUE(messenger.IsTargetLocal());
    EXPECT_EQ(messenger.Team(), getpid());
    EXPECT_EQ(BMessenger(nullptr, fLooper).Target(nullptr), fLooper);

    const BMessenger none;
    EXPECT_FALSE(none.IsValid());
    EXPECT_FALSE(none.IsTargetLocal());
    EXPECT_EQ(none.Team(), -1);
    EXPECT_EQ(none.Target(&looper), nullptr);
    EXPECT_EQ(looper, nullptr);
    EXPECT_EQ(none.SendMessage(1), B_BAD_HANDLER);
    EXPECT_FALSE(none.LockTarget());
}

TEST_F(MessengerTest, EqualsThoseToTheSameTarget)
{
    EXPECT_EQ(BMessenger(&fHandler), BMessenger(&fHandler, fLooper));
    EXPECT_FALSE(BMessenger(&fHandler) == BMessenger(fLooper));
    EXPECT_EQ(BMessenger(), BMessenger());
}

TEST_F(MessengerTest, KnowsWhenItsTargetIsGone)
{
    auto handler = std::make_unique<Recorder>();
    fLooper->AddHandler(handler.get());
    const BMessenger messenger(handler.get());
    EXPECT_TRUE(messenger.LockTarget());
    fLooper->Unlock();
    fLooper->RemoveHandler(handler.get());
    EXPECT_FALSE(messenger.IsValid());
    EXPECT_EQ(messenger.SendMessage(1), B_BAD_HANDLER);
    fLooper->AddHandler(handler.get());
    EXPECT_TRUE(messenger.IsValid());
    handler = nullptr;
    EXPECT_FALSE(messenger.IsValid());
    EXPECT_TRUE(messenger.IsTargetLocal());
    EXPECT_EQ(messenger.Target(nullptr), nullptr);
    EXPECT_EQ(messenger.LockTargetWithTimeout(0), B_BAD_HANDLER);
    EXPECT_FALSE(InterfaceLock::Get().IsHeld());
}

TEST_F(MessengerTest, LocksItsTarget)
{
    const BMessenger messenger(&fHandler);
    {
        const kits::InterfaceLocker locker;
        KitThread([&messenger] {
            EXPECT_EQ(messenger.LockTargetWithTimeout(0), B_WOULD_BLOCK);
            EXPECT_EQ(messenger.LockTargetWithTimeout(1000), B_TIMED_OUT);
        }).Join();
    }
    KitThread([&messenger] {
        EXPECT_EQ(messenger.LockTargetWithTimeout(1000000), B_OK);
        InterfaceLock::Get().Unlock();
    }).Join();
}

TEST_F(MessengerTest, SendsAnswersToTheHandlerNamed)
{
    Recorder asker([this](BMessage* message) {
        EXPECT_EQ(message->ReturnAddress().IsValid(), message->what == 103);
        if (message->what == 103)
            message->SendReply(6);
    });
    fLooper->AddHandler(&asker);
    const BMessenger messenger(&fHandler);
    EXPECT_EQ(messenger.SendMessage(1, &asker), B_OK);
    EXPECT_EQ(messenger.SendMessage(2, &asker), B_OK);
    EXPECT_EQ(messenger.SendMessage(3, &asker), B_OK);
    const BMessage message(1);
    EXPECT_EQ(messenger.SendMessage(&message, BMessenger(&asker)), B_OK);
    EXPECT_EQ(fLooper->PostMessage(1, &fHandler, &asker), B_OK);
    EXPECT_TRUE(test::RunUntil([this] { return fHandler.codes.size() == 6; }));
    EXPECT_EQ(fHandler.codes, (Codes{1, 2, 3, 1, 1, 6}));
    EXPECT_TRUE(test::RunUntil([&asker] { return asker.codes.size() == 7; }));
    // Nobody waits, so all its answers are sent, including the second answer to each 1.
    EXPECT_EQ(asker.codes, (Codes{101, 102, 103, 101, 102, 101, 102}));
}

TEST_F(MessengerTest, RefusesAnswersNobodyAskedFor)
{
    BMessage never(1);
    EXPECT_EQ(never.SendReply(2), B_BAD_REPLY);
    EXPECT_EQ(never.SendReply(static_cast<BMessage*>(nullptr)), B_BAD_VALUE);
    status_t status = B_OK;
    Recorder handler([&status](BMessage* message) { status = message->SendReply(2); });
    fLooper->AddHandler(&handler);
    fLooper->PostMessage(1, &handler);
    EXPECT_TRUE(test::RunUntil([&handler] { return handler.codes.size() == 1; }));
    EXPECT_EQ(status, B_BAD_REPLY);
    // The asker is gone before the answer.
    auto asker = std::make_unique<Recorder>();
    fLooper->AddHandler(asker.get());
    fLooper->PostMessage(1, &handler, asker.get());
    asker = nullptr;
    status = B_OK;
    EXPECT_TRUE(test::RunUntil([&handler] { return handler.codes.size() == 2; }));
    EXPECT_EQ(status, B_BAD_REPLY);
}

TEST_F(MessengerTest, GivesTheAnswerToTheWaitingThread)
{
    BMessage reply('keep');
    EXPECT_EQ(Ask(BMessenger(&fHandler), 1, &reply), B_OK);
    EXPECT_EQ(reply.what, 101u);
    EXPECT_TRUE(reply.HasData("number", B_INT32_TYPE));
    EXPECT_EQ(fAnswered, B_DUPLICATE_REPLY);
}

TEST_F(MessengerTest, AnswersAWaitingThreadWithoutTheMainLoop)
{
    BMessage reply;
    KitThread asker([&] { EXPECT_EQ(test::AwaitReply(BMessenger(&fHandler), 4, &reply), B_OK); });
    ASSERT_TRUE(test::RunUntil([this] { return fKept != nullptr; }));
    EXPECT_TRUE(test::AwaitState(asker.Id(), B_THREAD_RECEIVING));
    EXPECT_TRUE(fKept->IsSourceWaiting());
    EXPECT_EQ(fKept->SendReply(9), B_OK);
    asker.Join();
    EXPECT_EQ(reply.what, 9u);
    EXPECT_EQ(fKept->SendReply(9), B_DUPLICATE_REPLY);
}

TEST_F(MessengerTest, IsAnsweredWhenTheMessageIsDeletedUnanswered)
{
    BMessage reply;
    EXPECT_EQ(Ask(BMessenger(&fHandler), 2, &reply), B_OK);
    EXPECT_EQ(reply.what, uint32(B_NO_REPLY));
    // A copy has neither the duty nor the right to answer.
    Recorder copier([](BMessage* message) {
        BMessage copy(*message);
        EXPECT_FALSE(copy.IsSourceWaiting());
        EXPECT_EQ(copy.SendReply(5), B_BAD_REPLY);
        copy = *message;
        EXPECT_EQ(copy.SendReply(5), B_BAD_REPLY);
        EXPECT_TRUE(message->IsSourceWaiting());
        EXPECT_EQ(message->SendReply(6), B_OK);
    });
    fLooper->AddHandler(&copier);
    EXPECT_EQ(Ask(BMessenger(&copier), 1, &reply), B_OK);
    EXPECT_EQ(reply.what, 6u);
    // A move takes the duty along, and overwriting the message fulfils it.
    Recorder mover([](BMessage* message) {
        BMessage taken(std::move(*message));
        EXPECT_FALSE(message->IsSourceWaiting());
        EXPECT_TRUE(taken.IsSourceWaiting());
        taken = BMessage(5);
    });
    fLooper->AddHandler(&mover);
    EXPECT_EQ(Ask(BMessenger(&mover), 1, &reply), B_OK);
    EXPECT_EQ(reply.what, uint32(B_NO_REPLY));
}

TEST_F(MessengerTest, IsAnsweredWhenTheTargetGoesBeforeTheMessage)
{
    const auto ask = [](const BMessenger& messenger, BMessage* reply, const std::function<void()>& destroy) {
        const kits::InterfaceLocker locker;
        KitThread asker([&] { EXPECT_EQ(test::AwaitReply(messenger, 1, reply), B_OK); });
        EXPECT_TRUE(test::AwaitState(asker.Id(), B_THREAD_RECEIVING));
        destroy();
    };
    auto handler = std::make_unique<Recorder>();
    fLooper->AddHandler(handler.get());
    BMessage reply;
    ask(BMessenger(handler.get()), &reply, [&handler] { handler = nullptr; });
    EXPECT_EQ(reply.what, uint32(B_NO_REPLY));
    auto* looper = new RecordingLooper;
    reply.what = 0;
    ask(BMessenger(looper), &reply, [looper] { looper->Quit(); });
    EXPECT_EQ(reply.what, uint32(B_NO_REPLY));
    // Nor is it forgotten when a newer message replaces it.
    BMessage newest(7), second;
    newest.SetNewestWins(true);
    reply.what = 0;
    const auto askNewest = [&](BMessage* answer) {
        EXPECT_EQ(BMessenger(&fHandler).SendMessage(&newest, answer, 0, B_INFINITE_TIMEOUT), B_OK);
    };
    KitThread first([&] { askNewest(&reply); });
    EXPECT_TRUE(test::AwaitState(first.Id(), B_THREAD_RECEIVING));
    std::atomic<bool> isDone = false;
    KitThread other([&] {
        askNewest(&second);
        isDone = true;
    });
    first.Join();
    EXPECT_EQ(reply.what, uint32(B_NO_REPLY));
    EXPECT_EQ(fHandler.codes.size(), 0u);
    EXPECT_TRUE(test::RunUntil([&isDone] { return isDone.load(); }));
    EXPECT_EQ(second.what, uint32(B_NO_REPLY));
}

TEST_F(MessengerTest, GivesUpWaitingInTime)
{
    BMessage reply('keep');
    EXPECT_EQ(Ask(BMessenger(&fHandler), 4, &reply, 1000), B_TIMED_OUT);
    EXPECT_TRUE(test::RunUntil([this] { return fKept != nullptr; }));
    EXPECT_EQ(fKept->SendReply(5), B_BAD_REPLY);
    EXPECT_EQ(Ask(BMessenger(&fHandler), 4, &reply, 0), B_WOULD_BLOCK);
    EXPECT_EQ(reply.what, uint32('keep'));
}

TEST_F(MessengerTest, DoesNotWaitWhereNoAnswerCanCome)
{
    BMessage reply('keep');
    KitThread([&] {
        const BMessenger messenger(&fHandler);
        {
            const kits::InterfaceLocker locker;
            EXPECT_EQ(test::AwaitReply(messenger, 1, &reply), B_NOT_ALLOWED);
        }
        EXPECT_EQ(test::AwaitReply(BMessenger(), 1, &reply), B_BAD_HANDLER);
        EXPECT_EQ(messenger.SendMessage(nullptr, &reply), B_BAD_VALUE);
        EXPECT_EQ(test::AwaitReply(messenger, 1, static_cast<BMessage*>(nullptr)), B_BAD_VALUE);
        for (int32 i = 0; i < BLooper::kQueueCapacity; ++i)
            messenger.SendMessage(9);
        EXPECT_EQ(test::AwaitReply(messenger, 1, &reply), B_WOULD_BLOCK);
    }).Join();
    EXPECT_EQ(reply.what, uint32('keep'));
    EXPECT_EQ(BMessenger(&fHandler).SendMessage(static_cast<const BMessage*>(nullptr), &fHandler), B_BAD_VALUE);
    EXPECT_EQ(BMessenger(&fHandler).SendMessage(nullptr, BMessenger()), B_BAD_VALUE);
    EXPECT_TRUE(fHandler.codes.empty());
}

TEST_F(MessengerTest, LetsAThreadBeKilledWhileItWaits)
{
    KitThread asker([this] {
        BMessage reply;
        test::AwaitReply(BMessenger(&fHandler), 4, &reply);
        ADD_FAILURE() << "went on";
    });
    EXPECT_TRUE(test::AwaitState(asker.Id(), B_THREAD_RECEIVING));
    EXPECT_EQ(kill_thread(asker.Id()), B_OK);
    EXPECT_TRUE(test::RunUntil([this] { return fKept != nullptr; }));
    EXPECT_FALSE(fKept->ReturnAddress().IsValid());
    EXPECT_EQ(fKept->SendReply(5), B_BAD_REPLY);
}

TEST_F(MessengerTest, IsAnsweredOnTheMainThreadToo)
{
    auto* other = new RecordingLooper;
    other->Run();
    other->PostMessage(7);
    fLooper->PostMessage(8, &fHandler);
    BMessage reply;
    EXPECT_EQ(test::AwaitReply(BMessenger(&fHandler), 1, &reply), B_OK);
    EXPECT_EQ(reply.what, 101u);
    // Messages posted before, to any looper, were handled before; the lock is in its previous state.
    EXPECT_EQ(other->codes, Codes{7});
    EXPECT_EQ(fHandler.codes, (Codes{8, 1}));
    EXPECT_FALSE(InterfaceLock::Get().IsHeld());
    EXPECT_EQ(kits::NestedLoop::Count(), 0);
    EXPECT_EQ(test::AwaitReply(BMessenger(&fHandler), 2, &reply), B_OK);
    EXPECT_EQ(reply.what, uint32(B_NO_REPLY));
    const kits::InterfaceLocker locker;
    other->Quit();
}

TEST_F(MessengerTest, IsAnsweredInsideAMessage)
{
    BMessage reply;
    int32 depth = 0;
    Recorder asker([&](BMessage*) {
        depth = InterfaceLock::Get().Depth();
        EXPECT_EQ(test::AwaitReply(BMessenger(&fHandler), 1, &reply), B_OK);
        EXPECT_EQ(InterfaceLock::Get().Depth(), depth);
        // Even to itself.
        BMessage own;
        if (asker.codes.size() == 1) {
            EXPECT_EQ(test::AwaitReply(BMessenger(fLooper), 1, &own), B_OK);
            EXPECT_EQ(own.what, uint32(B_NO_REPLY));
        }
    });
    fLooper->AddHandler(&asker);
    fLooper->PostMessage(1, &asker);
    EXPECT_TRUE(test::RunUntil([this] { return fLooper->codes.size() == 1; }));
    EXPECT_EQ(reply.what, 101u);
    EXPECT_GT(depth, 0);
}

TEST_F(MessengerTest, IsAnsweredOnTheMainThreadByAnother)
{
    KitThread answerer([this] {
        EXPECT_TRUE(test::Await([this] {
            const kits::InterfaceLocker locker;
            return fKept != nullptr;
        }));
        const kits::InterfaceLocker locker;
        EXPECT_EQ(fKept->SendReply(9), B_OK);
    });
    BMessage reply;
    EXPECT_EQ(test::AwaitReply(BMessenger(&fHandler), 4, &reply), B_OK);
    EXPECT_EQ(reply.what, 9u);
}

TEST_F(MessengerTest, GivesUpWaitingOnTheMainThread)
{
    BMessage reply('keep');
    const BMessage message(4);
    EXPECT_EQ(BMessenger(&fHandler).SendMessage(&message, &reply, 0, 1000), B_TIMED_OUT);
    EXPECT_EQ(fKept->SendReply(5), B_BAD_REPLY);
    EXPECT_EQ(BMessenger(&fHandler).SendMessage(&message, &reply, 0, 0), B_WOULD_BLOCK);
    // Destroying something ends the wait: otherwise the waiting code's own object could be destroyed.
    bool isDestroyed = false;
    kits::RunOnMainThread([&isDestroyed] { kits::RunAtOutermostLoop([&isDestroyed] { isDestroyed = true; }); });
    EXPECT_EQ(BMessenger(&fHandler).SendMessage(&message, &reply), B_CANCELED);
    EXPECT_FALSE(isDestroyed);
    EXPECT_TRUE(test::RunUntil([&isDestroyed] { return isDestroyed; }));
    EXPECT_EQ(reply.what, uint32('keep'));
}

TEST_F(MessengerTest, AnswersManyThreadsAtOnce)
{
    std::atomic<int> countDone = 0;
    std::vector<std::unique_ptr<KitThread>> threads;
    for (int i = 0; i < 4; ++i)
        threads.push_back(std::make_unique<KitThread>([&] {
            for (uint32 round = 0; round < 200; ++round) {
                const uint32 code = round % 3 == 0 ? 2 : 5;
                const BMessage message(code);
                BMessage reply;
                const bigtime_t timeout = round % 7 == 0 ? 50 : B_INFINITE_TIMEOUT;
                const status_t status = BMessenger(&fHandler).SendMessage(&message, &reply, 0, timeout);
                if (status == B_OK)
                    EXPECT_EQ(reply.what, code == 2 ? uint32(B_NO_REPLY) : 100 + code);
                else
                    EXPECT_EQ(status, B_TIMED_OUT);
            }
            ++countDone;
        }));
    EXPECT_TRUE(test::RunUntil([&countDone] { return countDone == 4; }));
}

TEST_F(MessengerTest, ReachesNoOtherTeamBeforeThereIsAPort)
{
    const BMessenger elsewhere = kits::MessageAccess::MessengerTo({kits::ThisTeam() + 1, 7});
    EXPECT_FALSE(elsewhere.IsValid());
    EXPECT_EQ(elsewhere.SendMessage(uint32(1)), B_BAD_HANDLER);
    EXPECT_EQ(elsewhere.Team(), kits::TeamIdOf(kits::ThisTeam()));
}
