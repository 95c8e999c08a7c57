// SPDX-License-Identifier: MIT
#include "kits/storage/FindDirectory.h"

#include "kits/storage/Path.h"
#include "tests/support/Disks.h"
#include "tests/support/TempFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

TEST(FindDirectory, TakesTheConfigurationFolderOfTheEnvironment)
{
    const TempFolder folder;
    setenv("XDG_CONFIG_HOME", folder.Path("a/b").c_str(), 1);
    setenv("HOME", folder.Path("home").c_str(), 1);
    BPath path;
    EXPECT_EQ(find_directory(B_COMMON_SETTINGS_DIRECTORY, &path), B_ENTRY_NOT_FOUND);
    EXPECT_EQ(path.InitCheck(), B_NO_INIT);
    EXPECT_EQ(folder.Names(), std::set<std::string>{}) << "nothing is made unless told to";
    EXPECT_EQ(find_directory(B_COMMON_SETTINGS_DIRECTORY, &path, true), B_OK);
    EXPECT_EQ(path.Path(), folder.Path("a/b"));
    struct stat info;
    ASSERT_EQ(stat(folder.Path("a/b").c_str(), &info), 0);
    EXPECT_EQ(info.st_mode & 0777, 0700u);
    EXPECT_EQ(find_directory(B_COMMON_SETTINGS_DIRECTORY, &path), B_OK);
}

TEST(FindDirectory, FallsBackToTheHomeFolder)
{
    const TempFolder folder;
    for (const char* const useless : {"", "relative/path"}) {
        setenv("XDG_CONFIG_HOME", useless, 1);
        setenv("HOME", folder.Path().c_str(), 1);
        BPath path;
        EXPECT_EQ(find_directory(B_COMMON_SETTINGS_DIRECTORY, &path, true), B_OK);
        EXPECT_EQ(path.Path(), folder.Path(".config"));
    }
}

TEST(FindDirectory, WithoutAHomeThereIsNone)
{
    unsetenv("XDG_CONFIG_HOME");
    BPath path;
    for (const char* const home : {"", "here"}) {
        setenv("HOME", home, 1);
        EXPECT_EQ(find_directory(B_COMMON_SETTINGS_DIRECTORY, &path, true), B_ENTRY_NOT_FOUND);
    }
    const TempFolder folder;
    folder.Put("file", "");
    for (const char* const name : {"nobody", "nobody/at/home", "file"}) {
        setenv("HOME", folder.Path(name).c_str(), 1);
        EXPECT_EQ(find_directory(B_COMMON_SETTINGS_DIRECTORY, &path, true), B_ENTRY_NOT_FOUND);
        EXPECT_EQ(path.InitCheck(), B_NO_INIT);
    }
    EXPECT_EQ(folder.Names(), std::set<std::string>{"file"}) << "no home is made";
    unsetenv("HOME");
    EXPECT_EQ(find_directory(B_COMMON_SETTINGS_DIRECTORY, &path, true), B_ENTRY_NOT_FOUND);
    EXPECT_EQ(path.InitCheck(), B_NO_INIT);
}

TEST(FindDirectory, TellsWhyAFolderCannotBeMade)
{
    const TempFolder folder;
    folder.Put("file", "");
    setenv("XDG_CONFIG_HOME", folder.Path("file/settings").c_str(), 1);
    BPath path;
    EXPECT_NE(find_directory(B_COMMON_SETTINGS_DIRECTORY, &path, true), B_OK);
    setenv("XDG_CONFIG_HOME", folder.Path("settings").c_str(), 1);
    FailingDisk disk(0, EROFS);
    const WithDisk with(disk);
    EXPECT_EQ(find_directory(B_COMMON_SETTINGS_DIRECTORY, &path, true), B_READ_ONLY_DEVICE);
    EXPECT_EQ(path.Path(), folder.Path("settings")) << "and which one that is";
}

TEST(FindDirectory, RefusesAPathThatTheSystemWouldRefuse)
{
    std::string path;
    for (int i = 0; i < 50'000; ++i)
        path += "/y";
    setenv("XDG_CONFIG_HOME", path.c_str(), 1);
    BPath found;
    EXPECT_EQ(find_directory(B_COMMON_SETTINGS_DIRECTORY, &found, true), B_NAME_TOO_LONG);
    EXPECT_EQ(find_directory(B_COMMON_SETTINGS_DIRECTORY, &found), B_ENTRY_NOT_FOUND);
}

TEST(FindDirectory, KnowsNoOthers)
{
    BPath path;
    EXPECT_EQ(find_directory(static_cast<directory_which>(1), &path), B_BAD_VALUE);
    EXPECT_EQ(find_directory(B_COMMON_SETTINGS_DIRECTORY, nullptr), B_BAD_VALUE);
}
