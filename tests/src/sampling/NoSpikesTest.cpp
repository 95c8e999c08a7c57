// SPDX-License-Identifier: MIT
#include "kits/application/EventLoop.h"
#include "kits/application/Handler.h"
#include "src/sampling/Sysinfo.h"
#include "src/sampling/ValueProvider.h"
#include "tests/src/sampling/MachineOverTime.h"
#include "tests/src/sampling/Receiver.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

// Whatever happens to the machine between two samples, no source shows anything that did not happen.

namespace {

constexpr bigtime_t kHour = 3600LL * 1000000;

class NoSpikesTest : public testing::Test {
protected:
    NoSpikesTest()
    {
        for (const int32 flags : {0, +VP_AVERAGE, +VP_EXP_AVERAGE, VP_AVERAGE | VP_EXP_AVERAGE}) {
            for (int32 cpu = 0; cpu <= MachineOverTime::kProcessors; cpu++) {
                fSources.emplace_back(VP_FIRST_CPU + 2 * cpu, flags);
                fSources.emplace_back(VP_FIRST_CPU_IDLE + 2 * cpu, flags);
            }
            for (const vptarget_t target :
                 {VP_ALL_CPUS, VP_ALL_CPUS_IDLE, VP_FREE_MEMORY, VP_USED_MEMORY, VP_AVAILABLE_SEMS, VP_ALLOCATED_SEMS,
                  VP_AVAILABLE_TEAMS, VP_ALLOCATED_TEAMS, VP_AVAILABLE_THREADS, VP_ALLOCATED_THREADS,
                  VP_AVAILABLE_PORTS, VP_ALLOCATED_PORTS})
                fSources.emplace_back(target, flags);
        }
        // Only the test takes samples.
        fSampler.SetSamplingDelay(kHour);
        AwaitSamplerAsleep();
        fSampler.AddMessenger(fReceiver.Messenger());
    }

    /// Sets the load of all processors from now on, in percent.
    void SetLoads(int32 percent)
    {
        for (int32 i = 0; i < MachineOverTime::kProcessors; i++)
            fMachine.SetLoad(i, percent);
    }

    /// Takes a sample after this time.
    double Sample(bigtime_t after = kHour)
    {
        fMachine.Advance(after);
        return SampleNow();
    }

    /// Takes a sample, and checks every source if receivers get the sample.
    /// @return the load of all processors
    double SampleNow()
    {
        fSampler.Sample();
        const Sysinfo::Autolock lock(&fSampler);
        SysinfoNode* const node = fSampler.NewestNode();
        EXPECT_EQ(fReceiver.TakeAll() > 0, fSampler.CountItems() > 1);
        EXPECT_GE(node->TotalActive(), 0);
        EXPECT_LE(node->TotalActive(), MachineOverTime::kProcessors * node->Elapsed());
        if (fSampler.CountItems() == 1)
            return 0;
        for (ValueProvider& source : fSources) {
            const double share = source.Value(&fSampler, node);
            EXPECT_TRUE(share >= 0 && share <= 1)
                << ValueProvider::Name(source.Target(), source.Flags()) << " " << share;
        }
        ValueProvider all(VP_ALL_CPUS, 0);
        return all.Value(&fSampler, node);
    }

    MachineOverTime fMachine;
    Sysinfo fSampler{10};
    Receiver fReceiver;
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

TEST_F(NoSpikesTest, TheProcessorsMayBeUnreadableForAWhile)
{
    SetLoads(50);
    Sample();
    EXPECT_NEAR(Sample(), 0.5, 0.001);
    for (int i = 0; i < 50; i++) {
        fMachine.Advance(kHour);
        fMachine.Write("proc/stat", "");
        EXPECT_EQ(SampleNow(), 0);
    }
    for (int i = 0; i < 15; i++)
        EXPECT_NEAR(Sample(), 0.5, 0.001) << i;
}

TEST_F(NoSpikesTest, OneProcessorMayBeUnreadableForAWhile)
{
    SetLoads(50);
    Sample();
    fMachine.SetOffline(3, true);
    for (int i = 0; i < 50; i++)
        EXPECT_NEAR(Sample(), 0.5 * 9 / 10, 0.001) << i;
    fMachine.SetOffline(3, false);
    for (int i = 0; i < 15; i++)
        EXPECT_NEAR(Sample(), 0.5, 0.001) << i;
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

TEST_F(NoSpikesTest, NothingIsReadForHoursWhileNobodyListens)
{
    SetLoads(40);
    Sample();
    Sample();
    fSampler.RemoveMessenger(fReceiver.Messenger());
    SetLoads(0);
    for (int i = 0; i < 8; i++) {
        fMachine.Advance(kHour);
        fSampler.Sample();
    }
    fSampler.AddMessenger(fReceiver.Messenger());
    SetLoads(40);
    EXPECT_NEAR(Sample(), 0.4 / 9, 0.001) << "the share of all that time";
    for (int i = 0; i < 12; i++)
        EXPECT_NEAR(Sample(), 0.4, 0.001) << i;
}

TEST_F(NoSpikesTest, MoreMayBeInUseThanALimitAllows)
{
    Sample();
    fMachine.Write("proc/loadavg", "0.00 0.00 0.00 1/99999 4711\n");
    fMachine.Write("proc/net/sockstat", "sockets: used 99999\n");
    fMachine.Write("proc/sysvipc/sem",
                   "key semid perms nsems uid gid cuid cgid otime ctime\n0 0 600 99999 0 0 0 0 0 0\n");
    for (int i = 0; i < 12; i++)
        Sample();
    fMachine.Write("proc/meminfo", "MemTotal: 40000 kB\n");
    for (int i = 0; i < 12; i++)
        Sample();
    fMachine.Write("proc/loadavg", "0.00 0.00 0.00 1/321 4711\n");
    fMachine.Write("proc/net/sockstat", "sockets: used 77\n");
    for (int i = 0; i < 12; i++)
        Sample();
}

TEST_F(NoSpikesTest, EveryFileMayGoBackAndVanish)
{
    SetLoads(30);
    Sample();
    fMachine.SetPageFaults(INT32_MAX);
    Sample();
    for (const char* file :
         {"proc/stat", "proc/meminfo", "proc/vmstat", "proc/loadavg", "proc/net/sockstat", "proc/sysvipc/sem",
          "proc/sys/kernel/pid_max", "proc/sys/kernel/threads-max", "proc/sys/kernel/sem", "proc/sys/fs/file-max"}) {
        const std::string text = fMachine.Text(file);
        std::string back = text;
        for (char& c : back)
            c = c >= '2' && c <= '9' ? '1' : c;
        for (const std::string& next : {back, std::string(), text, text.substr(0, text.size() / 2), back, text}) {
            SCOPED_TRACE(file + (" now: " + next));
            fMachine.Write(file, next);
            fMachine.Pass(kHour);
            SampleNow();
        }
    }
}
