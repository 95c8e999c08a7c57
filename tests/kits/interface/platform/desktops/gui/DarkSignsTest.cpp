// SPDX-License-Identifier: MIT
#include "kits/interface/platform/desktops/DarkSigns.h"

#include <gtest/gtest.h>

#include <vector>

namespace kits {
namespace {

using Verdict = std::optional<bool>;

/// Returns all combinations of the signs that rank below the desktop's own.
std::vector<DarkSigns> AllOfGtk()
{
    std::vector<DarkSigns> all;
    for (const char* environment : {"", "Adwaita", "Adwaita:dark"}) {
        for (const std::optional<std::string>& name :
             {std::optional<std::string>(), std::optional<std::string>("Greybird"),
              std::optional<std::string>("Greybird-dark")}) {
            for (const bool prefersDark : {false, true}) {
                for (const bool fileIsDark : {false, true}) {
                    DarkSigns signs;
                    signs.environment = environment;
                    signs.themeName = name;
                    signs.prefersDark = prefersDark;
                    signs.fileIsDark = fileIsDark;
                    all.push_back(signs);
                }
            }
        }
    }
    return all;
}

TEST(DarkSignsTest, WhatThePortalPrefersDecides)
{
    for (DarkSigns signs : AllOfGtk()) {
        for (const Verdict desktop : {Verdict(), Verdict(true), Verdict(false)}) {
            signs.desktop = desktop;
            signs.portal = 1;
            EXPECT_EQ(signs.IsDark(), true);
            signs.portal = 2;
            EXPECT_EQ(signs.IsDark(), false);
        }
    }
}

TEST(DarkSignsTest, ThenTheColoursOfTheDesktopDo)
{
    for (DarkSigns signs : AllOfGtk()) {
        for (const uint32 portal : {0, 3}) {
            signs.portal = portal;
            for (const bool dark : {true, false}) {
                signs.desktop = dark;
                EXPECT_EQ(signs.IsDark(), dark);
            }
        }
    }
}

TEST(DarkSignsTest, ThenTheThemeOfTheEnvironmentDoes)
{
    for (const DarkSigns& signs : AllOfGtk()) {
        if (signs.environment.empty())
            continue;
        EXPECT_EQ(signs.IsDark(), signs.environment == "Adwaita:dark" ? Verdict(true) : Verdict());
    }
}

TEST(DarkSignsTest, ThenTheThemeOfTheSettingsDaemonDoes)
{
    for (const DarkSigns& signs : AllOfGtk()) {
        if (!signs.environment.empty() || !signs.themeName)
            continue;
        const bool dark = signs.prefersDark || signs.themeName == "Greybird-dark";
        EXPECT_EQ(signs.IsDark(), dark ? Verdict(true) : Verdict());
    }
}

TEST(DarkSignsTest, ThenTheFilesDo)
{
    for (const DarkSigns& signs : AllOfGtk()) {
        if (!signs.environment.empty() || signs.themeName)
            continue;
        EXPECT_EQ(signs.IsDark(), signs.fileIsDark ? Verdict(true) : Verdict());
    }
}

/// A theme may be dark and not say so: a name never says that its theme is light.
TEST(DarkSignsTest, WithoutASignTheToolkitDecides)
{
    EXPECT_EQ(DarkSigns().IsDark(), std::nullopt);
    DarkSigns signs;
    signs.themeName = "Dracula";
    EXPECT_EQ(signs.IsDark(), std::nullopt);
}

TEST(DarkSignsTest, NamesOfThemesSayThatTheyAreDark)
{
    for (const char* name : {"Adwaita-dark", "Adwaita:dark", "Some-Dark", "Yaru-viridian-dark", "Mint-Y-Dark-Aqua",
                             "Arc-Dark-solid", "BreezeDark", "dark", "Dark_Blue", "BlackMATE", "HighContrastInverse"})
        EXPECT_TRUE(ThemeNameIsDark(name)) << name;
    for (const char* name :
         {"", "Adwaita", "Darkness", "Arc-Darker", "Skidark", "dar", "-dar", "Greybird", "Blackbird"})
        EXPECT_FALSE(ThemeNameIsDark(name)) << name;
}

TEST(DarkSignsTest, SettingsFilesSayThatTheyAreDark)
{
    EXPECT_FALSE(SettingsAreDark(""));
    EXPECT_TRUE(SettingsAreDark("[Settings]\ngtk-application-prefer-dark-theme=1\n"));
    EXPECT_TRUE(SettingsAreDark("[Settings]\n gtk-application-prefer-dark-theme = true\r\n"));
    EXPECT_FALSE(SettingsAreDark("[Settings]\ngtk-application-prefer-dark-theme=0\ngtk-theme-name=Some\n"));
    EXPECT_TRUE(SettingsAreDark("gtk-theme-name=\"Some-Dark\""));
    EXPECT_FALSE(SettingsAreDark("=\n==\n\xff\xfe gtk-theme-name\ngtk-font-name=Dark 10"));
}

} // namespace
} // namespace kits
