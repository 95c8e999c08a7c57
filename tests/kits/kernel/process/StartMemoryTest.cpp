// SPDX-License-Identifier: MIT
#include "kits/kernel/StartMemory.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <memory>
#include <numeric>
#include <vector>

namespace {

int sWritten = 1;

/// Returns how many pages of files this process has in memory.
long ResidentFilePages()
{
    long shared = -1;
    if (FILE* file = std::fopen("/proc/self/statm", "r")) {
        if (std::fscanf(file, "%*d %*d %ld", &shared) != 1)
            shared = -1;
        std::fclose(file);
    }
    return shared;
}

} // namespace

TEST(StartMemory, GivesBackPagesOfFilesAndKeepsWhatWasWritten)
{
    sWritten = 42;
    std::vector<int> numbers(100000);
    std::iota(numbers.begin(), numbers.end(), 0);
    const long before = ResidentFilePages();
    ASSERT_GT(before, 0);

    kits::GiveBackStartMemory();

    EXPECT_LT(ResidentFilePages(), before);
    EXPECT_EQ(sWritten, 42);
    EXPECT_EQ(std::accumulate(numbers.begin(), numbers.end(), 0L), 4999950000L);
    // Code and constants come back, including those of libraries.
    EXPECT_STREQ(std::to_string(sWritten).c_str(), "42");
}

TEST(StartMemory, MayBeDoneAgain)
{
    for (int i = 0; i < 3; i++)
        kits::GiveBackStartMemory();
    EXPECT_GT(ResidentFilePages(), 0);
}
