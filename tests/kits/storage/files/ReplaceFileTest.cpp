// SPDX-License-Identifier: MIT
#include "kits/storage/ReplaceFile.h"

#include "tests/support/BoundProcess.h"
#include "tests/support/Disks.h"
#include "tests/support/TempFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstring>
#include <set>
#include <string>

namespace {

status_t Replace(const std::string& path, const std::string& bytes)
{
    return kits::ReplaceFile(path.c_str(), bytes.data(), bytes.size());
}

mode_t ModeOf(const std::string& path)
{
    struct stat info {};
    return stat(path.c_str(), &info) == 0 ? info.st_mode & 07777 : 0;
}

} // namespace

TEST(ReplaceFile, MakesANewFileAsAnyProgramWould)
{
    const TempFolder folder;
    const mode_t mask = umask(022);
    EXPECT_EQ(Replace(folder.Path("f"), "bytes"), B_OK);
    umask(mask);
    EXPECT_EQ(folder.Get("f"), "bytes");
    EXPECT_EQ(ModeOf(folder.Path("f")), 0644u);
    EXPECT_EQ(folder.Names(), std::set<std::string>{"f"});
    EXPECT_EQ(Replace(folder.Path("empty"), ""), B_OK);
    EXPECT_TRUE(folder.Has("empty"));
}

TEST(ReplaceFile, KeepsThePermissionsOfTheOldOne)
{
    const TempFolder folder;
    folder.Put("f", "a longer text");
    ASSERT_EQ(chmod(folder.Path("f").c_str(), 0640), 0);
    EXPECT_EQ(Replace(folder.Path("f"), "new"), B_OK);
    EXPECT_EQ(folder.Get("f"), "new");
    EXPECT_EQ(ModeOf(folder.Path("f")), 0640u);
}

TEST(ReplaceFile, FollowsALink)
{
    const TempFolder folder;
    folder.Put("f", "old");
    ASSERT_EQ(symlink("f", folder.Path("link").c_str()), 0);
    EXPECT_EQ(Replace(folder.Path("link"), "new"), B_OK);
    EXPECT_EQ(folder.Get("f"), "new");
    struct stat info {};
    ASSERT_EQ(lstat(folder.Path("link").c_str(), &info), 0);
    EXPECT_TRUE(S_ISLNK(info.st_mode));
}

TEST(ReplaceFile, SaysWhatIsWrongWithThePath)
{
    const TempFolder folder;
    folder.Put("f", "bytes");
    EXPECT_EQ(kits::ReplaceFile(nullptr, "", 0), B_BAD_VALUE);
    EXPECT_EQ(Replace("", ""), B_BAD_VALUE);
    EXPECT_EQ(Replace(folder.Path(), ""), B_IS_A_DIRECTORY);
    EXPECT_EQ(Replace(folder.Path("none/f"), ""), B_ENTRY_NOT_FOUND);
    EXPECT_EQ(Replace(folder.Path("f/g"), ""), B_NOT_A_DIRECTORY);
}

TEST(ReplaceFile, WritesToAPipeAsItIs)
{
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    EXPECT_EQ(Replace("/dev/fd/" + std::to_string(ends[1]), "bytes"), B_OK);
    char text[16] = "";
    EXPECT_EQ(read(ends[0], text, sizeof(text)), 5);
    EXPECT_STREQ(text, "bytes");
    close(ends[0]);
    close(ends[1]);
}

TEST(ReplaceFile, AFullDiskLeavesTheOldFileAndNothingElse)
{
    const TempFolder folder;
    folder.Put("f", "old");
    FullDisk disk(3);
    const WithDisk with(disk);
    EXPECT_EQ(Replace(folder.Path("f"), "much longer"), B_DEVICE_FULL);
    EXPECT_EQ(folder.Get("f"), "old");
    EXPECT_EQ(folder.Names(), std::set<std::string>{"f"});
}

TEST(ReplaceFile, WhateverFailsTheFileIsOldOrNew)
{
    const TempFolder folder(TempFolder::Place::kMemory);
    for (int call = 0;; call++) {
        folder.Clear();
        folder.Put("f", "old");
        FailingDisk disk(call, EIO, 1);
        status_t status = B_OK;
        {
            const WithDisk with(disk);
            status = Replace(folder.Path("f"), "new");
        }
        const std::string text = folder.Get("f");
        EXPECT_TRUE(text == "old" || text == "new") << call;
        EXPECT_EQ(folder.Names(), std::set<std::string>{"f"}) << call;
        if (disk.Calls() <= call) {
            EXPECT_EQ(status, B_OK);
            break;
        }
    }
}

TEST(ReplaceFile, KilledAtAnyCallTheFileIsOldOrNew)
{
    const TempFolder folder(TempFolder::Place::kMemory);
    bool isDone = false;
    for (int call = 0; !isDone; call++) {
        folder.Put("f", "old");
        const pid_t child = test::ForkBound();
        ASSERT_GE(child, 0);
        if (child == 0) {
            KillingDisk disk = KillingDisk::AtCall(call);
            const WithDisk with(disk);
            _exit(Replace(folder.Path("f"), "new") == B_OK ? 0 : 1);
        }
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        isDone = WIFEXITED(status);
        const std::string text = folder.Get("f");
        EXPECT_TRUE(text == "old" || text == "new") << call;
        EXPECT_TRUE(!isDone || (WEXITSTATUS(status) == 0 && text == "new"));
    }
}
