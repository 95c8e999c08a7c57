// SPDX-License-Identifier: MIT
#include "kits/kernel/clock/BootMoment.h"

#include "kits/kernel/Errors.h"
#include "tests/support/Await.h"
#include "tests/support/BoundProcess.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

class BootMomentTest : public testing::Test {
protected:
    BootMomentTest()
    {
        std::string name = (fs::temp_directory_path() / "boot-XXXXXX").string();
        EXPECT_NE(mkdtemp(name.data()), nullptr);
        folder = name;
        path = folder / "boot";
    }
    ~BootMomentTest() override { fs::remove_all(folder); }

    fs::path folder;
    fs::path path;
};

} // namespace

TEST_F(BootMomentTest, IsReadAsItIsWritten)
{
    const kits::BootMoment boot{"a4520e5b-4b1b-4465-8a7d-aedaf1719be5", 1735689600123456};
    EXPECT_EQ(kits::ParseBootMoment(kits::FormatBootMoment(boot)), boot);
    EXPECT_EQ(kits::FormatBootMoment({"x", 5}), "boot x\nmoment 5\ncheck 6f161e9006e9d0dc\n");
}

TEST_F(BootMomentTest, RefusesMomentsThatCannotBe)
{
    EXPECT_FALSE(kits::ParseBootMoment(kits::FormatBootMoment({"x", -1})).has_value());
    EXPECT_FALSE(kits::ParseBootMoment(kits::FormatBootMoment({"x", INT64_MAX})).has_value());
    EXPECT_FALSE(kits::ParseBootMoment("").has_value());
    EXPECT_FALSE(kits::ParseBootMoment("boot x\nmoment \ncheck 0\n").has_value());
}

TEST_F(BootMomentTest, WhoComesSecondTakesTheMomentOfTheFirst)
{
    kits::BootMoment first{"boot-1", 111};
    EXPECT_EQ(kits::KeepBootMoment(path, &first), B_OK);
    kits::BootMoment second{"boot-1", 222};
    EXPECT_EQ(kits::KeepBootMoment(path, &second), B_OK);
    EXPECT_EQ(second.moment, 111);
}

TEST_F(BootMomentTest, TwoBootsHaveTwoMomentsThoughTheClockBeginsAnew)
{
    // Without a real-time clock, each boot begins at about the same time.
    std::set<bigtime_t> moments;
    for (int number = 0; number < 30; ++number) {
        kits::BootMoment boot{"boot-" + std::to_string(number), 5000000000 + number * 7919 % 90000};
        ASSERT_EQ(kits::KeepBootMoment(path, &boot), B_OK);
        for (const bigtime_t other : moments)
            EXPECT_GE(std::abs(boot.moment - other), 1000000);
        moments.insert(boot.moment);
        kits::BootMoment kept;
        EXPECT_EQ(kits::LoadBootMoment(path, &kept), B_OK);
        EXPECT_EQ(kept, boot);
    }
    // A machine that knows the time keeps it, later or earlier.
    for (const bigtime_t moment : {bigtime_t{9000000000}, bigtime_t{9001000000}, bigtime_t{1000000000}}) {
        kits::BootMoment boot{"boot at " + std::to_string(moment), moment};
        ASSERT_EQ(kits::KeepBootMoment(path, &boot), B_OK);
        EXPECT_EQ(boot.moment, moment);
    }
}

TEST_F(BootMomentTest, ADiskThatIsFullAtAnyByteLeavesTheOldOne)
{
    kits::BootMoment old{"boot-0", 1};
    ASSERT_EQ(kits::KeepBootMoment(path, &old), B_OK);
    const size_t size = kits::FormatBootMoment({"boot-1", 2000000000}).size();
    for (size_t room = 0; room <= size; ++room) {
        const pid_t writer = test::ForkBound();
        if (writer == 0) {
            signal(SIGXFSZ, SIG_IGN);
            const rlimit limit{room, room};
            kits::BootMoment next{"boot-1", 2000000000};
            _exit(setrlimit(RLIMIT_FSIZE, &limit) == 0 && kits::KeepBootMoment(path, &next) == B_OK ? 0 : 1);
        }
        int status = -1;
        waitpid(writer, &status, 0);
        ASSERT_TRUE(WIFEXITED(status));
        EXPECT_EQ(WEXITSTATUS(status) == 0, room == size) << "room for " << room;
        kits::BootMoment found;
        ASSERT_EQ(kits::LoadBootMoment(path, &found), B_OK) << "room for " << room;
        EXPECT_EQ(found.bootId, room == size ? "boot-1" : "boot-0");
        EXPECT_EQ(std::distance(fs::directory_iterator(folder), fs::directory_iterator()), 1) << "nothing is left";
    }
}

TEST_F(BootMomentTest, ManyProcessesAtOnceGetOneMoment)
{
    int results[2];
    ASSERT_EQ(pipe(results), 0);
    constexpr int kProcesses = 8;
    for (int i = 0; i < kProcesses; ++i) {
        if (test::ForkBound() == 0) {
            kits::BootMoment boot{"boot-1", 1000 + i};
            const bool isKept = kits::KeepBootMoment(path, &boot) == B_OK;
            const ssize_t written = write(results[1], &boot.moment, sizeof(boot.moment));
            _exit(isKept && written == sizeof(boot.moment) ? 0 : 1);
        }
    }
    std::vector<bigtime_t> moments(kProcesses);
    for (bigtime_t& moment : moments) {
        int status = -1;
        wait(&status);
        EXPECT_EQ(status, 0);
        EXPECT_EQ(read(results[0], &moment, sizeof(moment)), ssize_t{sizeof(moment)});
    }
    for (bigtime_t moment : moments)
        EXPECT_EQ(moment, moments[0]);
    close(results[0]);
    close(results[1]);
}

TEST_F(BootMomentTest, IsWholeWhereverTheWriterIsKilled)
{
    kits::BootMoment boot{"boot-0", 1};
    ASSERT_EQ(kits::KeepBootMoment(path, &boot), B_OK);
    for (int run = 0; run < 100; ++run) {
        const pid_t writer = test::ForkBound();
        if (writer == 0) {
            for (bigtime_t i = 10;; ++i) {
                kits::BootMoment next{"boot-" + std::to_string(i), i};
                kits::KeepBootMoment(path, &next);
            }
        }
        // Kills the writer at a different moment each time.
        kits::BootMoment written;
        ASSERT_TRUE(
            test::Await([&] { return kits::LoadBootMoment(path, &written) == B_OK && written.moment > 10 + run % 5; }));
        kill(writer, SIGKILL);
        waitpid(writer, nullptr, 0);
        kits::BootMoment found;
        ASSERT_EQ(kits::LoadBootMoment(path, &found), B_OK);
        kits::BootMoment after{"after", 5};
        ASSERT_EQ(kits::KeepBootMoment(path, &after), B_OK) << "what was left behind is in nobody's way";
    }
}

TEST_F(BootMomentTest, AProcessThatHoldsTheFolderDoesNotStopTheOthersForLong)
{
    const int held = open(folder.c_str(), O_RDONLY | O_DIRECTORY);
    ASSERT_EQ(flock(held, LOCK_EX), 0);
    kits::BootMoment boot{"boot-1", 111};
    EXPECT_EQ(kits::KeepBootMoment(path, &boot), B_TIMED_OUT);
    EXPECT_EQ(boot.moment, 111);
    EXPECT_FALSE(fs::exists(path));
    close(held);
}
