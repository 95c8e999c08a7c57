// SPDX-License-Identifier: MIT
#include "kits/kernel/Clock.h"
#include "tests/long/LongTest.h"
#include "tests/support/Await.h"
#include "tests/support/GuiTest.h"

class HeldUpTest : public LongTest {
protected:
    /// Blocks until this many samples were taken, as a main thread that waits for a screen that does not answer.
    void HoldUp(int64 samples)
    {
        for (int64 i = 0; i < samples; i++) {
            const bigtime_t before = NewestTime();
            ASSERT_TRUE(test::Await([this, before] { return NewestTime() != before; }));
        }
    }

    bigtime_t NewestTime() const
    {
        const Sysinfo::Autolock lock(fSampler.get());
        const SysinfoNode* newest = fSampler->NewestNode();
        return newest != nullptr ? newest->Time() : 0;
    }
};

TEST_F(HeldUpTest, KeepsMemoryFlatAtAHundredSamplesASecond)
{
    fSampler->SetSamplingDelay(10000);
    // The history is full and every chart has a waiting sample.
    HoldUp(50);
    const Memory before = MeasureMemory();
    HoldUp(IsFull() ? 6000 : 200);
    const Memory after = MeasureMemory();
    // One sample per chart waits, and the window's own messages.
    EXPECT_LE(fWindow->CountMessages(), 2 * kCharts);
    if (MemoryCounts()) {
        EXPECT_LT(after.used, before.used + 16 * 1024);
        EXPECT_LT(after.resident, before.resident + 512 * 1024);
    }
    if (IsFull())
        std::printf("in use: %ld kB before, %ld kB after\n", static_cast<long>(before.used / 1024),
                    static_cast<long>(after.used / 1024));

    // Once it continues, it draws the newest.
    EXPECT_TRUE(test::WaitFor([this] { return fHolder->ChartAt(kCharts - 1)->Picture().Column() > 0; }));
}
