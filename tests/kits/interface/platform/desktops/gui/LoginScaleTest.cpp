// SPDX-License-Identifier: MIT
#include "kits/interface/platform/desktops/LoginScale.h"

#include "tests/kits/interface/platform/x11/WrittenSettings.h"
#include "tests/support/Environment.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace {

/// A MATE session with the variables of its login, in the environment of this process.
class LoginScale : public testing::Test {
protected:
    LoginScale()
    {
        for (const char* name : {"QT_SCREEN_SCALE_FACTORS", "QT_ENABLE_HIGHDPI_SCALING", "QT_USE_PHYSICAL_DPI"})
            unsetenv(name);
        setenv("XDG_CURRENT_DESKTOP", "Debian:MATE", 1);
        setenv("QT_SCALE_FACTOR", "2", 1);
        setenv("QT_FONT_DPI", "96", 1);
    }

    const kits::XSettings fSettings =
        WrittenSettings().Integer("Gdk/WindowScalingFactor", 1).Integer("Xft/DPI", 96 * 1024).Read();

    void ExpectHidden() const
    {
        const kits::LoginScale scale(fSettings);
        EXPECT_EQ(std::getenv("QT_SCALE_FACTOR"), nullptr);
        EXPECT_EQ(std::getenv("QT_FONT_DPI"), nullptr);
    }
    void ExpectSeen(const char* factor) const
    {
        const kits::LoginScale scale(fSettings);
        EXPECT_STREQ(std::getenv("QT_SCALE_FACTOR"), factor);
        EXPECT_STREQ(std::getenv("QT_FONT_DPI"), "96");
    }

private:
    const EnvironmentGuard fGuard{"XDG_CURRENT_DESKTOP",     "QT_SCALE_FACTOR",           "QT_FONT_DPI",
                                  "QT_SCREEN_SCALE_FACTORS", "QT_ENABLE_HIGHDPI_SCALING", "QT_USE_PHYSICAL_DPI"};
};

} // namespace

TEST_F(LoginScale, HidesTheVariablesAsLongAsItExists)
{
    ExpectHidden();
    EXPECT_STREQ(std::getenv("QT_SCALE_FACTOR"), "2");
    EXPECT_STREQ(std::getenv("QT_FONT_DPI"), "96");
}

TEST_F(LoginScale, HidesTheResolutionAlone)
{
    unsetenv("QT_SCALE_FACTOR");
    ExpectHidden();
    EXPECT_EQ(std::getenv("QT_SCALE_FACTOR"), nullptr);
    EXPECT_STREQ(std::getenv("QT_FONT_DPI"), "96");
}

TEST_F(LoginScale, LeavesOtherDesktopsAlone)
{
    setenv("XDG_CURRENT_DESKTOP", "XFCE", 1);
    EXPECT_FALSE(kits::LoginScale::IsInEnvironment());
    ExpectSeen("2");
}

TEST_F(LoginScale, LeavesAFactorThatTheUserHasChosen)
{
    setenv("QT_SCALE_FACTOR", "1.5", 1);
    ExpectSeen("1.5");
    setenv("QT_SCALE_FACTOR", "2", 1);
    setenv("QT_SCREEN_SCALE_FACTORS", "1.5", 1);
    ExpectSeen("2");
}

TEST_F(LoginScale, HidesNothingWhereNoSettingsTellTheScale)
{
    ASSERT_TRUE(kits::LoginScale::IsInEnvironment());
    for (const kits::XSettings& settings : {kits::XSettings(), WrittenSettings().Integer("Xft/DPI", 96 * 1024).Read(),
                                            WrittenSettings().Integer("Gdk/WindowScalingFactor", 1).Read()}) {
        const kits::LoginScale scale(settings);
        EXPECT_STREQ(std::getenv("QT_SCALE_FACTOR"), "2");
        EXPECT_STREQ(std::getenv("QT_FONT_DPI"), "96");
    }
}

TEST_F(LoginScale, NeedsAVariable)
{
    unsetenv("QT_SCALE_FACTOR");
    unsetenv("QT_FONT_DPI");
    EXPECT_FALSE(kits::LoginScale::IsInEnvironment());
}
