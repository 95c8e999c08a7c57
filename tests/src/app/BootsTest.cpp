// SPDX-License-Identifier: MIT
#include "kits/kernel/clock/BootMoment.h"
#include "src/app/Uptimes.h"
#include "src/prefs/store/Preferences.h"
#include "src/support/Qel.h"
#include "tests/kits/kernel/clock/TestClock.h"
#include "tests/src/app/AppTest.h"

#include <chrono>
#include <cstdlib>
#include <optional>

// Boots as the program counts them, from start to start, whatever happens to the clocks.

namespace {

constexpr bigtime_t kSecond = 1000000;
constexpr bigtime_t kHour = 3600 * kSecond;
constexpr bigtime_t k2025 = 1735689600 * kSecond;

/// Stands still, except while the program runs: its timers need time that passes.
class Clock : public TestClock {
public:
    Clock()
        : TestClock(k2025)
    {
    }
    bigtime_t SystemTime() override
    {
        if (isBusy) {
            // Other load delays a reading by up to 90 milliseconds, and mostly by a few microseconds.
            fReading = fReading * 1103515245 + 12345;
            Advance(fReading % 1000 == 0 ? fReading % 90000 : fReading % 10);
        }
        return systemTime + Run();
    }
    bigtime_t WallTime() override { return wallTime + Run(); }

    bool isBusy = false;

    void Start() { fStart = Monotonic::now(); }
    void Stop()
    {
        Advance(Run());
        fStart.reset();
    }

private:
    using Monotonic = std::chrono::steady_clock;

    bigtime_t Run() const
    {
        return fStart ? std::chrono::duration_cast<std::chrono::microseconds>(Monotonic::now() - *fStart).count() : 0;
    }

    std::optional<Monotonic::time_point> fStart;
    uint32 fReading = 1;
};

class BootsTest : public AppTest {
protected:
    /// Starts the program, which saves every ten minutes for this long.
    void Run(bigtime_t length)
    {
        fClock.Restart();
        QelApp& app = Make();
        app.SaveUptimes();
        for (bigtime_t passed = 0; passed < length; passed += 600 * kSecond) {
            fClock.Advance(600 * kSecond);
            app.SaveUptimes();
        }
        Finish();
    }

    /// The same with its windows. It loads its table of uptimes, and saves before and after the action.
    UptimeTable RunWith(const std::function<void()>& act)
    {
        UptimeTable table;
        fClock.Restart();
        fClock.Start();
        AppTest::Run({[&](QelApp& app) {
            act();
            app.Pulse();
            table = app.Uptimes();
        }});
        Finish();
        fClock.Stop();
        return table;
    }

    /// Reboots the machine, after it was off for a while.
    void Reboot()
    {
        fClock.bootId += "+";
        fClock.systemTime = kSecond;
        fClock.wallTime += kHour;
    }

    static UptimeTotals Totals() { return UptimeTotals::From(Preferences(signature, true, true)); }

    Clock fClock;
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

TEST_F(BootsTest, AMomentAtTheEndOfWhatCountsAsOneIsOneBoot)
{
    const bigtime_t moment = (k2025 - kSecond) | 0xffff;
    fConfig.Put("x-vnd.kvt-Qel.boot", kits::FormatBootMoment({fClock.bootId, moment}));
    fClock.isBusy = true;
    UptimeTable table;
    for (int start = 0; start < 8; start++)
        table = RunWith([this] { fClock.Advance(kHour); });
    EXPECT_EQ(Totals().bootCount, 1);
    EXPECT_EQ(table.At(0).bootTime, moment);
    EXPECT_EQ(table.At(1).uptime, 0);
}

TEST_F(BootsTest, AMillionLooksOnABusyMachineAreOneBoot)
{
    fConfig.Put("x-vnd.kvt-Qel.boot", kits::FormatBootMoment({fClock.bootId, (k2025 - kSecond) | 0xffff}));
    fClock.Restart();
    QelApp& app = Make();
    fClock.isBusy = true;
    for (int look = 0; look < 1'000'000; look++) {
        app.UpdateUptimes();
        if (look % 1000 == 0)
            app.SaveUptimes();
    }
    EXPECT_EQ(app.Uptimes().At(1).uptime, 0);
    Finish();
    EXPECT_EQ(Totals().bootCount, 1);
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
        fClock.wallTime += 300000; // half a thousandth, the fastest slew
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
    // The network tells the time; from then on this is a boot like others.
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

TEST_F(BootsTest, WithoutARealTimeClockEveryBootMayBeginAtTheSameTime)
{
    for (int boot = 0; boot < 20; boot++) {
        Reboot();
        // For example, the date of the system's last update.
        fClock.wallTime = k2025 + boot * 7919 % 90000;
        Run(kHour);
        EXPECT_EQ(Totals().bootCount, boot + 1);
    }
    EXPECT_EQ(Totals().sum, 20 * (kHour + kSecond));
}

TEST_F(BootsTest, TheTableHasOneEntryForEachWhateverBecomesOfTheClock)
{
    UptimeTable table;
    for (const bigtime_t step : {bigtime_t{0}, kHour, -3 * kHour, kSecond / 2, -400 * 24 * kHour}) {
        table = RunWith([&] {
            fClock.Advance(kHour);
            fClock.wallTime += step;
        });
    }
    const auto isAbout = [](bigtime_t uptime, int hours) { return uptime / kHour == hours; };
    EXPECT_TRUE(isAbout(table.At(0).uptime, 5)) << table.At(0).uptime;
    EXPECT_LT(std::abs(table.At(0).bootTime - (k2025 - kSecond)), kSecond);
    EXPECT_EQ(table.At(1).uptime, 0);
    Reboot();
    fClock.wallTime = k2025; // without a clock of its own
    table = RunWith([this] { fClock.Advance(9 * kHour); });
    EXPECT_TRUE(isAbout(table.At(0).uptime, 9)) << "the longest first";
    EXPECT_TRUE(isAbout(table.At(1).uptime, 5));
    EXPECT_EQ(table.At(2).uptime, 0);
    EXPECT_EQ(Totals().bootCount, 2);
}
