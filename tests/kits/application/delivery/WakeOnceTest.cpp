// SPDX-License-Identifier: MIT
#include "kits/application/EventLoop.h"
#include "kits/application/Handler.h"
#include "kits/application/Looper.h"
#include "kits/application/Message.h"

#include <gtest/gtest.h>
#include <poll.h>

#include <thread>

namespace {

bool IsAwake()
{
    pollfd descriptor{kits::EventLoop::WakeDescriptor(), POLLIN, 0};
    return poll(&descriptor, 1, 0) == 1;
}

/// Does everything that waits to be done.
void Settle()
{
    while (IsAwake())
        kits::EventLoop::RunDue();
}

} // namespace

TEST(WakeOnce, WakesWhenTheLastOneGoes)
{
    Settle();
    {
        const kits::WakeOnce outer;
        {
            const kits::WakeOnce inner;
            kits::EventLoop::Wake();
            EXPECT_FALSE(IsAwake());
        }
        EXPECT_FALSE(IsAwake());
    }
    EXPECT_TRUE(IsAwake());
    Settle();
}

TEST(WakeOnce, DoesNotWakeForNothing)
{
    Settle();
    {
        const kits::WakeOnce wake;
    }
    EXPECT_FALSE(IsAwake());
}

TEST(WakeOnce, HoldsBackOnlyItsOwnThread)
{
    Settle();
    const kits::WakeOnce wake;
    std::thread([] { kits::EventLoop::Wake(); }).join();
    EXPECT_TRUE(IsAwake());
    Settle();
}
