// SPDX-License-Identifier: MIT
#include "kits/kernel/Threads.h"
#include "src/sampling/Sysinfo.h"
#include "src/sampling/ThreadMagic.h"
#include "src/sampling/ValueProvider.h"
#include "tests/src/sampling/MachineOverTime.h"
#include "tests/src/sampling/Receiver.h"

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

} // namespace

/// Everything at once. Only a thread sanitizer can judge this; without one, it shows that nothing waits for ever.
TEST(SysinfoThreads, EveryCallFromAnyThread)
{
    MachineOverTime machine;
    Receiver receiver;
    const BMessenger messenger = receiver.Messenger();
    Sysinfo sampler(10);
    sampler.SetSamplingDelay(1000);
    sampler.AddMessenger(messenger);

    std::vector<std::unique_ptr<FireAndForgetThread>> threads;
    const auto start = [&](std::function<void(int)> call) {
        threads.push_back(FireAndForgetThread::Launch(std::make_unique<Work>([call] {
                                                          for (int i = 0; i < 50; i++) {
                                                              call(i);
                                                              snooze(1000);
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
        snooze(1000);
    }
    EXPECT_EQ(find_thread("Sysinfo sampler"), B_NAME_NOT_FOUND);
}
