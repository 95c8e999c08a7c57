// SPDX-License-Identifier: MIT
#include "kits/kernel/Threads.h"
#include "src/sampling/Sysinfo.h"
#include "src/sampling/ThreadMagic.h"
#include "src/sampling/ValueProvider.h"
#include "tests/src/sampling/MachineOverTime.h"
#include "tests/src/sampling/Receiver.h"
#include "tests/support/Await.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

namespace {

struct Work : FunctionObject {
    explicit Work(std::function<void()> call)
        : work(std::move(call))
    {
    }
    void operator()() override { work(); }

    std::function<void()> work;
};

/// Lets time pass, and waits until the sampler has taken a sample since.
bool AwaitSample(MachineOverTime& machine, const Sysinfo& sampler)
{
    machine.Pass(10000);
    const bigtime_t moment = machine.Now();
    return test::Await([&] {
        const Sysinfo::Autolock lock(&sampler);
        const SysinfoNode* newest = sampler.NewestNode();
        return newest != nullptr && newest->Time() >= moment;
    });
}

} // namespace

/// Everything at once. Only a thread sanitizer can judge this; without one, it shows that nothing waits for ever.
TEST(SysinfoThreads, EveryCallFromAnyThread)
{
    MachineOverTime machine;
    Receiver receiver, passing;
    const BMessenger messenger = passing.Messenger();
    Sysinfo sampler(10);
    sampler.SetSamplingDelay(1000);
    sampler.AddMessenger(receiver.Messenger());

    std::vector<std::unique_ptr<FireAndForgetThread>> threads;
    const auto start = [&](std::function<void(int)> call) {
        threads.push_back(FireAndForgetThread::Launch(std::make_unique<Work>([&, call] {
                                                          for (int i = 0; i < 50; i++) {
                                                              call(i);
                                                              if (!AwaitSample(machine, sampler)) {
                                                                  ADD_FAILURE() << "no sample";
                                                                  return;
                                                              }
                                                          }
                                                      }),
                                                      "caller", 10));
    };
    start([&](int i) { sampler.SetSamplingDelay(1000 + i % 5); });
    start([&](int i) { sampler.SetNodesToKeep(static_cast<int16>(1 + i % 12)); });
    start([&](int) {
        sampler.AddMessenger(messenger);
        sampler.RemoveMessenger(messenger);
        sampler.AddMessenger(BMessenger());
    });
    start([&](int) {
        BMessage settings;
        sampler.SavePrefsTo(&settings);
        sampler.LoadPrefsFrom(&settings);
        sampler.GhostArchive(&settings);
    });
    start([&](int) {
        ValueProvider load(VP_ALL_CPUS, VP_AVERAGE);
        Sysinfo::Autolock lock(&sampler);
        if (SysinfoNode* newest = sampler.NewestNode())
            load.Value(&sampler, newest);
    });
    for (const auto& thread : threads)
        while (wait_for_thread(thread->ThreadID(), nullptr) != B_BAD_THREAD_ID)
            continue;
    EXPECT_GE(sampler.SamplingDelay(), 1000);
    EXPECT_LE(sampler.CountItems(), 12);
}

TEST(SysinfoThreads, EndsInTheMiddleOfItsRounds)
{
    MachineOverTime machine;
    Receiver receiver;
    for (int i = 0; i < 30; i++) {
        Sysinfo sampler(10);
        sampler.AddMessenger(receiver.Messenger());
        sampler.SetSamplingDelay(0);
        for (int samples = 0; samples < i % 5; samples++)
            ASSERT_TRUE(AwaitSample(machine, sampler));
    }
    EXPECT_EQ(find_thread("Sysinfo sampler"), B_NAME_NOT_FOUND);
}
