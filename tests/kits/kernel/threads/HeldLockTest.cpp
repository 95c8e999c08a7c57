// SPDX-License-Identifier: MIT
#include "kits/kernel/HeldLock.h"

#include "kits/kernel/Threads.h"
#include "tests/support/Await.h"

#include <gtest/gtest.h>

#include <mutex>
#include <vector>

using test::TestThread;

namespace {

std::mutex sMutex;
std::vector<int> sReleased;

class NumberedLock : public kits::HeldLock {
public:
    explicit NumberedLock(int number)
        : fNumber(number)
    {
    }
    void ReleaseWhole() noexcept override
    {
        std::lock_guard lock(sMutex);
        sReleased.push_back(fNumber);
    }

private:
    const int fNumber;
};

class HeldLockTest : public testing::Test {
protected:
    HeldLockTest() { sReleased.clear(); }
    NumberedLock one{1};
    NumberedLock two{2};
    NumberedLock three{3};
};

} // namespace

TEST_F(HeldLockTest, ReleasesTheNewestFirstWhenTheThreadIsKilled)
{
    TestThread thread([this] {
        one.NoteHeld();
        two.NoteHeld();
        three.NoteHeld();
        snooze(B_INFINITE_TIMEOUT);
        return 0;
    });
    thread.Start();
    ASSERT_TRUE(thread.AwaitState(B_THREAD_ASLEEP));
    kill_thread(thread.Id());
    EXPECT_EQ(sReleased, (std::vector{3, 2, 1}));
}

TEST_F(HeldLockTest, ReleasesWhenTheThreadReturns)
{
    TestThread thread([this] {
        one.NoteHeld();
        return 0;
    });
    thread.Join();
    EXPECT_EQ(sReleased, std::vector{1});
}

TEST_F(HeldLockTest, ReleasesWhenAThreadOfOthersEnds)
{
    std::thread([this] {
        one.NoteHeld();
        two.NoteHeld();
    }).join();
    EXPECT_EQ(sReleased, (std::vector{2, 1}));
}

TEST_F(HeldLockTest, LeavesOutWhatWasGivenUpInAnyOrder)
{
    TestThread thread([this] {
        one.NoteHeld();
        two.NoteHeld();
        three.NoteHeld();
        two.NoteReleased();
        three.NoteReleased();
        two.NoteHeld();
        one.NoteReleased();
        return 0;
    });
    thread.Join();
    EXPECT_EQ(sReleased, std::vector{2});
}
