// SPDX-License-Identifier: MIT
#include "kits/interface/platform/desktops/Environment.h"

#include "kits/kernel/Bounds.h"
#include "tests/support/Environment.h"
#include "tests/support/TempFolder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

namespace kits {
namespace {

using Texts = std::vector<std::string>;

class EnvironmentTest : public testing::Test {
protected:
    EnvironmentGuard guard{"LISTED", "HOME", "XDG_CONFIG_HOME", "XDG_CONFIG_DIRS", "XDG_CURRENT_DESKTOP"};
};

TEST_F(EnvironmentTest, ListsThePartsThatAreNotEmpty)
{
    setenv("LISTED", ":one::/two:", 1);
    EXPECT_EQ(Environment::List("LISTED", "other"), (Texts{"one", "/two"}));
    EXPECT_EQ(Environment::Folders("LISTED", "/other"), Texts{"/two"});
    for (const bool isSet : {true, false}) {
        if (isSet)
            setenv("LISTED", "", 1);
        else
            unsetenv("LISTED");
        EXPECT_EQ(Environment::List("LISTED", "other:more"), (Texts{"other", "more"}));
        EXPECT_TRUE(Environment::List("LISTED").empty());
        EXPECT_EQ(Environment::Value("LISTED"), "");
    }
}

TEST_F(EnvironmentTest, ListsNoMoreThanTheBound)
{
    std::string list;
    for (size_t i = 0; i < 2 * bounds::kMostListedFolders; i++)
        list += "/f:";
    setenv("LISTED", list.c_str(), 1);
    EXPECT_EQ(Environment::Folders("LISTED", "").size(), bounds::kMostListedFolders);
}

TEST_F(EnvironmentTest, NamesTheUsersSettingsFirst)
{
    const TempFolder folder;
    setenv("XDG_CONFIG_HOME", folder.Path().c_str(), 1);
    setenv("XDG_CONFIG_DIRS", "/one:relative:/two", 1);
    EXPECT_EQ(Environment::OwnSettings(), folder.Path());
    EXPECT_EQ(Environment::SettingsFolders(), (Texts{folder.Path(), "/one", "/two"}));
    setenv("XDG_CONFIG_HOME", folder.Path("missing").c_str(), 1);
    unsetenv("XDG_CONFIG_DIRS");
    EXPECT_EQ(Environment::OwnSettings(), "");
    EXPECT_EQ(Environment::SettingsFolders(), Texts{"/etc/xdg"});
}

TEST_F(EnvironmentTest, ASessionMayBeOfSeveralDesktops)
{
    setenv("XDG_CURRENT_DESKTOP", "ubuntu:GNOME", 1);
    EXPECT_TRUE(Environment::IsSessionOf("GNOME"));
    EXPECT_TRUE(Environment::IsSessionOf("ubuntu"));
    EXPECT_FALSE(Environment::IsSessionOf("KDE"));
    unsetenv("XDG_CURRENT_DESKTOP");
    EXPECT_FALSE(Environment::IsSessionOf("GNOME"));
}

} // namespace
} // namespace kits
