// SPDX-License-Identifier: MIT
#include "src/sampling/SourceTable.h"

#include "src/sampling/Source.h"
#include "tests/src/sampling/MachineOverTime.h"

#include <gtest/gtest.h>

#include <algorithm>

TEST(SourceTable, OffersTheSourcesOfEveryMachineInOrder)
{
    const std::vector<SourceKey> expected = {
        {2051, 0}, {2051, 2}, {2051, 1}, {2051, 3}, {2050, 0}, {2050, 2}, {2050, 1}, {2050, 3}, {2052, 0}, {2052, 2},
        {2053, 0}, {2053, 2}, {2058, 0}, {2059, 0}, {2061, 0}, {2062, 0}, {2055, 0}, {2056, 0}, {2064, 0}, {2065, 0}};
    const auto sources = MachineSources();
    ASSERT_GE(sources.size(), expected.size());
    EXPECT_EQ(std::vector<SourceKey>(sources.begin(), sources.begin() + 20), expected);
}

TEST(SourceTable, HasFourGroupsOfProcessors)
{
    const auto groups = ProcessorGroups();
    ASSERT_EQ(groups.size(), 4u);
    EXPECT_STREQ(groups[0].name, "CPUs");
    EXPECT_EQ(groups[0].Sources(0), (std::vector<SourceKey>{{2, 0}, {2, 2}}));
    EXPECT_STREQ(groups[1].name, "CPU averages");
    EXPECT_EQ(groups[1].Sources(1), (std::vector<SourceKey>{{4, 1}, {4, 3}}));
    EXPECT_STREQ(groups[2].name, "CPU idles");
    EXPECT_EQ(groups[2].Sources(0), (std::vector<SourceKey>{{1, 0}, {1, 2}}));
    EXPECT_STREQ(groups[3].name, "CPU average idles");
    EXPECT_EQ(groups[3].Sources(1023), (std::vector<SourceKey>{{2047, 1}, {2047, 3}}));
}

TEST(SourceTable, GivesEverySourceOnce)
{
    std::vector<SourceKey> sources = AllSources(3);
    const size_t first = MachineSources().size();
    EXPECT_EQ(sources.size(), first + 8 * 3);
    EXPECT_EQ(sources[first], (SourceKey{2, 0}));
    EXPECT_EQ(sources[first + 2], (SourceKey{4, 0}));
    for (const SourceKey& source : sources) {
        EXPECT_EQ(std::count(sources.begin(), sources.end(), source), 1);
        EXPECT_NE(ValueProvider::Name(source.target, source.flags), "");
    }
}

TEST(SourceTable, KnowsEveryNumberOfASource)
{
    for (const SourceKey& source : MachineSources())
        EXPECT_TRUE(IsKnownSource(source.target)) << source.target;
    // The unassigned ones among them are accepted, too: settings may have them.
    for (vptarget_t target = 1; target <= 2065; target++)
        EXPECT_TRUE(IsKnownSource(target)) << target;
    for (vptarget_t target : {INT32_MIN, -1, 0, INT32_MAX})
        EXPECT_FALSE(IsKnownSource(target)) << target;
}

TEST(SourceTable, FindsEverySourceByItsNumber)
{
    for (const Source& source : Sources())
        EXPECT_EQ(FindSource(source.target), &source) << source.name;
    EXPECT_EQ(FindSource(7), FindSource(1));
    EXPECT_EQ(FindSource(2048), FindSource(2));
    for (vptarget_t target : {-1, 0, 2054, 2057, 2060, 2063, INT32_MAX})
        EXPECT_EQ(FindSource(target), nullptr) << target;
}

TEST(SourceTable, ReadsTheFilesOfSourcesThatHaveOne)
{
    MachineOverTime machine;
    machine.Write("proc/handles", "40 100\n");
    kits::FigureFile file("proc/handles", [](std::string_view text) -> std::optional<kits::Figure> {
        return kits::Figure{static_cast<int64>(kits::TakeNumber(&text).value_or(0)),
                            static_cast<int64>(kits::FirstNumber(text).value_or(0))};
    });
    const std::vector<Source> sources = {{.target = 3000, .name = "", .unit = "", .count = nullptr},
                                         {.target = 3001, .name = "", .unit = "", .count = nullptr, .file = &file}};
    std::vector<FigureRecord> figures;
    ReadFiles(sources, &figures);
    ASSERT_EQ(figures.size(), 1u);
    EXPECT_EQ(+figures[0].target, 3001);
    EXPECT_EQ(+figures[0].count, 40);
    EXPECT_EQ(+figures[0].maximum, 100);
    figures.resize(kMostFigures);
    ReadFiles(sources, &figures);
    EXPECT_EQ(figures.size(), kMostFigures);
}
