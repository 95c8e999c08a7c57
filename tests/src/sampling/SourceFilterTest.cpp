// SPDX-License-Identifier: MIT
#include "src/sampling/SourceFilter.h"

#include <gtest/gtest.h>

namespace {

SourceFilter::Fit Fit(const char* filter, const char* name, const char* group = "")
{
    return SourceFilter(filter).FitOf(name, group);
}

} // namespace

TEST(SourceFilter, AWholeWordFitsBetterThanAPart)
{
    EXPECT_EQ(Fit("cpu 25", "CPU 25"), SourceFilter::kWholeWord);
    EXPECT_EQ(Fit("cpu 25", "CPU 25 (exp. averaged)"), SourceFilter::kWholeWord);
    EXPECT_EQ(Fit("cpu 25", "CPU 250"), SourceFilter::kWordStart);
    EXPECT_EQ(Fit("cpu 25", "CPU 125"), SourceFilter::kInside);
    EXPECT_EQ(Fit("cpu 25", "CPU 24"), SourceFilter::kNone);
    EXPECT_EQ(Fit("2", "CPU 12 and 2"), SourceFilter::kWholeWord) << "the best place counts";
}

TEST(SourceFilter, AllWordsHaveToFit)
{
    EXPECT_EQ(Fit("memory used", "Used memory"), SourceFilter::kWholeWord);
    EXPECT_EQ(Fit("used mem", "Used memory"), SourceFilter::kWordStart);
    EXPECT_EQ(Fit("used cpu", "Used memory"), SourceFilter::kNone);
}

TEST(SourceFilter, WordsMayBeOfTheGroup)
{
    EXPECT_EQ(Fit("idles", "CPU 3 idle", "CPU idles"), SourceFilter::kWholeWord);
    EXPECT_EQ(Fit("idles 3", "CPU 3 idle", "CPU idles"), SourceFilter::kWholeWord);
    EXPECT_EQ(Fit("idles 4", "CPU 3 idle", "CPU idles"), SourceFilter::kNone);
    EXPECT_EQ(Fit("us cpu", "3 idle", "CPUs"), SourceFilter::kInside);
}

TEST(SourceFilter, UpperAndLowerCaseAreTheSameInAnyLanguage)
{
    EXPECT_EQ(Fit("UNTÄTIG", "CPU 1 untätig"), SourceFilter::kWholeWord);
    EXPECT_EQ(Fit("ä", "CPU 1 untätig"), SourceFilter::kInside);
    EXPECT_EQ(Fit("Ä", "CPU 1 untätig"), SourceFilter::kInside);
    EXPECT_EQ(Fit("ПАМЯТЬ", "Занятая память"), SourceFilter::kWholeWord);
    EXPECT_EQ(Fit("tig", "untätig"), SourceFilter::kInside) << "no word begins behind a letter";
}

TEST(SourceFilter, WithoutWordsEverythingFits)
{
    EXPECT_TRUE(SourceFilter().IsEmpty());
    EXPECT_TRUE(SourceFilter(" \t ").IsEmpty());
    EXPECT_FALSE(SourceFilter("a").IsEmpty());
    EXPECT_NE(Fit("", "CPU 1"), SourceFilter::kNone);
    EXPECT_EQ(SourceFilter("CPU  1"), SourceFilter(" cpu 1 "));
}
