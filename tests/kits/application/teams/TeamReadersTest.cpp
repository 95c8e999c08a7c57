// SPDX-License-Identifier: MIT
// The main thread and the port's thread take turns in reading what another team sends.

#include "kits/application/Roster.h"
#include "kits/kernel/Bounds.h"
#include "kits/kernel/Clock.h"
#include "kits/kernel/Errors.h"
#include "tests/support/TeamFixture.h"

#include <csignal>
#include <filesystem>
#include <fstream>
#include <random>

using test::KitThread;
using test::Partner;
using test::Recorder;

namespace {

/// A partner that sends numbers to a handler of this process.
class TeamReadersTest : public test::TeamTest {
protected:
    TeamReadersTest() { fLooper->AddHandler(&fHandler); }

    /// Tells the partner where to send.
    void Introduce(const BMessenger& partner)
    {
        BMessage keep('keep');
        keep.AddMessenger("messenger", BMessenger(&fHandler));
        EXPECT_EQ(Ask(partner, keep).what, uint32('repl'));
    }

    static void LetSend(const BMessenger& partner, int32 count)
    {
        BMessage send('send');
        send.AddInt32("count", count);
        EXPECT_EQ(partner.SendMessage(&send), B_OK);
    }

    /// Runs the loop until this many numbers have come in all.
    bool RunUntilCount(size_t count)
    {
        return test::RunUntil([this, count] { return fNumbers.size() >= count; });
    }

    /// Waits, without a turn of the loop, until the port's thread has read so many numbers that are not handled yet.
    /// Does not sleep
    /// between two looks, so that it returns while that thread still reads.
    bool AwaitUnhandled(size_t count) const
    {
        const bigtime_t end = system_time() + 60000000;
        while (static_cast<size_t>(fLooper->CountMessages()) < count) {
            if (system_time() > end)
                return false;
            std::this_thread::yield();
        }
        return true;
    }

    void ExpectOrder(size_t count) const
    {
        ASSERT_EQ(fNumbers.size(), count);
        for (size_t i = 0; i < count; ++i)
            ASSERT_EQ(fNumbers[i], static_cast<int32>(i));
    }

    std::vector<int32> fNumbers;
    std::function<void()> fOnNumber = [] {};
    Recorder fHandler{[this](BMessage* message) {
        int32 number = -1;
        message->FindInt32("number", &number);
        fNumbers.push_back(number);
        fOnNumber();
    }};
};

/// Returns how often the thread of this process with that name has gone to sleep; -1 if there is none.
int64 CountSleeps(const std::string& name)
{
    for (const auto& task : std::filesystem::directory_iterator("/proc/self/task")) {
        std::string comm, word;
        std::getline(std::ifstream(task.path() / "comm"), comm);
        if (comm != name)
            continue;
        std::ifstream status(task.path() / "status");
        int64 count = -1;
        while (status >> word)
            if (word == "voluntary_ctxt_switches:")
                status >> count;
        return count;
    }
    return -1;
}

auto CountFiles()
{
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), std::filesystem::directory_iterator());
}

} // namespace

TEST_F(TeamReadersTest, WakesOnlyTheMainThreadThatWaits)
{
    const Partner partner;
    const BMessenger application = partner.Application();
    Introduce(application);
    LetSend(application, 1);
    ASSERT_TRUE(RunUntilCount(1));
    const int64 before = CountSleeps("team port");
    ASSERT_GE(before, 0);
    constexpr size_t kCount = 300;
    for (size_t i = 1; i <= kCount; ++i) {
        LetSend(application, 1);
        ASSERT_TRUE(RunUntilCount(1 + i));
    }
    // It does not wake for each message, only a few times if a busy machine held the main thread up.
    EXPECT_LT(CountSleeps("team port") - before, static_cast<int64>(kCount / 2));
}

TEST_F(TeamReadersTest, AnswersThreadsWhileTheMainThreadIsHeldUp)
{
    const Partner partner;
    const BMessenger application = partner.Application();
    for (int round = 0; round < 10; ++round) {
        // The main thread reads here, and then reads no more.
        EXPECT_EQ(Ask(application, 'echo').what, uint32('repl'));
        std::atomic<int> countAnswers = 0;
        KitThread thread([&] {
            for (int i = 0; i < 3; ++i) {
                BMessage reply;
                EXPECT_EQ(test::AwaitReply(application, 'echo', &reply), B_OK);
                ++countAnswers;
            }
        });
        EXPECT_TRUE(test::Await([&countAnswers] { return countAnswers == 3; }));
    }
}

TEST_F(TeamReadersTest, KeepTheOrderWhileTheyTakeTurns)
{
    const Partner partner;
    const BMessenger application = partner.Application();
    Introduce(application);
    // The limit of messages that wait for this process, whatever the other one has sent.
    constexpr size_t kCount = 8000;
    LetSend(application, kCount);
    std::mt19937 random(3);
    size_t next = 0;
    fOnNumber = [this, &next, &random] {
        if (fNumbers.size() < next)
            return;
        next += 1 + random() % 500;
        // The main thread is held up until the port's thread has read in its place as much as may wait here, beside
        // the message at hand.
        EXPECT_TRUE(AwaitUnhandled(std::min(kCount - fNumbers.size(), kits::bounds::kMostUnhandledOfAProcess - 1)));
    };
    while (fNumbers.size() < kCount && !HasFailure()) {
        // Sometimes it waits for a reply in between.
        ASSERT_TRUE(RunUntilCount(std::min(kCount, fNumbers.size() + random() % 500)));
        if (random() % 8 == 0)
            EXPECT_EQ(Ask(application, 'vald').what, uint32('repl'));
    }
    ExpectOrder(kCount);
}

TEST_F(TeamReadersTest, LoseNothingWhenTheMainThreadTurnsAwayAtAnyMoment)
{
    const Partner partner;
    const BMessenger application = partner.Application();
    Introduce(application);
    std::mt19937 random(4);
    size_t count = 0;
    for (int round = 0; round < 300; ++round) {
        fNumbers.clear();
        count = 1 + random() % 20;
        LetSend(application, static_cast<int32>(count));
        // Now and then the main thread comes back only after the other thread has read some of them.
        if (random() % 4 == 0)
            ASSERT_TRUE(AwaitUnhandled(1 + random() % count));
        ASSERT_TRUE(RunUntilCount(count));
        ExpectOrder(count);
    }
}

TEST_F(TeamReadersTest, LetGoOfWhoDiesWhileTheMainThreadReads)
{
    std::mt19937 random(5);
    EXPECT_EQ(be_roster->TeamFor(test::kPartnerSignature), B_NAME_NOT_FOUND);
    const auto before = CountFiles();
    for (int round = 0; round < 20; ++round) {
        Partner partner;
        const BMessenger application = partner.Application();
        Introduce(application);
        LetSend(application, 10000);
        ASSERT_TRUE(RunUntilCount(fNumbers.size() + random() % 1000));
        partner.Signal(SIGKILL);
        if (round % 2 == 0)
            partner.Await();
        EXPECT_TRUE(test::RunUntil([&] { return CountFiles() == before; }));
        fNumbers.clear();
    }
}

TEST_F(TeamReadersTest, CountAsHungWhenTheMainThreadDoesNotComeBy)
{
    std::vector<uint32> events;
    Recorder watcher([&events](BMessage* message) { events.push_back(message->what); });
    fLooper->AddHandler(&watcher);
    const Partner partner;
    const BMessenger application = partner.Application();
    // The partner's main thread has read, and is then held up; its other thread must not answer for it.
    EXPECT_EQ(Ask(application, 'echo').what, uint32('repl'));
    EXPECT_EQ(be_roster->StartWatching(BMessenger(&watcher)), B_OK);
    BMessage hang('hang');
    hang.AddInt64("time", 5000000);
    EXPECT_EQ(application.SendMessage(&hang), B_OK);
    EXPECT_TRUE(test::RunUntil([&events] { return events.size() == 2; }));
    EXPECT_EQ(events, (std::vector<uint32>{B_SOME_APP_QUIT, B_SOME_APP_LAUNCHED}));
    be_roster->StopWatching(BMessenger(&watcher));
}
