// SPDX-License-Identifier: MIT
#include "kits/kernel/record/SystemReader.h"
#include "tests/support/AllocationCounter.h"
#include "tests/support/RecordedMachine.h"

#include <gtest/gtest.h>

#include <vector>

TEST(SystemReaderAllocationTest, AReadingAllocatesNothing)
{
    for (const char* root : {"/", "two-processors", "four-tebibytes"}) {
        kits::SystemReader reader(*root == '/' ? root : MachineFolder(root).c_str());
        system_info info;
        std::vector<bigtime_t> active(kits::kMaxProcessors);
        bigtime_t now = 0;
        reader.Read(now, &info, active.data(), kits::kMaxProcessors);
        const AllocationCounter counter;
        // Long enough for everything that is done once a second and once a minute.
        for (int i = 0; i < 400; ++i)
            reader.Read(now += 300000, &info, active.data(), kits::kMaxProcessors);
        EXPECT_EQ(counter.Count(), 0u) << root;
    }
    const AllocationCounter counter;
    const std::vector<int> some(5);
    EXPECT_EQ(counter.Count(), 1u) << "they are counted";
}
