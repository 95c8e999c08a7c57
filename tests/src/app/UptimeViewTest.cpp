// SPDX-License-Identifier: MIT
#include "src/app/UptimeView.h"

#include "kits/kernel/Clock.h"
#include "kits/support/TypeConstants.h"
#include "src/prefs/store/Preferences.h"
#include "tests/src/app/AppTest.h"

#include <gtest/gtest.h>

#include <atomic>
#include <string>

namespace {

constexpr bigtime_t kSecond = 1'000'000;
constexpr bigtime_t kBoot = 1'700'000'000 * kSecond;

class TestClock : public kits::ClockSource {
public:
    TestClock() { kits::SetClockSource(this); }
    ~TestClock() override { kits::SetClockSource(nullptr); }
    bigtime_t SystemTime() override { return fUptime; }
    bigtime_t WallTime() override { return fBoot + fUptime; }
    std::string BootId() override { return fBootId; }

    std::atomic<bigtime_t> fUptime{3600 * kSecond};
    std::atomic<bigtime_t> fBoot{kBoot};
    std::string fBootId = "one";
};

/// The application's bookkeeping and the view, without running: the clock stands still.
class UptimeViewTest : public AppTest {
protected:
    void SetUp() override
    {
        AppTest::SetUp();
        setenv("TZ", "UTC", 1);
        tzset();
    }

    static int64 Stored(const char* name)
    {
        int64 value = 0;
        return prefs_common->FindInt64(name, &value) == B_OK ? value : -1;
    }
    static int32 StoredBoots()
    {
        int32 value = 0;
        return prefs_common->FindInt32("BootCount", &value) == B_OK ? value : -1;
    }

    TestClock fClock;
};

} // namespace

TEST_F(UptimeViewTest, SavesTheFirstBoot)
{
    QelApp& app = Make();
    app.SaveUptimes();
    EXPECT_EQ(StoredBoots(), 1);
    EXPECT_EQ(Stored("UptimeSum"), 3600 * kSecond);
    EXPECT_EQ(Stored("USLastBoot"), kBoot);
    EXPECT_EQ(Stored("USLastUptime"), 3600 * kSecond);
    const void* table = nullptr;
    ssize_t size = 0;
    ASSERT_EQ(prefs_common->FindData("Uptimes", B_RAW_TYPE, &table, &size), B_OK);
    EXPECT_EQ(size, 160);
    EXPECT_EQ(static_cast<const int64*>(table)[0], 3600 * kSecond);
    EXPECT_EQ(static_cast<const int64*>(table)[1], kBoot);
}

TEST_F(UptimeViewTest, SavesAgainAtEachPulse)
{
    QelApp& app = Make();
    app.SaveUptimes();
    fClock.fUptime = 4200 * kSecond;
    app.Pulse();
    EXPECT_EQ(StoredBoots(), 1);
    EXPECT_EQ(Stored("UptimeSum"), 4200 * kSecond);
    EXPECT_EQ(Stored("USLastUptime"), 4200 * kSecond);
    EXPECT_EQ(app.Uptimes().At(0).uptime, 4200 * kSecond);
}

TEST_F(UptimeViewTest, UpdatesInMemoryWithoutSaving)
{
    QelApp& app = Make();
    app.UpdateUptimes();
    EXPECT_EQ(app.Uptimes().At(0).uptime, 3600 * kSecond);
    EXPECT_TRUE(prefs_common->IsEmpty());
}

TEST_F(UptimeViewTest, SavesNothingWhileTheClockIsWrong)
{
    fClock.fBoot = 0;
    QelApp& app = Make();
    app.SaveUptimes();
    EXPECT_TRUE(prefs_common->IsEmpty());
    EXPECT_EQ(app.Uptimes().At(0).uptime, 0);
    fClock.fBoot = kBoot;
    app.SaveUptimes();
    EXPECT_EQ(StoredBoots(), 1);
    EXPECT_EQ(app.Uptimes().At(0).bootTime, kBoot);
    EXPECT_EQ(app.Uptimes().At(1).uptime, 0);
}

TEST_F(UptimeViewTest, ShowsPlacesWithoutABoot)
{
    Make();
    const UptimeView view(BRect(0, 0, 300, 200));
    const std::string text = view.Text();
    EXPECT_NE(text.find("\nCurrent uptime: 01:00:00"), std::string::npos) << text;
    EXPECT_NE(text.find("Number of reboots: 1\n"), std::string::npos);
    EXPECT_NE(text.find("\n01:\t01:00:00"), std::string::npos) << "this boot is in the list";
    EXPECT_NE(text.find("Booted at Tue Nov 14 22:13:20 2023\n"), std::string::npos);
    EXPECT_NE(text.find("\n02:\tn/a"), std::string::npos);
    EXPECT_EQ(text.substr(text.size() - 8), "\n10:\tn/a");
}

TEST_F(UptimeViewTest, AddsTheRunOfTheApplicationToTheStoredSum)
{
    Make();
    prefs_common->Set(kUptimeSumField, 7200 * kSecond);
    prefs_common->Set(kBootCountField, 2);
    fClock.fUptime = 3610 * kSecond;
    UptimeView view(BRect(0, 0, 300, 200));
    EXPECT_NE(std::string(view.Text()).find("Total uptime: 02:00:10\nAverage uptime: 01:00:05"), std::string::npos)
        << view.Text();
    fClock.fUptime = 3612 * kSecond;
    view.Pulse();
    EXPECT_NE(std::string(view.Text()).find("Total uptime: 02:00:12"), std::string::npos);
}

TEST_F(UptimeViewTest, IsForReadingOnly)
{
    Make();
    const UptimeView view(BRect(0, 0, 300, 200));
    EXPECT_STREQ(view.Name(), "Uptime");
    EXPECT_FALSE(view.IsEditable());
    EXPECT_FALSE(view.IsSelectable());
    EXPECT_EQ(view.TextRect(), BRect(0, 0, 300, 200));
    EXPECT_EQ(view.ViewColor(), ui_color(B_PANEL_BACKGROUND_COLOR));
    EXPECT_EQ(view.ResizingMode(), B_FOLLOW_ALL_SIDES);
    EXPECT_EQ(view.Flags() & (B_WILL_DRAW | B_PULSE_NEEDED | B_FRAME_EVENTS),
              B_WILL_DRAW | B_PULSE_NEEDED | B_FRAME_EVENTS);
}
