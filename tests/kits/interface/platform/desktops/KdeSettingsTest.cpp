// SPDX-License-Identifier: MIT
#include "kits/interface/platform/desktops/KdeSettings.h"

#include "kits/kernel/Bounds.h"
#include "tests/support/TempFolder.h"

#include <gtest/gtest.h>

namespace kits {
namespace {

class KdeSettingsTest : public testing::Test {
protected:
    void SetUp() override
    {
        for (const char* name : {"own/kdedefaults", "system", "data/color-schemes"})
            std::filesystem::create_directories(folder.Path(name));
        setenv("XDG_CONFIG_HOME", folder.Path("own").c_str(), 1);
        setenv("XDG_CONFIG_DIRS", folder.Path("system").c_str(), 1);
        setenv("XDG_DATA_HOME", folder.Path("data").c_str(), 1);
    }

    TempFolder folder{TempFolder::Place::kMemory};
};

TEST_F(KdeSettingsTest, TheUsersOwnComeFirst)
{
    const auto look = [] { return KdeSettings::Value("kdeglobals", "KDE", "Look"); };
    EXPECT_EQ(look(), std::nullopt);
    folder.Put("system/kdeglobals", "[KDE]\nLook=system\n");
    EXPECT_EQ(look(), "system");
    folder.Put("own/kdedefaults/kdeglobals", "[KDE]\nLook=look\n");
    EXPECT_EQ(look(), "look");
    folder.Put("own/kdeglobals", "[KDE]\nLook=\n");
    EXPECT_EQ(look(), "look");
    folder.Put("own/kdeglobals", "[KDE]\nLook=own\n");
    EXPECT_EQ(look(), "own");
}

TEST_F(KdeSettingsTest, LooksIntoSoManyListedFolders)
{
    std::string list;
    for (size_t i = 1; i < bounds::kMostListedFolders; ++i)
        list += "/nowhere:";
    folder.Put("system/kdeglobals", "[KDE]\nLook=system\n");
    setenv("XDG_CONFIG_DIRS", (list + folder.Path("system")).c_str(), 1);
    EXPECT_EQ(KdeSettings::Value("kdeglobals", "KDE", "Look"), "system");
    setenv("XDG_CONFIG_DIRS", ("/nowhere:" + list + folder.Path("system")).c_str(), 1);
    EXPECT_EQ(KdeSettings::Value("kdeglobals", "KDE", "Look"), std::nullopt);
}

TEST_F(KdeSettingsTest, AreDarkByTheirColoursOrTheirScheme)
{
    EXPECT_EQ(KdeSettings::IsDark(), std::nullopt);
    folder.Put("own/kdeglobals", "[General]\nColorScheme=Night\n");
    EXPECT_EQ(KdeSettings::IsDark(), std::nullopt);
    folder.Put("data/color-schemes/Night.colors", "[Colors:Window]\nBackgroundNormal=32,38,44\n");
    EXPECT_EQ(KdeSettings::IsDark(), true);
    folder.Put("own/kdeglobals", "[General]\nColorScheme=Night\n\n[Colors:Window]\nBackgroundNormal=239,240,241\n");
    EXPECT_EQ(KdeSettings::IsDark(), false);
    folder.Put("own/kdeglobals", "[Colors:Window]\nBackgroundNormal=no colour\n");
    EXPECT_EQ(KdeSettings::IsDark(), std::nullopt);
}

TEST_F(KdeSettingsTest, ADarkColourIsOneBelowTheMiddle)
{
    EXPECT_EQ(KdeSettings::IsDarkColor("0,0,0"), true);
    EXPECT_EQ(KdeSettings::IsDarkColor("127,127,127"), true);
    EXPECT_EQ(KdeSettings::IsDarkColor("128,128,128"), false);
    EXPECT_EQ(KdeSettings::IsDarkColor("0,0,255,255"), true);
    EXPECT_EQ(KdeSettings::IsDarkColor("300,0,0"), std::nullopt);
    EXPECT_EQ(KdeSettings::IsDarkColor("4294967296,0,0"), std::nullopt);
    EXPECT_EQ(KdeSettings::IsDarkColor("-1,0,0"), std::nullopt);
    EXPECT_EQ(KdeSettings::IsDarkColor("3,2,02423241"), std::nullopt);
    EXPECT_EQ(KdeSettings::IsDarkColor("3,2,1 and more"), std::nullopt);
    EXPECT_EQ(KdeSettings::IsDarkColor("#202020"), std::nullopt);
}

} // namespace
} // namespace kits
