#include "src/app/Uptimes.h"

#include "src/prefs/Preferences.h"
#include "tests/kits/kernel/TestClock.h"
#include "tests/support/TempFolder.h"

#include <cstdlib>
#include <gtest/gtest.h>

// Boots as the program counts them, from start to start of it, whatever becomes of the clocks.

namespace {

constexpr bigtime_t kSecond = 1000000;
constexpr bigtime_t kHour = 3600 * kSecond;
constexpr bigtime_t k2025 = 1735689600 * kSecond;

class BootsTest : public testing::Test {
protected:
    BootsTest() { setenv("XDG_CONFIG_HOME", fFolder.Path().c_str(), 1); }

    /// The program starts, and saves every ten minutes for so long.
    void Run(bigtime_t length)
    {
        fClock.Restart();
        kits::SetBootMomentFile((fFolder.Path() + "/boot").c_str());
        for (bigtime_t passed = 0;; passed += 600 * kSecond) {
            if (kits::ClockIsPlausible()) {
                Preferences store("boots", true);
                UptimeTotals totals = UptimeTotals::From(store);
                const bigtime_t now = system_time();
                totals.Count(now, real_time_clock_usecs() - now);
                totals.StoreIn(&store);
                ASSERT_EQ(store.Sync(), B_OK);
            }
            if (passed >= length)
                return;
            fClock.Advance(600 * kSecond);
        }
    }

    /// The machine starts anew, and is off for a while before.
    void Reboot()
    {
        fClock.bootId += "+";
        fClock.systemTime = kSecond;
        fClock.wallTime += kHour;
    }

    static UptimeTotals Totals() { return UptimeTotals::From(Preferences("boots", true)); }

    TempFolder fFolder;
    TestClock fClock{k2025};
};

} // namespace

TEST_F(BootsTest, EachIsCountedOnce)
{
    Run(2 * kHour);
    EXPECT_EQ(Totals().bootCount, 1);
    Reboot();
    Run(kHour);
    Run(kHour);
    EXPECT_EQ(Totals().bootCount, 2);
    EXPECT_EQ(Totals().sum, 4 * kHour + 2 * kSecond);
}

TEST_F(BootsTest, SteppingTheClockStartsNone)
{
    Run(kHour);
    for (const bigtime_t step : {kHour, -5 * kHour, 3 * kSecond, -400 * 24 * kHour}) {
        fClock.wallTime += step;
        Run(kHour);
    }
    EXPECT_EQ(Totals().bootCount, 1);
    EXPECT_EQ(Totals().sum, 5 * kHour + kSecond);
}

TEST_F(BootsTest, SlewingTheClockStartsNone)
{
    for (int i = 0; i < 100; i++) {
        Run(600 * kSecond);
        fClock.wallTime += 300000; // half a thousandth, as it is slewed at most
    }
    EXPECT_EQ(Totals().bootCount, 1);
}

TEST_F(BootsTest, SleepBelongsToTheBoot)
{
    Run(kHour);
    fClock.Advance(9 * kHour);
    Run(kHour);
    EXPECT_EQ(Totals().bootCount, 1);
    EXPECT_EQ(Totals().sum, 11 * kHour + kSecond);
}

TEST_F(BootsTest, LoggingOutAndInStartsNone)
{
    for (int i = 0; i < 5; i++) {
        Run(kHour);
        fClock.Advance(kHour);
        fClock.wallTime += i % 2 == 0 ? 7 * kSecond : -11 * kSecond;
    }
    EXPECT_EQ(Totals().bootCount, 1);
}

TEST_F(BootsTest, WithoutARealTimeClockNothingIsCountedUntilTheTimeIsKnown)
{
    fClock.wallTime = 100 * kSecond;
    Run(kHour);
    EXPECT_EQ(Totals().bootCount, 0);
    // The network tells the time; from then on it is a boot like others.
    fClock.wallTime = k2025;
    Run(kHour);
    EXPECT_EQ(Totals().bootCount, 1);
    EXPECT_EQ(Totals().sum, 2 * kHour + kSecond);
    Reboot();
    fClock.wallTime = 100 * kSecond;
    Run(kHour);
    fClock.wallTime = k2025 + 9 * kHour;
    Run(kHour);
    EXPECT_EQ(Totals().bootCount, 2);
}
