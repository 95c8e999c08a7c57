// SPDX-License-Identifier: MIT
#include "kits/interface/platform/desktops/FileWatch.h"

#include "tests/support/TempFolder.h"

#include <gtest/gtest.h>

namespace kits {
namespace {

class FileWatchTest : public testing::Test {
protected:
    TempFolder folder{TempFolder::Place::kMemory};
};

TEST_F(FileWatchTest, TellsWhatHappensToTheFile)
{
    FileWatch watch(folder.Path("file"));
    EXPECT_GE(watch.Descriptor(), 0);
    EXPECT_FALSE(watch.TakeNews());
    folder.Put("other", "");
    EXPECT_FALSE(watch.TakeNews());
    folder.Put("file", "1");
    EXPECT_TRUE(watch.TakeNews());
    EXPECT_FALSE(watch.TakeNews());
    folder.Put("file", "2");
    EXPECT_TRUE(watch.TakeNews());
    std::filesystem::rename(folder.Path("other"), folder.Path("file"));
    EXPECT_TRUE(watch.TakeNews());
    std::filesystem::remove(folder.Path("file"));
    EXPECT_TRUE(watch.TakeNews());
}

TEST_F(FileWatchTest, ItsFoldersMayComeLater)
{
    FileWatch watch(folder.Path("a/b/c/file"));
    EXPECT_FALSE(watch.TakeNews());
    std::filesystem::create_directory(folder.Path("a"));
    EXPECT_FALSE(watch.TakeNews());
    std::filesystem::create_directories(folder.Path("a/b/c"));
    watch.TakeNews();
    folder.Put("a/b/c/file", "1");
    EXPECT_TRUE(watch.TakeNews());
}

/// The system does not report this file.
TEST_F(FileWatchTest, AFileThatComesWithItsFoldersIsNews)
{
    FileWatch watch(folder.Path("a/b/file"));
    std::filesystem::create_directories(folder.Path("new/b"));
    folder.Put("new/b/file", "1");
    watch.TakeNews();
    std::filesystem::rename(folder.Path("new"), folder.Path("a"));
    EXPECT_TRUE(watch.TakeNews());
    folder.Put("a/b/file", "2");
    EXPECT_TRUE(watch.TakeNews());
}

TEST_F(FileWatchTest, ItsFoldersMayGoAndComeBack)
{
    std::filesystem::create_directories(folder.Path("a/b"));
    folder.Put("a/b/file", "1");
    FileWatch watch(folder.Path("a/b/file"));
    EXPECT_FALSE(watch.TakeNews());
    for (int i = 0; i < 2; i++) {
        std::filesystem::remove_all(folder.Path("a"));
        EXPECT_TRUE(watch.TakeNews());
        EXPECT_FALSE(watch.TakeNews());
        std::filesystem::create_directories(folder.Path("a/b"));
        watch.TakeNews();
        folder.Put("a/b/file", "2");
        EXPECT_TRUE(watch.TakeNews());
    }
    std::filesystem::rename(folder.Path("a/b"), folder.Path("away"));
    EXPECT_TRUE(watch.TakeNews());
    folder.Put("away/file", "3");
    EXPECT_FALSE(watch.TakeNews());
}

TEST_F(FileWatchTest, WatchesNothingWithoutAPath)
{
    FileWatch watch("");
    EXPECT_FALSE(watch.TakeNews());
    FileWatch other("name");
    EXPECT_FALSE(other.TakeNews());
}

} // namespace
} // namespace kits
