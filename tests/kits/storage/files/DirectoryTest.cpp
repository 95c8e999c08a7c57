// SPDX-License-Identifier: MIT
#include "kits/storage/Directory.h"

#include "kits/storage/Entry.h"
#include "tests/support/Disks.h"
#include "tests/support/TempFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

TEST(Directory, OpensFoldersOnly)
{
    const TempFolder folder;
    EXPECT_EQ(BDirectory().InitCheck(), B_NO_INIT);
    EXPECT_EQ(BDirectory(folder.Path().c_str()).InitCheck(), B_OK);
    EXPECT_EQ(BDirectory(folder.Path("no").c_str()).InitCheck(), B_ENTRY_NOT_FOUND);
    folder.Put("file", "");
    EXPECT_EQ(BDirectory(folder.Path("file").c_str()).InitCheck(), B_NOT_A_DIRECTORY);
}

TEST(Directory, MakesFoldersClosedToOthers)
{
    const TempFolder folder;
    BDirectory directory(folder.Path().c_str());
    BDirectory made;
    EXPECT_EQ(directory.CreateDirectory("sub", &made), B_OK);
    EXPECT_EQ(made.PathName(), folder.Path("sub"));
    struct stat info;
    ASSERT_EQ(stat(folder.Path("sub").c_str(), &info), 0);
    EXPECT_EQ(info.st_mode & 0777, 0700u);
    EXPECT_EQ(directory.CreateDirectory("sub", nullptr), B_FILE_EXISTS);
}

TEST(Directory, SyncsWhereTheFileSystemCan)
{
    const TempFolder folder;
    BDirectory directory(folder.Path().c_str());
    EXPECT_EQ(directory.Sync(), B_OK);
    FailingDisk unable(0, EINVAL);
    {
        const WithDisk with(unable);
        EXPECT_EQ(directory.Sync(), B_OK);
    }
    FailingDisk broken(0, EIO);
    const WithDisk with(broken);
    EXPECT_EQ(directory.Sync(), B_IO_ERROR);
}
