// SPDX-License-Identifier: MIT
#include "kits/storage/Resources.h"

#include "kits/support/TypeConstants.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

constexpr char kBytes[] = "resource bytes";
const kits::LinkedResource sLinked(B_RAW_TYPE, "Test", kBytes, sizeof kBytes);

} // namespace

TEST(Resources, FindsWhatWasLinked)
{
    const BResources resources;
    size_t size = 0;
    const void* const data = resources.LoadResource(B_RAW_TYPE, "Test", &size);
    ASSERT_NE(data, nullptr);
    ASSERT_EQ(size, sizeof kBytes);
    EXPECT_EQ(std::memcmp(data, kBytes, size), 0);
    EXPECT_EQ(resources.LoadResource(B_RAW_TYPE, "Test", nullptr), data);
}

TEST(Resources, FindsByTypeAndName)
{
    const BResources resources;
    size_t size = 7;
    EXPECT_EQ(resources.LoadResource(B_STRING_TYPE, "Test", &size), nullptr);
    EXPECT_EQ(size, 0u);
    EXPECT_EQ(resources.LoadResource(B_RAW_TYPE, "test", &size), nullptr);
    EXPECT_EQ(resources.LoadResource(B_RAW_TYPE, nullptr, &size), nullptr);
    EXPECT_EQ(resources.LoadResource(B_RAW_TYPE, "", &size), nullptr);
}
