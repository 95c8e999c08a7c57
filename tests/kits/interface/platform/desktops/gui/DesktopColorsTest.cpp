// SPDX-License-Identifier: MIT
#include "kits/interface/platform/desktops/DesktopColors.h"

#include "tests/support/TempFolder.h"

#include <gtest/gtest.h>

namespace kits {
namespace {

class DesktopColorsTest : public testing::Test {
protected:
    DesktopColorsTest()
    {
        for (const char* name : {"XDG_CURRENT_DESKTOP", "XDG_CONFIG_HOME", "XDG_CONFIG_DIRS"}) {
            const char* value = getenv(name);
            fBefore.emplace_back(name, value != nullptr ? std::optional<std::string>(value) : std::nullopt);
        }
        setenv("XDG_CONFIG_HOME", folder.Path().c_str(), 1);
        setenv("XDG_CONFIG_DIRS", folder.Path("none").c_str(), 1);
        std::filesystem::create_directory(folder.Path("lxqt"));
        folder.Put("kdeglobals", "[Colors:Window]\nBackgroundNormal=42,46,50\n");
        folder.Put("lxqt/lxqt.conf", "[General]\ntheme=frost\n[Palette]\nwindow_color=#efefef\n");
    }
    ~DesktopColorsTest() override
    {
        for (const auto& [name, value] : fBefore)
            if (value)
                setenv(name, value->c_str(), 1);
            else
                unsetenv(name);
    }

    TempFolder folder{TempFolder::Place::kMemory};

private:
    std::vector<std::pair<const char*, std::optional<std::string>>> fBefore;
};

TEST_F(DesktopColorsTest, AreThoseOfTheSessionsDesktop)
{
    setenv("XDG_CURRENT_DESKTOP", "KDE", 1);
    EXPECT_EQ(DesktopColors::AreDark(), true);
    EXPECT_EQ(DesktopColors::Files().front(), folder.Path("kdeglobals"));
    setenv("XDG_CURRENT_DESKTOP", "X-Some:LXQt", 1);
    EXPECT_EQ(DesktopColors::AreDark(), false);
    folder.Put("lxqt/lxqt.conf", "[Palette]\nwindow_color=#202326\n");
    EXPECT_EQ(DesktopColors::AreDark(), true);
    folder.Put("lxqt/lxqt.conf", "[Palette]\nwindow_color=\n");
    EXPECT_EQ(DesktopColors::AreDark(), std::nullopt);
    EXPECT_EQ(DesktopColors::Files(), std::vector{folder.Path("lxqt/lxqt.conf")});
}

TEST_F(DesktopColorsTest, AreUnknownOnOtherDesktops)
{
    for (const char* desktop : {"XFCE", "", "NOKDE"}) {
        setenv("XDG_CURRENT_DESKTOP", desktop, 1);
        EXPECT_EQ(DesktopColors::AreDark(), std::nullopt);
        EXPECT_TRUE(DesktopColors::Files().empty());
    }
    unsetenv("XDG_CURRENT_DESKTOP");
    EXPECT_EQ(DesktopColors::AreDark(), std::nullopt);
}

} // namespace
} // namespace kits
