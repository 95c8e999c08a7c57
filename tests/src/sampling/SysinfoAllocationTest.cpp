// SPDX-License-Identifier: MIT
#include "kits/application/Message.h"
#include "kits/kernel/Threads.h"
#include "src/sampling/Sysinfo.h"
#include "src/support/MessageCodes.h"
#include "tests/src/sampling/MachineOverTime.h"
#include "tests/src/sampling/Receiver.h"
#include "tests/support/AllocationCounter.h"

#include <gtest/gtest.h>

namespace {

constexpr bigtime_t kHour = 3600LL * 1000000;

/// Returns how much a call allocates on this thread.
template <typename Call> int64 AllocationsOf(Call call)
{
    const AllocationCounter counter;
    call();
    return static_cast<int64>(counter.Count());
}

} // namespace

TEST(SysinfoAllocations, ASteadyRoundAllocatesNothingButItsMessages)
{
    MachineOverTime machine;
    Receiver receivers[3];
    Sysinfo sampler(10);
    sampler.SetSamplingDelay(kHour);
    AwaitSamplerAsleep();
    for (Receiver& receiver : receivers)
        sampler.AddMessenger(receiver.Messenger());
    for (int i = 0; i < 20; i++) {
        machine.Advance(kHour);
        sampler.Sample();
    }

    // The same message, sent by hand to the same receivers.
    const int64 messages = AllocationsOf([&] {
        BMessage message(MSG_SYSINFO_SAMPLE);
        message.SetNewestWins(true);
        message.AddPointer("Sysinfo*", &sampler);
        for (Receiver& receiver : receivers)
            receiver.Messenger().SendMessage(&message);
    });
    for (int i = 0; i < 20; i++) {
        machine.Advance(kHour);
        EXPECT_EQ(AllocationsOf([&] { sampler.Sample(); }), messages);
    }
    EXPECT_GT(messages, 0);
}

TEST(SysinfoAllocations, NobodyListeningAllocatesNothing)
{
    MachineOverTime machine;
    Sysinfo sampler(10);
    // The first lock that a thread takes creates the kit's record of that thread.
    sampler.Sample();
    EXPECT_EQ(AllocationsOf([&] { sampler.Sample(); }), 0);
}
