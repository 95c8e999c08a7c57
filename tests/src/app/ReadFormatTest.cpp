// SPDX-License-Identifier: MIT
#include "src/app/ReadFormat.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

const std::vector<Reading> kReadings = {
    {2051, 0, "All CPUs", 0.12, "12.0 %"},
    {2051, 2, "All CPUs (exp. averaged)", 0.125, "12.5 %"},
    {2053, 0, "Used memory", 0.5, "7952.3 MB"},
};

std::string NameAsJson(const std::string& name)
{
    const std::string json = ReadingsAsJson(0, {{1, 0, name, 0, ""}});
    const size_t start = json.find("\"name\": ") + 8;
    return json.substr(start, json.find(", \"fraction\"") - start);
}

std::string FractionAsJson(double fraction)
{
    const std::string json = ReadingsAsJson(0, {{1, 0, "", fraction, ""}});
    const size_t start = json.find("\"fraction\": ") + 12;
    return json.substr(start, json.find(", \"caption\"") - start);
}

} // namespace

TEST(ReadFormat, WritesOneLineOfJson)
{
    EXPECT_EQ(ReadingsAsJson(1234567, kReadings),
              "{\"time_us\": 1234567, \"sources\": ["
              "{\"target\": 2051, \"flags\": 0, \"name\": \"All CPUs\", \"fraction\": 0.12, \"caption\": \"12.0 %\"}, "
              "{\"target\": 2051, \"flags\": 2, \"name\": \"All CPUs (exp. averaged)\", \"fraction\": 0.125, "
              "\"caption\": \"12.5 %\"}, "
              "{\"target\": 2053, \"flags\": 0, \"name\": \"Used memory\", \"fraction\": 0.5, "
              "\"caption\": \"7952.3 MB\"}]}\n");
}

TEST(ReadFormat, WritesNoSources)
{
    EXPECT_EQ(ReadingsAsJson(0, {}), "{\"time_us\": 0, \"sources\": []}\n");
}

TEST(ReadFormat, EscapesText)
{
    EXPECT_EQ(NameAsJson("a\"b\\c"), "\"a\\\"b\\\\c\"");
    EXPECT_EQ(NameAsJson("a\n\t\x01z"), "\"a\\u000a\\u0009\\u0001z\"");
    EXPECT_EQ(NameAsJson("Größe €"), "\"Größe €\"");
}

TEST(ReadFormat, ReplacesWhatIsNoText)
{
    EXPECT_EQ(NameAsJson("a\xff"), "\"a\xef\xbf\xbd\"");
    EXPECT_EQ(NameAsJson("\xe2\x82"), "\"\xef\xbf\xbd\xef\xbf\xbd\"") << "cut";
    EXPECT_EQ(NameAsJson("\xc0\xaf"), "\"\xef\xbf\xbd\xef\xbf\xbd\"") << "overlong";
    EXPECT_EQ(NameAsJson("\xed\xa0\x80x"), "\"\xef\xbf\xbd\xef\xbf\xbd\xef\xbf\xbdx\"") << "surrogate";
}

TEST(ReadFormat, WritesFractionsAsNumbers)
{
    EXPECT_EQ(FractionAsJson(0), "0");
    EXPECT_EQ(FractionAsJson(1), "1");
    EXPECT_EQ(FractionAsJson(1.0 / 3), "0.333333");
    EXPECT_EQ(FractionAsJson(1e-9), "1e-09");
    EXPECT_EQ(FractionAsJson(std::nan("")), "null");
    EXPECT_EQ(FractionAsJson(INFINITY), "null");
}

TEST(ReadFormat, LinesTheTableUp)
{
    EXPECT_EQ(ReadingsAsTable(kReadings), "Source          Share      Value\n"
                                          "All CPUs       12.0 %     12.0 %\n"
                                          "Used memory    50.0 %  7952.3 MB\n");
}

TEST(ReadFormat, ShowsNoShareBelowZero)
{
    EXPECT_EQ(ReadingsAsTable({{2050, 0, "Idle", -1e-7, "0.0 %"}}), "Source     Share  Value\n"
                                                                    "Idle       0.0 %  0.0 %\n");
}

TEST(ReadFormat, CountsCharactersAndNotBytes)
{
    EXPECT_EQ(ReadingsAsTable({{1, 0, "Größe", 0, "1"}}), "Source     Share  Value\n"
                                                          "Größe      0.0 %      1\n");
}
