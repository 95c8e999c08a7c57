// SPDX-License-Identifier: MIT
#include "kits/application/delivery/WakeSet.h"

#include "kits/kernel/FileDescriptor.h"

#include <gtest/gtest.h>
#include <poll.h>
#include <sys/eventfd.h>

#include <array>
#include <vector>

namespace WakeSet = kits::WakeSet;

namespace {

bool IsReadable()
{
    pollfd descriptor{WakeSet::Descriptor(), POLLIN, 0};
    return poll(&descriptor, 1, 0) == 1;
}

std::vector<WakeSet::Number> Clear(size_t most = 16)
{
    std::array<WakeSet::Number, 16> space;
    const auto ready = WakeSet::Clear(std::span(space).first(most));
    return {ready.begin(), ready.end()};
}

class WakeSetTest : public testing::Test {
protected:
    WakeSetTest() { Clear(); }
};

} // namespace

TEST_F(WakeSetTest, IsReadableFromAWakeToTheNextClear)
{
    EXPECT_FALSE(IsReadable());
    for (int round = 0; round < 3; ++round) {
        WakeSet::Wake();
        WakeSet::Wake();
        EXPECT_TRUE(IsReadable());
        EXPECT_TRUE(IsReadable());
        EXPECT_TRUE(Clear().empty());
        EXPECT_FALSE(IsReadable());
    }
}

TEST_F(WakeSetTest, IsReadableAsLongAsWhatWasAddedIs)
{
    constexpr WakeSet::Number kFirst = 1ull << 40, kSecond = kFirst + 1;
    const kits::FileDescriptor first(eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC));
    const kits::FileDescriptor second(eventfd(1, EFD_NONBLOCK | EFD_CLOEXEC));
    ASSERT_TRUE(WakeSet::Add(first.Get(), kFirst));
    EXPECT_FALSE(WakeSet::Add(-1, kSecond));
    EXPECT_FALSE(IsReadable());
    eventfd_write(first.Get(), 1);
    EXPECT_EQ(Clear(), std::vector{kFirst});
    EXPECT_EQ(Clear(), std::vector{kFirst});
    ASSERT_TRUE(WakeSet::Add(second.Get(), kSecond));
    WakeSet::Wake();
    EXPECT_EQ(Clear().size(), 2u);
    // With little room, everybody gets a turn.
    const std::vector<WakeSet::Number> one = Clear(1), other = Clear(1);
    ASSERT_EQ(one.size(), 1u);
    ASSERT_EQ(other.size(), 1u);
    EXPECT_NE(one[0], other[0]);
    WakeSet::Remove(first.Get());
    EXPECT_EQ(Clear(), std::vector{kSecond});
    WakeSet::Remove(second.Get());
    EXPECT_FALSE(IsReadable());
    EXPECT_TRUE(Clear().empty());
}
