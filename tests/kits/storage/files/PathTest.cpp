// SPDX-License-Identifier: MIT
#include "kits/storage/Path.h"

#include "kits/storage/Entry.h"
#include "tests/support/TempFolder.h"

#include <gtest/gtest.h>

#include <filesystem>

TEST(Path, IsNotInitialisedBeforeItIsSet)
{
    BPath path;
    EXPECT_EQ(path.InitCheck(), B_NO_INIT);
    EXPECT_EQ(path.Path(), nullptr);
    EXPECT_EQ(path.Leaf(), nullptr);
    EXPECT_EQ(path.Append("a"), B_NO_INIT);
}

TEST(Path, DropsDoubledAndTrailingSlashesAndDots)
{
    EXPECT_STREQ(BPath("/a//b/./c/").Path(), "/a/b/c");
    EXPECT_STREQ(BPath("//").Path(), "/");
    EXPECT_STREQ(BPath("/.").Path(), "/");
}

TEST(Path, KeepsTheWayUp)
{
    EXPECT_STREQ(BPath("/a/../b").Path(), "/a/../b");
}

TEST(Path, TakesARelativePathFromTheWorkingFolder)
{
    const std::string folder = std::filesystem::current_path().string();
    EXPECT_EQ(BPath("some/file").Path(), folder + "/some/file");
}

TEST(Path, JoinsFolderAndLeaf)
{
    BPath path("/a", "b/c");
    EXPECT_STREQ(path.Path(), "/a/b/c");
    EXPECT_STREQ(path.Leaf(), "c");
    EXPECT_EQ(path.Append("d"), B_OK);
    EXPECT_STREQ(path.Path(), "/a/b/c/d");
}

TEST(Path, MayBeSetFromItself)
{
    BPath path("/a/b");
    EXPECT_EQ(path.SetTo(path.Path(), path.Leaf()), B_OK);
    EXPECT_STREQ(path.Path(), "/a/b/b");
    EXPECT_EQ(path.GetParent(&path), B_OK);
    EXPECT_STREQ(path.Path(), "/a/b");
}

TEST(Path, RefusesNothingAndAnAbsoluteLeaf)
{
    BPath path("/a");
    EXPECT_EQ(path.SetTo(static_cast<const char*>(nullptr)), B_BAD_VALUE);
    EXPECT_EQ(path.InitCheck(), B_BAD_VALUE);
    EXPECT_EQ(path.SetTo(""), B_BAD_VALUE);
    EXPECT_EQ(path.SetTo("/a", "/b"), B_BAD_VALUE);
    EXPECT_EQ(path.SetTo(static_cast<const BEntry*>(nullptr)), B_BAD_VALUE);
    EXPECT_EQ(path.Path(), nullptr);
}

TEST(Path, FindsTheParent)
{
    BPath parent;
    EXPECT_EQ(BPath("/a/b").GetParent(&parent), B_OK);
    EXPECT_STREQ(parent.Path(), "/a");
    EXPECT_EQ(parent.GetParent(&parent), B_OK);
    EXPECT_STREQ(parent.Path(), "/");
    EXPECT_EQ(parent.GetParent(&parent), B_ENTRY_NOT_FOUND);
}
