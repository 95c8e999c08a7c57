// SPDX-License-Identifier: MIT
#include "src/app/Uptimes.h"

#include "kits/application/Message.h"
#include "kits/kernel/Errors.h"
#include "tests/support/ReplaceValue.h"

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

namespace {

constexpr bigtime_t kBoot = 1'700'000'000'000'000; // a multiple of 65536 plus some
constexpr bigtime_t kOtherBoots = 1'600'000'000'000'000;

/// A full table of boots with uptimes 1000, 900, ... 100.
UptimeTable FullTable()
{
    UptimeTable table;
    for (int i = 0; i < 10; ++i)
        table.Update(1000 - 100 * i, kOtherBoots + bigtime_t{i} * 1'000'000'000);
    return table;
}

std::vector<bigtime_t> UptimesOf(const UptimeTable& table)
{
    std::vector<bigtime_t> uptimes;
    for (size_t i = 0; i < UptimeTable::kPlaces; ++i)
        uptimes.push_back(table.At(i).uptime);
    return uptimes;
}

} // namespace

TEST(SameBoot, IgnoresTheSixteenLowestBits)
{
    const bigtime_t block = bigtime_t{123'456'789} << 16;
    EXPECT_TRUE(SameBoot(block, block + 65535));
    EXPECT_FALSE(SameBoot(block - 1, block));
    EXPECT_FALSE(SameBoot(block, block + 65536));
}

TEST(UptimeTable, IsEmptyAtFirst)
{
    const UptimeTable table;
    EXPECT_EQ(UptimesOf(table), std::vector<bigtime_t>(10, 0));
}

TEST(UptimeTable, EntersTheFirstBoot)
{
    UptimeTable table;
    table.Update(5, kBoot);
    EXPECT_EQ(table.At(0).uptime, 5);
    EXPECT_EQ(table.At(0).bootTime, kBoot);
    EXPECT_EQ(table.At(1).uptime, 0);
}

TEST(UptimeTable, UpdatesABootInPlaceAndKeepsItsMoment)
{
    UptimeTable table;
    const bigtime_t block = kBoot & ~bigtime_t{0xffff};
    table.Update(5, block + 10);
    table.Update(7, block + 20);
    EXPECT_EQ(table.At(0).uptime, 7);
    EXPECT_EQ(table.At(0).bootTime, block + 10);
    EXPECT_EQ(table.At(1).uptime, 0);
}

TEST(UptimeTable, MovesABootUpWhenItPassesAnother)
{
    UptimeTable table = FullTable();
    const UptimeEntry third = table.At(2);
    const UptimeEntry sixth = table.At(5);
    table.Update(third.uptime + 1, sixth.bootTime);
    EXPECT_EQ(table.At(2).bootTime, sixth.bootTime);
    EXPECT_EQ(table.At(2).uptime, third.uptime + 1);
    EXPECT_EQ(table.At(3).bootTime, third.bootTime);
    EXPECT_EQ(UptimesOf(table), (std::vector<bigtime_t>{1000, 900, 801, 800, 700, 600, 400, 300, 200, 100}));
}

TEST(UptimeTable, KeepsTheOlderOfEqualBootsAbove)
{
    UptimeTable table = FullTable();
    const UptimeEntry third = table.At(2);
    const UptimeEntry fourth = table.At(3);
    table.Update(third.uptime, fourth.bootTime);
    EXPECT_EQ(table.At(2).bootTime, third.bootTime);
    EXPECT_EQ(table.At(3).bootTime, fourth.bootTime);
}

TEST(UptimeTable, EntersANewBootAboveThoseOfEqualUptime)
{
    UptimeTable table = FullTable();
    table.Update(900, kBoot);
    EXPECT_EQ(table.At(1).bootTime, kBoot);
    EXPECT_EQ(UptimesOf(table), (std::vector<bigtime_t>{1000, 900, 900, 800, 700, 600, 500, 400, 300, 200}));
}

TEST(UptimeTable, TakesANewBootOnceItIsAsLongAsTheTenth)
{
    UptimeTable table = FullTable();
    table.Update(99, kBoot);
    EXPECT_EQ(UptimesOf(table), UptimesOf(FullTable()));
    table.Update(100, kBoot);
    EXPECT_EQ(table.At(9).bootTime, kBoot);
    EXPECT_EQ(table.At(9).uptime, 100);
}

TEST(UptimeTable, IsStoredUptimeBeforeBootTime)
{
    UptimeTable table;
    table.Update(0x0102030405060708, 0x1112131415161718);
    unsigned char bytes[UptimeTable::kSize];
    static_assert(sizeof(bytes) == 160);
    table.Record().copy(reinterpret_cast<char*>(bytes), sizeof(bytes));
    EXPECT_EQ(bytes[0], 0x08);
    EXPECT_EQ(bytes[7], 0x01);
    EXPECT_EQ(bytes[8], 0x18);
    EXPECT_EQ(bytes[15], 0x11);
    EXPECT_EQ(bytes[16], 0);
}

TEST(UptimeTable, ComesBackFromItsRecord)
{
    const UptimeTable table = FullTable();
    UptimeTable copy;
    copy.SetTo(table.Record());
    EXPECT_EQ(copy.Record(), table.Record());
}

TEST(UptimeTable, TakesShortAndLongRecords)
{
    const UptimeTable table = FullTable();
    UptimeTable shorter = table;
    shorter.SetTo(table.Record().substr(0, 2 * sizeof(UptimeEntry)));
    EXPECT_EQ(UptimesOf(shorter), (std::vector<bigtime_t>{1000, 900, 0, 0, 0, 0, 0, 0, 0, 0}));

    std::vector<char> bytes(UptimeTable::kSize + 64, '\x7f');
    table.Record().copy(bytes.data(), UptimeTable::kSize);
    UptimeTable longer;
    longer.SetTo({bytes.data(), bytes.size()});
    EXPECT_EQ(UptimesOf(longer), UptimesOf(table));
}

TEST(UptimeTable, EmptiesEntriesThatNoRunCanHaveWritten)
{
    const UptimeEntry entries[] = {{-1, kBoot}, {5, -1}, {INT64_MAX, kBoot}, {5, kBoot}};
    UptimeTable table;
    table.SetTo({reinterpret_cast<const char*>(entries), sizeof(entries)});
    EXPECT_EQ(UptimesOf(table), (std::vector<bigtime_t>{0, 0, 0, 5, 0, 0, 0, 0, 0, 0}));
}

TEST(UptimeTotals, CountTheFirstSaveEver)
{
    UptimeTotals totals;
    totals.Count(500, kBoot);
    EXPECT_EQ(totals.bootCount, 1);
    EXPECT_EQ(totals.sum, 500);
    EXPECT_EQ(totals.lastBoot, kBoot);
    EXPECT_EQ(totals.lastUptime, 500);
}

TEST(UptimeTotals, AddTheTimeSinceTheLastSaveOfTheSameBoot)
{
    UptimeTotals totals;
    totals.Count(500, kBoot);
    totals.Count(800, kBoot);
    EXPECT_EQ(totals.bootCount, 1);
    EXPECT_EQ(totals.sum, 800);
    EXPECT_EQ(totals.lastUptime, 800);
}

TEST(UptimeTotals, AddAllOfANewBoot)
{
    UptimeTotals totals;
    totals.Count(500, kBoot);
    totals.Count(300, kBoot + 10'000'000);
    EXPECT_EQ(totals.bootCount, 2);
    EXPECT_EQ(totals.sum, 800);
    EXPECT_EQ(totals.lastBoot, kBoot + 10'000'000);
}

TEST(UptimeTotals, CountMissingRecordsAsZero)
{
    const UptimeTotals totals = UptimeTotals::From(BMessage());
    EXPECT_EQ(totals.bootCount, 0);
    EXPECT_EQ(totals.sum, 0);
    EXPECT_EQ(totals.lastBoot, 0);
    EXPECT_EQ(totals.lastUptime, 0);
}

TEST(UptimeTotals, HoldWhatNoRunCanHaveWritten)
{
    BMessage store;
    store.AddInt32("BootCount", -5);
    store.AddInt64("UptimeSum", INT64_MAX);
    store.AddInt64("USLastBoot", kBoot);
    store.AddInt64("USLastUptime", INT64_MAX);
    UptimeTotals totals = UptimeTotals::From(store);
    EXPECT_EQ(totals.bootCount, 0);
    const bigtime_t sum = totals.sum;
    EXPECT_LT(sum, INT64_MAX / 2);
    totals.Count(500, kBoot);
    EXPECT_EQ(totals.sum, sum) << "a last save in the future adds nothing";

    test::ReplaceInt32(store, "BootCount", INT32_MAX);
    totals = UptimeTotals::From(store);
    totals.Count(500, kBoot + 10'000'000);
    EXPECT_EQ(totals.bootCount, INT32_MAX);
}
