// SPDX-License-Identifier: MIT
#include "kits/interface/InterfaceKit.h"
#include "kits/interface/Shortcuts.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    // Listing tests needs no screen.
    if (testing::GTEST_FLAG(list_tests))
        return RUN_ALL_TESTS();
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    if (kits::InitInterface(argc, argv) != B_OK) {
        std::fprintf(stderr, "%s\n", kits::InterfaceError());
        return 1;
    }
    kits::UseShortcuts();
    const int result = RUN_ALL_TESTS();
    kits::ExitInterface();
    return result;
}
