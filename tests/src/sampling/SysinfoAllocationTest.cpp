// SPDX-License-Identifier: MIT
#include "kits/application/Message.h"
#include "kits/kernel/Threads.h"
#include "src/sampling/Sysinfo.h"
#include "src/support/MessageCodes.h"
#include "tests/src/sampling/Receiver.h"
#include "tests/src/sampling/RecordedMachine.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <new>

namespace {

thread_local int64 sAllocations = 0;

} // namespace

// All forms of the operator call this one. Not inlined, because the compiler would remove matching pairs of new and
// delete.
[[gnu::noinline]] void* operator new(std::size_t size)
{
    sAllocations++;
    if (void* memory = std::malloc(size > 0 ? size : 1))
        return memory;
    throw std::bad_alloc();
}

[[gnu::noinline]] void operator delete(void* memory) noexcept
{
    std::free(memory);
}

[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}

namespace {

constexpr bigtime_t kHour = 3600LL * 1000000;

/// Returns how much a call allocates on this thread.
template <typename Call> int64 AllocationsOf(Call call)
{
    const int64 before = sAllocations;
    call();
    return sAllocations - before;
}

} // namespace

TEST(SysinfoAllocations, ASteadyRoundAllocatesNothingButItsMessages)
{
    RecordedMachine machine;
    Receiver receivers[3];
    Sysinfo sampler(10);
    sampler.SetSamplingDelay(kHour);
    thread_info info;
    do {
        snooze(1000);
    } while (get_thread_info(find_thread("Sysinfo sampler"), &info) != B_OK || info.state != B_THREAD_ASLEEP);
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
    RecordedMachine machine;
    Sysinfo sampler(10);
    // The first lock that a thread takes creates the kit's record of that thread.
    sampler.Sample();
    EXPECT_EQ(AllocationsOf([&] { sampler.Sample(); }), 0);
}
