// SPDX-License-Identifier: MIT
#include "kits/kernel/Clock.h"

#include "kits/kernel/Errors.h"
#include "kits/kernel/Threads.h"
#include "kits/kernel/clock/BootMoment.h"
#include "tests/kits/kernel/clock/TestClock.h"
#include "tests/support/Await.h"

#include <gtest/gtest.h>
#include <stdlib.h>
#include <time.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace fs = std::filesystem;

namespace {

constexpr bigtime_t kSecond = 1000000;
constexpr bigtime_t kDay = 86400 * kSecond;
/// The first moments of 2001 and of 2025.
constexpr bigtime_t k2001 = 978307200 * kSecond;
constexpr bigtime_t k2025 = 1735689600 * kSecond;

class ClockTest : public testing::Test {
protected:
    ClockTest()
    {
        std::string name = (fs::temp_directory_path() / "clock-XXXXXX").string();
        EXPECT_NE(mkdtemp(name.data()), nullptr);
        folder = name;
        path = folder / "boot";
    }
    ~ClockTest() override { fs::remove_all(folder); }

    std::string Text() const
    {
        std::ostringstream text;
        text << std::ifstream(path).rdbuf();
        return text.str();
    }
    void Write(const std::string& text) const { std::ofstream(path, std::ios::trunc) << text; }

    fs::path folder;
    fs::path path;
    TestClock clock{k2025};
};

} // namespace

TEST(MachineClockTest, CountsFromTheStartOfTheMachine)
{
    timespec uptime;
    clock_gettime(CLOCK_BOOTTIME, &uptime);
    const bigtime_t before = uptime.tv_sec * kSecond + uptime.tv_nsec / 1000;
    const bigtime_t now = system_time();
    clock_gettime(CLOCK_BOOTTIME, &uptime);
    EXPECT_GE(now, before);
    EXPECT_LE(now, uptime.tv_sec * kSecond + uptime.tv_nsec / 1000);
}

TEST(MachineClockTest, KnowsTheTimeAndTheBoot)
{
    // The moment of boot lies between these two, and is the same one the next time.
    bigtime_t earliest[2];
    bigtime_t latest[2];
    for (int i = 0; i < 2; ++i) {
        const bigtime_t first = system_time();
        const bigtime_t real = real_time_clock_usecs();
        earliest[i] = real - system_time();
        latest[i] = real - first;
        ASSERT_TRUE(test::Await([first] { return system_time() > first + 2000; }));
    }
    EXPECT_LE(earliest[0], latest[1]);
    EXPECT_LE(earliest[1], latest[0]);
    EXPECT_TRUE(kits::ClockIsPlausible());
}

TEST_F(ClockTest, TheMomentOfBootIsOneWhateverIsDoneToTheWallClock)
{
    EXPECT_EQ(real_time_clock_usecs(), k2025);
    clock.Advance(kDay);
    EXPECT_EQ(real_time_clock_usecs(), k2025 + kDay);
    clock.wallTime += 3600 * kSecond;
    EXPECT_EQ(real_time_clock_usecs(), k2025 + kDay) << "a step";
    for (int i = 0; i < 1000; ++i) {
        clock.Advance(kSecond);
        clock.wallTime += 500; // a slew
        ASSERT_EQ(real_time_clock_usecs() - system_time(), k2025 - kSecond);
    }
}

TEST_F(ClockTest, TheMomentOfBootIsTheKeptOneHoweverLongItTakesToAsk)
{
    /// Time passes with every reading.
    class BusyClock : public TestClock {
    public:
        using TestClock::TestClock;
        bigtime_t SystemTime() override
        {
            Advance(90000);
            return systemTime;
        }
    };
    BusyClock busy(k2025);
    EXPECT_EQ(kits::SetBootMomentFile(path.c_str()), B_OK);
    kits::BootMoment kept;
    ASSERT_EQ(kits::LoadBootMoment(path, &kept), B_OK);
    for (int i = 0; i < 100; ++i)
        ASSERT_EQ(kits::MomentOfBoot(), kept.moment);
    const bigtime_t now = real_time_clock_usecs();
    EXPECT_EQ(now, kept.moment + busy.systemTime);
}

TEST_F(ClockTest, TheMomentOfBootIsMeasuredWhileTheClockIsPlainlyWrong)
{
    clock.wallTime = 1000 * kSecond;
    clock.Restart();
    EXPECT_EQ(kits::MomentOfBoot(), 999 * kSecond);
    clock.wallTime += 5 * kSecond;
    EXPECT_EQ(kits::MomentOfBoot(), 1004 * kSecond);
    clock.wallTime = k2025;
    EXPECT_EQ(kits::MomentOfBoot(), k2025 - kSecond);
    clock.wallTime = k2025 + 5 * kSecond;
    EXPECT_EQ(kits::MomentOfBoot(), k2025 - kSecond) << "and from then on one";
}

TEST_F(ClockTest, TheMomentOfBootIsKeptForLaterStarts)
{
    EXPECT_EQ(kits::SetBootMomentFile(path.c_str()), B_OK);
    const bigtime_t moment = real_time_clock_usecs() - system_time();
    clock.Advance(7 * kDay);
    clock.wallTime -= 5 * kDay;
    clock.Restart();
    EXPECT_EQ(kits::SetBootMomentFile(path.c_str()), B_OK);
    EXPECT_EQ(real_time_clock_usecs() - system_time(), moment);
}

TEST_F(ClockTest, AnotherBootHasAnotherMoment)
{
    EXPECT_EQ(kits::SetBootMomentFile(path.c_str()), B_OK);
    clock.bootId = "boot-2";
    clock.wallTime += kDay;
    clock.systemTime = 5 * kSecond;
    clock.Restart();
    EXPECT_EQ(kits::SetBootMomentFile(path.c_str()), B_OK);
    EXPECT_EQ(real_time_clock_usecs(), k2025 + kDay);
    kits::BootMoment kept;
    EXPECT_EQ(kits::LoadBootMoment(path, &kept), B_OK);
    EXPECT_EQ(kept, (kits::BootMoment{"boot-2", k2025 + kDay - 5 * kSecond}));
}

TEST_F(ClockTest, ABrokenFileIsMeasuredAnew)
{
    EXPECT_EQ(kits::SetBootMomentFile(path.c_str()), B_OK);
    const std::string whole = Text();
    ASSERT_FALSE(whole.empty());
    clock.wallTime += kDay; // tells a new measurement from the kept one
    for (size_t i = 0; i < whole.size(); ++i) {
        std::string damaged = whole;
        damaged[i] = static_cast<char>(damaged[i] ^ 1);
        for (const std::string& text : {whole.substr(0, i), damaged}) {
            Write(text);
            clock.Restart();
            ASSERT_EQ(kits::SetBootMomentFile(path.c_str()), B_OK) << text;
            ASSERT_EQ(real_time_clock_usecs(), clock.wallTime) << text;
            ASSERT_NE(Text(), text) << "and kept anew";
        }
    }
}

TEST_F(ClockTest, AFileThatCannotBeReadOrWrittenIsMeasuredEachTime)
{
    fs::create_directory(path);
    EXPECT_NE(kits::SetBootMomentFile(path.c_str()), B_OK);
    EXPECT_EQ(real_time_clock_usecs(), k2025);
    clock.wallTime += 3;
    EXPECT_EQ(real_time_clock_usecs(), k2025) << "one moment in this process";

    clock.Restart();
    EXPECT_EQ(kits::SetBootMomentFile((folder / "missing" / "boot").c_str()), B_ENTRY_NOT_FOUND);
    EXPECT_EQ(real_time_clock_usecs(), k2025 + 3);
    EXPECT_EQ(kits::SetBootMomentFile(nullptr), B_BAD_VALUE);
    EXPECT_EQ(kits::SetBootMomentFile(""), B_BAD_VALUE);
}

TEST_F(ClockTest, IsNotKeptWithoutTheNameOfTheBoot)
{
    clock.bootId = "";
    EXPECT_EQ(kits::SetBootMomentFile(path.c_str()), B_NAME_NOT_FOUND);
    EXPECT_FALSE(fs::exists(path));
    EXPECT_EQ(real_time_clock_usecs(), k2025);
}

TEST_F(ClockTest, IsNotKeptWhileTheClockIsPlainlyWrong)
{
    clock.wallTime = 1000 * kSecond;
    clock.Restart();
    EXPECT_FALSE(kits::ClockIsPlausible());
    EXPECT_EQ(kits::SetBootMomentFile(path.c_str()), B_NO_INIT);
    EXPECT_FALSE(fs::exists(path));
    EXPECT_EQ(real_time_clock_usecs(), 1000 * kSecond);
    clock.wallTime = k2001 - 1;
    EXPECT_FALSE(kits::ClockIsPlausible());
    EXPECT_FALSE(fs::exists(path));

    clock.wallTime = k2001;
    EXPECT_TRUE(kits::ClockIsPlausible());
    EXPECT_EQ(real_time_clock_usecs(), k2001);
    EXPECT_TRUE(fs::exists(path)) << "kept as soon as it can be";
    clock.wallTime = k2025;
    EXPECT_EQ(real_time_clock_usecs(), k2001) << "and from then on one";
}

TEST_F(ClockTest, AKeptMomentHoldsWhileTheClockIsPlainlyWrong)
{
    EXPECT_EQ(kits::SetBootMomentFile(path.c_str()), B_OK);
    clock.wallTime = 0;
    clock.Restart();
    EXPECT_EQ(kits::SetBootMomentFile(path.c_str()), B_OK);
    EXPECT_EQ(real_time_clock_usecs(), k2025);
    EXPECT_TRUE(kits::ClockIsPlausible());
}

TEST_F(ClockTest, WritesNothingIfItMayNot)
{
    EXPECT_EQ(kits::SetBootMomentFile(path.c_str(), false), B_ENTRY_NOT_FOUND);
    EXPECT_TRUE(fs::is_empty(folder));
    EXPECT_EQ(real_time_clock_usecs(), k2025);
    EXPECT_TRUE(fs::is_empty(folder));

    EXPECT_EQ(kits::SetBootMomentFile(path.c_str()), B_OK);
    clock.wallTime += kDay;
    clock.Restart();
    EXPECT_EQ(kits::SetBootMomentFile(path.c_str(), false), B_OK) << "but it reads";
    EXPECT_EQ(real_time_clock_usecs(), k2025);
}

TEST_F(ClockTest, LeavesNothingBesideTheFile)
{
    Write("something else");
    std::ofstream(path.string() + ".new") << "left behind by a killed process, and longer than what is written now, "
                                             "so that a part of it would be seen at the end of the new one";
    EXPECT_EQ(kits::SetBootMomentFile(path.c_str()), B_OK);
    EXPECT_TRUE(kits::ParseBootMoment(Text()).has_value());
    EXPECT_EQ(std::distance(fs::directory_iterator(folder), fs::directory_iterator()), 1);
}
