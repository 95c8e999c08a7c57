// SPDX-License-Identifier: MIT
#include "kits/kernel/record/ProcStat.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

using namespace kits;

namespace {

struct Result {
    std::vector<ProcessorTime> times;
    bool isWhole = false;
};

Result Parse(std::string_view text, size_t capacity = 8)
{
    Result result;
    result.times.resize(capacity);
    result.times.resize(ParseProcessorTimes(text, result.times, &result.isWhole));
    return result;
}

} // namespace

TEST(ProcStatTest, AddsWhatIsActive)
{
    // user nice system idle iowait irq softirq steal guest guest_nice
    const Result result = Parse("cpu  9 9 9 9 9 9 9 9 9 9\n"
                                "cpu0 1 20 300 4000 50000 600000 7000000 80000000 900000000 1000000000\n"
                                "cpu1 0 0 0 5 6 0 0 0 0 0\n"
                                "intr 5\n");
    ASSERT_EQ(result.times.size(), 2u);
    EXPECT_EQ(result.times[0].index, 0);
    EXPECT_EQ(result.times[0].ticks, 87600321u);
    EXPECT_EQ(result.times[1].index, 1);
    EXPECT_EQ(result.times[1].ticks, 0u);
    EXPECT_TRUE(result.isWhole);
}

TEST(ProcStatTest, KeepsTheIndicesOfProcessorsThatAreOnline)
{
    const Result result = Parse("cpu 0 0 0 0\ncpu0 1 0 0 0\ncpu7 2 0 0 0\ncpu1023 3 0 0 0\nintr 0\n");
    ASSERT_EQ(result.times.size(), 3u);
    EXPECT_EQ(result.times[1].index, 7);
    EXPECT_EQ(result.times[2].index, 1023);
    EXPECT_EQ(result.times[2].ticks, 3u);
}

TEST(ProcStatTest, TakesKernelsWithFewerFields)
{
    const Result result = Parse("cpu0 1 2 4 100\ncpu1 1 2 4 100 50\ncpu2 1 2 4 100 50 8\ncpu3 1 2 4 8 16 32 64\nx");
    ASSERT_EQ(result.times.size(), 4u);
    EXPECT_EQ(result.times[0].ticks, 7u);
    EXPECT_EQ(result.times[1].ticks, 7u);
    EXPECT_EQ(result.times[2].ticks, 15u);
    EXPECT_EQ(result.times[3].ticks, 103u);
}

TEST(ProcStatTest, TakesFieldsYetUnknown)
{
    const Result result = Parse("cpu0 1 1 1 1 1 1 1 1 1 1 1 1 1 new:1\nintr\n");
    ASSERT_EQ(result.times.size(), 1u);
    EXPECT_EQ(result.times[0].ticks, 6u);
}

TEST(ProcStatTest, LeavesOutLinesThatAreNotWhole)
{
    EXPECT_EQ(Parse("cpu0 1 2 3 4 5 6 7 8 9 10").times.size(), 0u) << "the last number may be cut";
    EXPECT_EQ(Parse("cpu0 1 2 3\ncpu1 1 2 3 4\n").times.size(), 1u);
    EXPECT_EQ(Parse("cpu0\ncpu1 \ncpuX 1 2 3 4\ncpu 1 2 3 4\n").times.size(), 0u);
    EXPECT_EQ(Parse("cpu0 1 2 3 4 x 6 7 8\n").times.size(), 0u);
    EXPECT_EQ(Parse("cpu0 1 2 3 4x 5\n").times.size(), 0u);
    EXPECT_EQ(Parse("cpu0 -1 2 3 4\n").times.size(), 0u);
    EXPECT_EQ(Parse("cpu99999999999 1 2 3 4\n").times.size(), 0u);
    EXPECT_EQ(Parse("").times.size(), 0u);
    EXPECT_EQ(Parse(std::string(5000, '\0')).times.size(), 0u);
}

TEST(ProcStatTest, KnowsWhetherItSawTheEndOfTheProcessors)
{
    EXPECT_FALSE(Parse("").isWhole);
    EXPECT_FALSE(Parse("cpu0 1 2 3 4\n").isWhole);
    EXPECT_FALSE(Parse("cpu0 1 2 3 4\ncpu1 1 2").isWhole);
    EXPECT_FALSE(Parse("cpu0 1 2 3 4\nin").isWhole);
    EXPECT_TRUE(Parse("cpu0 1 2 3 4\nint").isWhole);
    EXPECT_TRUE(Parse("cpu0 1 2 3 4\n\n").isWhole);
}

TEST(ProcStatTest, StopsWhereThereIsNoMoreRoom)
{
    const Result result = Parse("cpu0 1 2 3 4\ncpu1 1 2 3 4\ncpu2 1 2 3 4\n", 2);
    EXPECT_EQ(result.times.size(), 2u);
    EXPECT_TRUE(result.isWhole);
}

TEST(ProcStatTest, HoldsNumbersThatAreTooLarge)
{
    const Result result = Parse("cpu0 18446744073709551615 5 0 0\ncpu1 99999999999999999999999 0 0 0\nx\n");
    ASSERT_EQ(result.times.size(), 2u);
    EXPECT_EQ(result.times[0].ticks, UINT64_MAX);
    EXPECT_EQ(result.times[1].ticks, UINT64_MAX);
}

TEST(ProcStatTest, TakesNumbersOfEveryLength)
{
    uint64 number = 0;
    for (int digits = 1; digits <= 19; ++digits) {
        number = number * 10 + static_cast<uint64>(digits % 9 + 1);
        const std::string n = std::to_string(number);
        const std::pair<std::string, uint64> lines[] = {
            {"cpu5 " + n + " 1 1 1 1 1 1 1 1 1\n", number + 5},
            {"cpu5 1 1 1 " + n + " 1 1 1 1 1 1\n", 6},
            {"cpu5 1 1 1 1 1 1 1 " + n + " 1 1\n", number + 5},
            {"cpu5 1 1 1 1 1 1 1 " + n + "\n", number + 5},
        };
        for (const auto& [line, ticks] : lines) {
            for (const std::string& text : {line, line + std::string(200, 'x')}) {
                const Result result = Parse(text);
                ASSERT_EQ(result.times.size(), 1u) << text;
                EXPECT_EQ(result.times[0].index, 5);
                EXPECT_EQ(result.times[0].ticks, ticks) << text;
            }
        }
    }
}

TEST(ProcStatTest, IsTheSameWhereverTheTextEnds)
{
    const std::string text = "cpu  5 5 5 5 5 5 5 5 5 5\n"
                             "cpu0 1234567 23 345678 9012345678 5678 0 12345 17 0 0\n"
                             "cpu1 12 3 45 678 9 1 2 3 4 5\n"
                             "intr 1 2 3\n";
    const size_t firstEnd = text.find("cpu1");
    const size_t secondEnd = text.find("intr");
    for (size_t length = 0; length <= text.size(); ++length) {
        // A copy of exactly this length, so that a sanitizer sees a read past its end.
        const std::vector<char> cut(text.begin(), text.begin() + static_cast<ptrdiff_t>(length));
        const Result result = Parse(std::string_view(cut.data(), cut.size()));
        ASSERT_EQ(result.times.size(), length < firstEnd ? 0u : length < secondEnd ? 1u : 2u) << length;
        if (!result.times.empty())
            EXPECT_EQ(result.times[0].ticks, 1234567u + 23 + 345678 + 0 + 12345 + 17);
        if (result.times.size() == 2)
            EXPECT_EQ(result.times[1].ticks, 12u + 3 + 45 + 1 + 2 + 3);
    }
}
