// SPDX-License-Identifier: MIT
#include "src/chart/ChartExport.h"

#include "src/chart/ChartHistory.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>

TEST(ChartExport, MomentsAreIso8601)
{
    EXPECT_EQ(IsoTime(0), "1970-01-01T00:00:00.000Z");
    EXPECT_EQ(IsoTime(1700000000250999), "2023-11-14T22:13:20.250Z");
    EXPECT_EQ(IsoTime(951868799999000), "2000-02-29T23:59:59.999Z");
    EXPECT_EQ(IsoTime(INT64_MIN), "1970-01-01T00:00:00.000Z");
    EXPECT_EQ(IsoTime(INT64_MAX), "9999-12-31T23:59:59.999Z");
}

TEST(ChartExport, AColumnIsALine)
{
    ChartHistory history;
    history.SetCapacity(10);
    history.Add(0, {0.5, 1.0}, 2);
    history.Add(200000, {1.0 / 3, 0.0}, 2);
    history.Add(400000, {-0.25, 1e-9}, 2);
    EXPECT_EQ(ValuesAsCsv(history, {"CPU 1", "Used memory"}, 1700000000000000),
              "time,CPU 1,Used memory\n"
              "2023-11-14T22:13:20.000Z,0.5,1\n"
              "2023-11-14T22:13:20.200Z,0.333333,0\n"
              "2023-11-14T22:13:20.400Z,-0.25,1e-09\n");
}

TEST(ChartExport, WhatHasNoFigureIsEmpty)
{
    ChartHistory history;
    history.SetCapacity(10);
    EXPECT_EQ(ValuesAsCsv(history, {}, 0), "time\n");
    history.Add(0, {0.5}, 1);
    history.InsertSource(0);
    EXPECT_EQ(ValuesAsCsv(history, {"a", "b"}, 0), "time,a,b\n1970-01-01T00:00:00.000Z,,0.5\n");
}

TEST(ChartExport, NamesAreQuotedWhereTheyMustBe)
{
    EXPECT_EQ(ValuesAsCsv(ChartHistory(), {"a,b", "say \"hi\"", "two\nlines", "plain; too"}, 0),
              "time,\"a,b\",\"say \"\"hi\"\"\",\"two\nlines\",plain; too\n");
}

TEST(ChartExport, NumbersHaveAPointInEveryLanguage)
{
    // The first of these that this machine has.
    for (const char* name : {"de_DE.UTF-8", "fr_FR.UTF-8", "C.UTF-8"})
        std::setlocale(LC_NUMERIC, name);
    ChartHistory history;
    history.SetCapacity(1);
    history.Add(0, {0.25}, 1);
    EXPECT_NE(ValuesAsCsv(history, {"a"}, 0).find(",0.25\n"), std::string::npos);
    std::setlocale(LC_NUMERIC, "C");
}

TEST(ChartExport, FileNamesAreSafe)
{
    EXPECT_EQ(FileNameOf("CPU load", "png"), "CPU load.png");
    EXPECT_EQ(FileNameOf("/etc/passwd", "png"), "-etc-passwd.png");
    EXPECT_EQ(FileNameOf("..", "png"), "Chart.png");
    EXPECT_EQ(FileNameOf("", "csv"), "Chart.csv");
    EXPECT_EQ(FileNameOf(" \n\t", "csv"), "Chart.csv");
    EXPECT_EQ(FileNameOf("..hidden. ", "csv"), "hidden.csv");
    EXPECT_EQ(FileNameOf("a\x01 \n b", "csv"), "a b.csv");
    EXPECT_EQ(FileNameOf("a:b*c?\"<>|\\", "csv"), "a-b-c------.csv");
    std::string longest(100, 'x');
    longest += ".png";
    EXPECT_EQ(FileNameOf(std::string(500, 'x'), "png"), longest);
    // 100 bytes would cut the last of these in half.
    std::string wide = "x";
    for (int i = 0; i < 60; i++)
        wide += "\xc3\xa4";
    EXPECT_EQ(FileNameOf(wide, "png"), wide.substr(0, 99) + ".png");
}
