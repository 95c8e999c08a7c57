// SPDX-License-Identifier: MIT
#include "tests/long/LongTest.h"
#include "tests/src/prefs/store/StoreFixture.h"
#include "tests/support/BoundProcess.h"

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <random>
#include <thread>
#include <vector>

namespace {

constexpr int kFull = 10000;
constexpr int kShort = 100;
constexpr int kLongestLife = 4000; ///< lifetime of a writing process, in microseconds
constexpr int kMostCalls = 40;     ///< more than a store takes to be loaded and written
constexpr int32 kNumbers = 26;     ///< number of contents that StoreFixture can tell apart

/// One store that is written again and again, through more kills and failed writes than any machine will see. Only the
/// next load repairs anything in between, so damage would add up.
class StoresTest : public StoreFixture {
protected:
    StoresTest()
    {
        testing::internal::CaptureStderr();
        Write(0);
    }
    ~StoresTest() override { testing::internal::GetCapturedStderr(); }

    static int Times() { return LongTest::IsFull() ? kFull : kShort; }
    static int32 After(int32 number) { return (number + 1) % kNumbers; }
    int Below(int end) { return static_cast<int>(fRandom() % static_cast<unsigned>(end)); }

    /// There would be thousands of broken files that were kept aside.
    void RemoveKept() const
    {
        for (const std::string& name : fFolder.Names())
            if (name.starts_with(kKept))
                std::filesystem::remove(fFolder.Path(name));
    }

    static void Write(int32 number)
    {
        Preferences store(kName, false);
        Fill(store, number);
        ASSERT_EQ(store.Sync(), B_OK);
    }

    /// Loads the store, writes it with one number after the other, and prints each when it is on the disk.
    [[noreturn]] static void WriteForEver(int32 number, int pipe)
    {
        while (true) {
            Preferences store(kName, false);
            number = After(number);
            Fill(store, number);
            if (store.Sync() != B_OK || write(pipe, &number, sizeof(number)) != sizeof(number))
                _exit(1);
        }
    }

    /// Kills a process in the middle of that.
    /// @return the last number that was certainly on the disk
    int32 KillAWriter(int32 number)
    {
        int pipes[2];
        EXPECT_EQ(pipe(pipes), 0);
        const pid_t child = test::ForkBound();
        if (child == 0)
            WriteForEver(number, pipes[1]);
        close(pipes[1]);
        std::this_thread::sleep_for(std::chrono::microseconds(Below(kLongestLife)));
        kill(child, SIGKILL);
        int status = 0;
        EXPECT_EQ(waitpid(child, &status, 0), child);
        EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL) << status;
        while (read(pipes[0], &number, sizeof(number)) == sizeof(number))
            ++fCountWritten;
        close(pipes[0]);
        return number;
    }

    std::mt19937 fRandom{11};
    int fCountWritten = 0;
};

} // namespace

TEST_F(StoresTest, OutliveEveryKill)
{
    int32 number = 0;
    int countNew = 0;
    for (int turn = 0; turn < Times(); ++turn) {
        const int32 last = KillAWriter(number);
        if (Below(4) == 0) {
            // The process that repairs what the writer left is killed too.
            const int call = Below(kMostCalls / 2);
            RunsUntilKilled([call] {
                KillingDisk disk = KillingDisk::AtCall(call);
                const WithDisk with(disk);
                const Preferences store(kName, false);
            });
        }
        number = NumberAtStart();
        ASSERT_TRUE(number == last || number == After(last)) << "kill " << turn << ": " << last << ", " << number;
        countNew += number == last ? 0 : 1;
        RemoveKept();
    }
    RecordProperty("written", fCountWritten);
    if (LongTest::IsFull())
        std::printf("%d kills; %d writes had ended before, %d were on the disk though nobody had said so yet\n",
                    Times(), fCountWritten, countNew);
    EXPECT_GT(fCountWritten, 0);
}

TEST_F(StoresTest, OutliveEveryFailedWrite)
{
    const std::vector<int> errors = {ENOSPC, EIO, EDQUOT, EROFS, EACCES, EMFILE, ENOMEM};
    const size_t size = fFolder.Get(kFile).size();
    int32 number = 0;
    int countFailed = 0;
    int turns = 0;
    while (countFailed < Times()) {
        ++turns;
        Preferences store(kName, false);
        const int32 next = After(number);
        Fill(store, next);
        const int error = errors[static_cast<size_t>(Below(static_cast<int>(errors.size())))];
        FailingDisk failing(Below(kMostCalls), error, Below(2) == 0 ? 1 : 1 + Below(kMostCalls));
        FullDisk full(static_cast<size_t>(Below(static_cast<int>(size) + 50)), error);
        status_t status;
        {
            const WithDisk with(Below(3) == 0 ? static_cast<kits::FailingDevice&>(full) : failing);
            status = store.Sync();
        }
        const int32 found = NumberAtStart();
        ASSERT_TRUE(found == next || (found == number && status != B_OK))
            << "turn " << turns << ": " << number << ", " << found << ", status " << status;
        countFailed += status != B_OK ? 1 : 0;
        number = found;
        RemoveKept();
    }
    if (LongTest::IsFull())
        std::printf("%d failed writes of %d\n", countFailed, turns);
    EXPECT_LT(countFailed, turns);
}
