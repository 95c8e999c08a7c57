// SPDX-License-Identifier: MIT
#include "src/app/UptimeText.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <limits>
#include <string>

namespace {

constexpr bigtime_t kSecond = 1'000'000;

std::string Interval(int32 seconds)
{
    char buffer[96];
    char* end = PrintTimeInterval(buffer, seconds);
    EXPECT_EQ(*end, '\0');
    return std::string(buffer, end);
}

class UptimeTextTest : public testing::Test {
protected:
    void SetUp() override
    {
        setenv("TZ", "UTC", 1);
        tzset();
        figures.wallClock = 1'700'000'000; // Tue Nov 14 22:13:20 2023
        figures.uptime = 3'661 * kSecond;
        figures.total = 90'061 * kSecond;
        figures.boots = 2;
    }

    UptimeFigures figures;
};

} // namespace

TEST(PrintTimeInterval, WritesOnlyThePartsThatAreNotZero)
{
    EXPECT_EQ(Interval(0), "00:00:00");
    EXPECT_EQ(Interval(59), "00:00:59");
    EXPECT_EQ(Interval(86'400), "one day 00:00:00");
    EXPECT_EQ(Interval(172'800), "2 days 00:00:00");
    EXPECT_EQ(Interval(29'030'400), "one year 00:00:00");
    EXPECT_EQ(Interval(3'024'000), "one month one week 00:00:00");
    EXPECT_EQ(Interval(90'061), "one day 01:01:01");
    EXPECT_EQ(Interval(2 * 29'030'400 + 3 * 2'419'200 + 2 * 604'800 + 6 * 86'400 + 86'399),
              "2 years 3 months 2 weeks 6 days 23:59:59");
}

TEST(PrintTimeInterval, FitsTheLongestInterval)
{
    EXPECT_EQ(Interval(std::numeric_limits<int32>::max()), "73 years 11 months 2 weeks 5 days 03:14:07");
    EXPECT_LT(Interval(std::numeric_limits<int32>::min()).size(), 96u);
}

TEST_F(UptimeTextTest, LinesFiguresUpInTwoColumns)
{
    EXPECT_EQ(UptimeText(figures), "It's Tue Nov 14 22:13:20 2023.     \tUp since: Tue Nov 14 21:12:19 2023."
                                   "\nCurrent uptime: 01:01:01             \tTotal uptime: one day 01:01:01"
                                   "\nAverage uptime: 12:30:30             \tNumber of reboots: 2"
                                   "\n\nTop 10 uptimes:"
                                   "\n01:\tn/a\n02:\tn/a\n03:\tn/a\n04:\tn/a\n05:\tn/a"
                                   "\n06:\tn/a\n07:\tn/a\n08:\tn/a\n09:\tn/a\n10:\tn/a");
}

TEST_F(UptimeTextTest, ListsTheTable)
{
    figures.table.Update(86'400 * kSecond, 1'600'000'000 * kSecond);
    figures.table.Update(60 * kSecond, 1'690'000'000 * kSecond);
    const std::string text = UptimeText(figures);
    EXPECT_NE(text.find("\n01:\tone day 00:00:00               \tBooted at Sun Sep 13 12:26:40 2020\n02:"),
              std::string::npos)
        << text;
    EXPECT_NE(text.find("\n02:\t00:01:00                       \tBooted at Sat Jul 22 04:26:40 2023\n03:\tn/a"),
              std::string::npos)
        << text;
}

TEST_F(UptimeTextTest, PadsToItsColumns)
{
    const std::string text = UptimeText(figures);
    EXPECT_EQ(text.find('\t'), 35u);
    for (const char* start : {"\nCurrent uptime", "\nAverage uptime"}) {
        const size_t line = text.find(start);
        EXPECT_EQ(text.find('\t', line) - line, 38u) << start;
    }
}

TEST_F(UptimeTextTest, DoesNotCutWhatIsLongerThanItsColumn)
{
    figures.uptime = (2'419'200LL * 2 + 604'800 * 2 + 86'400 * 2) * kSecond;
    EXPECT_NE(UptimeText(figures).find("\nCurrent uptime: 2 months 2 weeks 2 days 00:00:00\tTotal"), std::string::npos);
}

TEST_F(UptimeTextTest, CountsNoBootAsOne)
{
    figures.boots = 0;
    EXPECT_NE(UptimeText(figures).find("Average uptime: one day 01:01:01"), std::string::npos);
    EXPECT_NE(UptimeText(figures).find("Number of reboots: 1\n"), std::string::npos);
}

TEST_F(UptimeTextTest, IsInTheLocalTimeZone)
{
    setenv("TZ", "UTC+1", 1);
    tzset();
    EXPECT_EQ(UptimeText(figures).substr(0, 30), "It's Tue Nov 14 21:13:20 2023.");
}

TEST_F(UptimeTextTest, TruncatesTheAverage)
{
    figures.total = 10 * kSecond + 999'999;
    figures.boots = 3;
    EXPECT_NE(UptimeText(figures).find("Average uptime: 00:00:03"), std::string::npos);
}
