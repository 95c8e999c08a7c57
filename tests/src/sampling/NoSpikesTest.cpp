#include "kits/application/EventLoop.h"
#include "kits/application/Handler.h"
#include "src/sampling/Sysinfo.h"
#include "src/sampling/ValueProvider.h"
#include "tests/src/sampling/Receiver.h"
#include "tests/src/sampling/RecordedMachine.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

// Whatever happens to the machine between two samples, no source shows what was not.

namespace {

constexpr bigtime_t kSecond = 1000000;
constexpr bigtime_t kHour = 3600 * kSecond;

class NoSpikesTest : public testing::Test {
protected:
    NoSpikesTest()
    {
        for (const int32 flags : {0, +VP_AVERAGE, +VP_EXP_AVERAGE, VP_AVERAGE | VP_EXP_AVERAGE}) {
            for (int32 cpu = 0; cpu <= RecordedMachine::kProcessors; cpu++) {
                fSources.emplace_back(VP_FIRST_CPU + 2 * cpu, flags);
                fSources.emplace_back(VP_FIRST_CPU_IDLE + 2 * cpu, flags);
            }
            for (const vptarget_t target :
                 {VP_ALL_CPUS, VP_ALL_CPUS_IDLE, VP_FREE_MEMORY, VP_USED_MEMORY, VP_AVAILABLE_THREADS,
                  VP_ALLOCATED_THREADS, VP_ALLOCATED_TEAMS, VP_ALLOCATED_PORTS, VP_ALLOCATED_SEMS})
                fSources.emplace_back(target, flags);
        }
        // Nothing but the test takes samples.
        fSampler.SetSamplingDelay(Sysinfo::kMaxDelay);
    }

    /// The load of all processors from now on, in percent.
    void SetLoads(int32 percent)
    {
        for (int32 i = 0; i < RecordedMachine::kProcessors; i++)
            fMachine.SetLoad(i, percent);
    }

    /// Takes a sample after so long, and looks at every source.
    /// @return the load of all processors
    double Sample(bigtime_t after = 10 * kSecond)
    {
        fMachine.Advance(after);
        SysinfoNode* const node = new SysinfoNode;
        node->Update(fSampler.NewestNode());
        const Sysinfo::Autolock lock(&fSampler);
        fSampler.Attach(node);
        if (node->Elapsed() > 0) {
            for (ValueProvider& source : fSources) {
                const double share = source.Value(&fSampler, node);
                EXPECT_TRUE(std::isfinite(share)) << ValueProvider::Name(source.Target(), source.Flags());
                EXPECT_TRUE(share >= 0 && share <= 1)
                    << ValueProvider::Name(source.Target(), source.Flags()) << " " << share;
            }
        }
        EXPECT_GE(node->TotalActive(), 0);
        EXPECT_LE(node->TotalActive(), RecordedMachine::kProcessors * node->Elapsed());
        ValueProvider all(VP_ALL_CPUS, 0);
        return node->Elapsed() > 0 ? all.Value(&fSampler, node) : 0;
    }

    RecordedMachine fMachine;
    Sysinfo fSampler{10};
    std::vector<ValueProvider> fSources;
};

} // namespace

TEST_F(NoSpikesTest, TheFirstSampleShowsNothing)
{
    SetLoads(100);
    EXPECT_EQ(Sample(), 0);
    EXPECT_NEAR(Sample(), 1, 0.001);
}

TEST_F(NoSpikesTest, AfterSleepTheShareIsThatOfTheWholeTime)
{
    SetLoads(80);
    Sample();
    EXPECT_NEAR(Sample(), 0.8, 0.001);
    SetLoads(0);
    EXPECT_NEAR(Sample(8 * kHour), 0, 0.001);
    SetLoads(80);
    for (int i = 0; i < 12; i++)
        EXPECT_NEAR(Sample(), 0.8, 0.001) << i;
}

TEST_F(NoSpikesTest, AProcessorMayGoOfflineAndComeBack)
{
    SetLoads(60);
    Sample();
    Sample();
    fMachine.SetOffline(3, true);
    fMachine.SetOffline(9, true);
    for (int i = 0; i < 5; i++)
        EXPECT_NEAR(Sample(), 0.6 * 8 / 10, 0.001) << i;
    fMachine.SetOffline(3, false);
    EXPECT_NEAR(Sample(), 0.6 * 9 / 10, 0.001);
    fMachine.SetOffline(9, false);
    for (int i = 0; i < 5; i++)
        EXPECT_NEAR(Sample(), 0.6, 0.001) << i;
}

TEST_F(NoSpikesTest, CountsMayBeginAnew)
{
    SetLoads(50);
    Sample();
    Sample();
    fMachine.ResetCounts();
    EXPECT_LE(Sample(), 0.5001);
    for (int i = 0; i < 5; i++)
        EXPECT_NEAR(Sample(), 0.5, 0.001) << i;
}

TEST_F(NoSpikesTest, ManySamplesWithoutAnyTimeBetweenThem)
{
    SetLoads(100);
    Sample();
    for (int i = 0; i < 20; i++)
        Sample(0);
    EXPECT_LE(Sample(), 1);
}
