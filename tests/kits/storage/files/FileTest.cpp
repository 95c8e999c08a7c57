// SPDX-License-Identifier: MIT
#include "kits/storage/File.h"

#include "kits/storage/Entry.h"
#include "tests/support/Disks.h"
#include "tests/support/TempFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

namespace {

/// Reads and writes one byte at a time, and is interrupted before each.
class SlowDisk : public kits::FailingDevice {
public:
    int Before(kits::FileAction& action) override
    {
        action.size = std::min<size_t>(action.size, 1);
        fInterrupt = !fInterrupt;
        return fInterrupt ? EINTR : 0;
    }

private:
    bool fInterrupt = false;
};

} // namespace

TEST(File, IsMadeOnlyWhenToldTo)
{
    const TempFolder folder;
    EXPECT_EQ(BFile(folder.Path("f").c_str(), B_READ_WRITE).InitCheck(), B_ENTRY_NOT_FOUND);
    EXPECT_EQ(BFile(folder.Path("f").c_str(), B_READ_WRITE | B_CREATE_FILE).InitCheck(), B_OK);
    struct stat info;
    ASSERT_EQ(stat(folder.Path("f").c_str(), &info), 0);
    EXPECT_EQ(info.st_mode & 0777, 0600u);
    EXPECT_EQ(BFile(folder.Path("f").c_str(), B_READ_WRITE | B_CREATE_FILE | B_FAIL_IF_EXISTS).InitCheck(),
              B_FILE_EXISTS);
}

TEST(File, IsErasedOnlyWhenToldTo)
{
    const TempFolder folder;
    folder.Put("f", "bytes");
    EXPECT_EQ(BFile(folder.Path("f").c_str(), B_READ_WRITE | B_CREATE_FILE).InitCheck(), B_OK);
    EXPECT_EQ(folder.Get("f"), "bytes");
    EXPECT_EQ(BFile(folder.Path("f").c_str(), B_READ_WRITE | B_CREATE_FILE | B_ERASE_FILE).InitCheck(), B_OK);
    EXPECT_EQ(folder.Get("f"), "");
}

TEST(File, IsNoFolder)
{
    const TempFolder folder;
    EXPECT_EQ(BFile(folder.Path().c_str(), B_READ_ONLY).InitCheck(), B_IS_A_DIRECTORY);
}

TEST(File, ReadsAndWritesAtAPositionThatMoves)
{
    const TempFolder folder;
    BFile file(folder.Path("f").c_str(), B_READ_WRITE | B_CREATE_FILE);
    EXPECT_EQ(file.Write("0123456789", 10), 10);
    EXPECT_EQ(file.Position(), 10);
    EXPECT_EQ(file.SetTo(folder.Path("f").c_str(), B_READ_WRITE), B_OK);
    EXPECT_EQ(file.Position(), 0);
    char buffer[8] = {};
    EXPECT_EQ(file.Read(buffer, 6), 6);
    EXPECT_STREQ(buffer, "012345");
    EXPECT_EQ(file.Read(buffer, 8), 4);
    EXPECT_EQ(file.Read(buffer, 8), 0);
    EXPECT_EQ(file.SetTo(folder.Path("f").c_str(), B_READ_WRITE), B_OK);
    EXPECT_EQ(file.Write("ab", 2), 2);
    EXPECT_EQ(file.Position(), 2);
    EXPECT_EQ(file.SetSize(file.Position()), B_OK);
    off_t size = 0;
    EXPECT_EQ(file.GetSize(&size), B_OK);
    EXPECT_EQ(size, 2);
    EXPECT_EQ(file.Sync(), B_OK);
    EXPECT_EQ(folder.Get("f"), "ab");
}

TEST(File, RefusesWhatCannotBe)
{
    const TempFolder folder;
    folder.Put("f", "bytes");
    BFile file(folder.Path("f").c_str(), B_READ_ONLY);
    EXPECT_EQ(file.Write("x", 1), B_NOT_ALLOWED);
    EXPECT_EQ(file.SetSize(0), B_NOT_ALLOWED);
    EXPECT_EQ(file.Position(), 0);
    EXPECT_EQ(file.Read(nullptr, 1), B_BAD_VALUE);
    char byte;
    BFile writer(folder.Path("f").c_str(), B_WRITE_ONLY);
    EXPECT_EQ(writer.Read(&byte, 1), B_NOT_ALLOWED);
    EXPECT_EQ(writer.SetSize(-1), B_BAD_VALUE);
    BFile closed;
    EXPECT_EQ(closed.Read(&byte, 1), B_NO_INIT);
    EXPECT_EQ(closed.Write(&byte, 1), B_NO_INIT);
    EXPECT_EQ(closed.SetSize(0), B_NO_INIT);
}

TEST(File, GoesOnAfterInterruptionsAndParts)
{
    const TempFolder folder;
    SlowDisk disk;
    const WithDisk with(disk);
    BFile file(folder.Path("f").c_str(), B_READ_WRITE | B_CREATE_FILE);
    EXPECT_EQ(file.Write("0123456789", 10), 10);
    EXPECT_EQ(file.SetTo(folder.Path("f").c_str(), B_READ_WRITE), B_OK);
    char buffer[11] = {};
    EXPECT_EQ(file.Read(buffer, 11), 10);
    EXPECT_STREQ(buffer, "0123456789");
    EXPECT_EQ(file.SetSize(3), B_OK) << "a size is not a part";
}

TEST(File, TellsHowMuchWasWrittenOnAFullDisk)
{
    const TempFolder folder;
    FullDisk disk(4);
    const WithDisk with(disk);
    BFile file(folder.Path("f").c_str(), B_READ_WRITE | B_CREATE_FILE);
    EXPECT_EQ(file.Write("0123456789", 10), B_DEVICE_FULL);
    EXPECT_EQ(file.Position(), 4);
    EXPECT_EQ(folder.Get("f"), "0123");
}

TEST(File, APrivateFileIsNobodyElsesTrap)
{
    const TempFolder folder;
    constexpr uint32 kMode = B_READ_WRITE | B_CREATE_FILE | B_ERASE_FILE | B_PRIVATE_FILE;
    EXPECT_EQ(BFile(folder.Path("mine").c_str(), kMode).InitCheck(), B_OK);
    EXPECT_EQ(BFile(folder.Path("mine").c_str(), kMode).InitCheck(), B_OK) << "one of the user's own is opened again";

    folder.Put("victim", "bytes");
    std::filesystem::create_symlink(folder.Path("victim"), folder.Path("link"));
    EXPECT_EQ(BFile(folder.Path("link").c_str(), kMode).InitCheck(), B_NOT_ALLOWED);
    std::filesystem::create_symlink(folder.Path("nothing"), folder.Path("nowhere"));
    EXPECT_EQ(BFile(folder.Path("nowhere").c_str(), kMode).InitCheck(), B_NOT_ALLOWED);
    EXPECT_FALSE(folder.Has("nothing"));
    std::filesystem::create_hard_link(folder.Path("victim"), folder.Path("hard"));
    EXPECT_EQ(BFile(folder.Path("hard").c_str(), kMode).InitCheck(), B_NOT_ALLOWED);
    ASSERT_EQ(mkfifo(folder.Path("pipe").c_str(), 0600), 0);
    EXPECT_EQ(BFile(folder.Path("pipe").c_str(), kMode).InitCheck(), B_NOT_ALLOWED);
    if (geteuid() == 0) {
        folder.Put("theirs", "bytes");
        ASSERT_EQ(chown(folder.Path("theirs").c_str(), 1234, 1234), 0);
        EXPECT_EQ(BFile(folder.Path("theirs").c_str(), kMode).InitCheck(), B_NOT_ALLOWED);
        EXPECT_EQ(folder.Get("theirs"), "bytes");
    }
    EXPECT_EQ(folder.Get("victim"), "bytes");
}
