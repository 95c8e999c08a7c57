// SPDX-License-Identifier: MIT
#include "kits/interface/platform/Display.h"

#include "kits/interface/platform/x11/XWindows.h"

#include <gtest/gtest.h>

namespace {

TEST(DisplayTest, KnowsAnXServerFromAScreenInMemory)
{
    EXPECT_EQ(kits::Display::IsX11(), kits::XServer() != nullptr);
    EXPECT_FALSE(kits::Display::IsWayland());
    EXPECT_TRUE(kits::Display::HasLastingPictures());
}

} // namespace
