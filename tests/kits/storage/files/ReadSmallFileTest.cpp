// SPDX-License-Identifier: MIT
#include "kits/storage/ReadSmallFile.h"

#include "tests/support/TempFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <string>

using kits::ReadSmallFile;

TEST(ReadSmallFile, ReadsItWholeUpToTheLimit)
{
    const TempFolder folder;
    folder.Put("file", std::string("a\0b\n", 4));
    EXPECT_EQ(ReadSmallFile(folder.Path("file"), 4), std::string("a\0b\n", 4));
    EXPECT_EQ(ReadSmallFile(folder.Path("file"), 3), std::nullopt);
    folder.Put("empty", "");
    EXPECT_EQ(ReadSmallFile(folder.Path("empty"), 0), "");
    std::filesystem::create_symlink("file", folder.Path("link"));
    EXPECT_EQ(ReadSmallFile(folder.Path("link"), 100), std::string("a\0b\n", 4));
}

TEST(ReadSmallFile, WaitsForNothingAndReadsNothingWithoutAnEnd)
{
    const TempFolder folder;
    ASSERT_EQ(mkfifo(folder.Path("pipe").c_str(), 0600), 0);
    std::filesystem::create_symlink("nowhere", folder.Path("link"));
    for (const std::string& path : {folder.Path("pipe"), folder.Path("link"), folder.Path("none"), folder.Path(),
                                    std::string("/dev/zero"), std::string("/dev/full"), std::string()})
        EXPECT_EQ(ReadSmallFile(path, 1024), std::nullopt) << path;
}
