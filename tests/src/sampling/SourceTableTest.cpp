// SPDX-License-Identifier: MIT
#include "src/sampling/SourceTable.h"

#include <gtest/gtest.h>

#include <algorithm>

TEST(SourceTable, OffersTheSourcesOfEveryMachineInOrder)
{
    const std::vector<SourceKey> expected = {
        {2051, 0}, {2051, 2}, {2051, 1}, {2051, 3}, {2050, 0}, {2050, 2}, {2050, 1}, {2050, 3}, {2052, 0}, {2052, 2},
        {2053, 0}, {2053, 2}, {2058, 0}, {2059, 0}, {2061, 0}, {2062, 0}, {2055, 0}, {2056, 0}, {2064, 0}, {2065, 0}};
    const auto sources = MachineSources();
    EXPECT_EQ(std::vector<SourceKey>(sources.begin(), sources.end()), expected);
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
    EXPECT_EQ(sources.size(), 20u + 8 * 3);
    EXPECT_EQ(sources[20], (SourceKey{2, 0}));
    EXPECT_EQ(sources[22], (SourceKey{4, 0}));
    for (const SourceKey& source : sources) {
        EXPECT_EQ(std::count(sources.begin(), sources.end(), source), 1);
        EXPECT_NE(ValueProvider::Name(source.target, source.flags), "");
    }
}
