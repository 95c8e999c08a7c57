// SPDX-License-Identifier: MIT
#include "kits/kernel/ProcText.h"

#include <gtest/gtest.h>

#include <string>

using namespace kits;

TEST(ProcTextTest, TakesNumbers)
{
    std::string_view text = "007 8\n";
    EXPECT_EQ(TakeNumber(&text), 7u);
    EXPECT_EQ(text, " 8\n");
    EXPECT_EQ(TakeNumber(&text), std::nullopt) << "a blank is no digit";
    EXPECT_EQ(text, " 8\n");
    SkipBlanks(&text);
    EXPECT_EQ(TakeNumber(&text), 8u);
    EXPECT_EQ(text, "\n");
}

TEST(ProcTextTest, DoesNotBelieveANumberThatMayBeCut)
{
    std::string_view text = "123";
    EXPECT_EQ(TakeNumber(&text), std::nullopt);
    text = "";
    EXPECT_EQ(TakeNumber(&text), std::nullopt);
    text = "-5\n";
    EXPECT_EQ(TakeNumber(&text), std::nullopt);
}

TEST(ProcTextTest, HoldsNumbersThatAreTooLarge)
{
    std::string_view text = "18446744073709551615 18446744073709551616 99999999999999999999999999 ";
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(TakeNumber(&text), UINT64_MAX);
        SkipBlanks(&text);
    }
}

TEST(ProcTextTest, TakesWholeLines)
{
    std::string_view text = "a b\n\ncut";
    EXPECT_EQ(TakeLine(&text), "a b");
    EXPECT_EQ(TakeLine(&text), "");
    EXPECT_EQ(TakeLine(&text), std::nullopt);
}

TEST(ProcTextTest, FindsANumberByItsKey)
{
    const std::string_view text = "xMemTotal: 1\nMemTotal:\t 42 kB\nMemTotal: 43 kB\n";
    EXPECT_EQ(NumberAfter(text, "MemTotal:"), 42u);
    EXPECT_EQ(NumberAfter(text, "Mem:"), std::nullopt);
    EXPECT_EQ(NumberAfter("MemTotal: 5 kB", "MemTotal:"), 5u);
    EXPECT_EQ(NumberAfter("MemTotal: 5", "MemTotal:"), std::nullopt);
    EXPECT_EQ(NumberAfter("MemTotal:", "MemTotal:"), std::nullopt);
    EXPECT_EQ(NumberAfter("MemTotal: unknown\n", "MemTotal:"), std::nullopt);
    EXPECT_EQ(NumberAfter("", "MemTotal:"), std::nullopt);
}

TEST(ProcTextTest, FindsTheSocketsAndTheLimitsOfAUser)
{
    EXPECT_EQ(NumberAfter("sockets: used 231\nTCP: inuse 9\n", "sockets: used "), 231u);
    EXPECT_EQ(NumberAfter("TCP: inuse 9\n", "sockets: used "), std::nullopt);
    const std::string heading = "Limit                     Soft Limit           Hard Limit           Units     \n";
    const std::string limited =
        heading + "Max processes             31200                31300                processes \n";
    EXPECT_EQ(NumberAfter(limited, "Max processes "), 31200u);
    const std::string free =
        heading + "Max processes             unlimited            unlimited            processes \n";
    EXPECT_EQ(NumberAfter(free, "Max processes "), std::nullopt);
    EXPECT_EQ(NumberAfter("Name:\tqel\nUid:\t1000\t0\t0\t0\n", "Uid:"), 1000u);
    EXPECT_EQ(NumberAfter("Name:\tqel\n", "Uid:"), std::nullopt);
}

TEST(ProcTextTest, TakesTheOneFigureOfAFile)
{
    EXPECT_EQ(FirstNumber("32768\n"), 32768u);
    EXPECT_EQ(FirstNumber("  32768 \n"), 32768u);
    EXPECT_EQ(FirstNumber("max\n"), std::nullopt);
    EXPECT_EQ(FirstNumber(""), std::nullopt);
}
