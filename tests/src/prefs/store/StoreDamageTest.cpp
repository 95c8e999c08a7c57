// SPDX-License-Identifier: MIT
#include "tests/src/prefs/store/StoreFixture.h"

#include <sys/stat.h>

#include <filesystem>

namespace {

/// Files that were truncated, damaged or replaced while the program did not run.
class StoreDamageTest : public StoreFixture {
protected:
    void PutBoth(const std::string& main, const std::string& backup) const
    {
        fFolder.Clear();
        fFolder.Put(kFile, main);
        fFolder.Put(kBackup, backup);
    }
};

} // namespace

TEST_F(StoreDamageTest, AFileCutAtEveryByteGivesWayToTheBackup)
{
    const std::string old = BytesOf(1);
    const std::string next = BytesOf(2);
    testing::internal::CaptureStderr();
    for (size_t length = 0; length <= next.size(); ++length) {
        PutBoth(next.substr(0, length), old);
        ASSERT_EQ(NumberAtStart(), length < next.size() ? 1 : 2) << "cut at " << length;
        ASSERT_FALSE(fFolder.Has(kBackup));
        ASSERT_EQ(fFolder.Get(kFile), length < next.size() ? old : next);
        ASSERT_EQ(fFolder.Has(kKept), length > 0 && length < next.size());
    }
    testing::internal::GetCapturedStderr();
}

TEST_F(StoreDamageTest, AFileDamagedAtEveryByteGivesWayToTheBackup)
{
    const std::string old = BytesOf(1);
    const std::string next = BytesOf(2);
    testing::internal::CaptureStderr();
    for (size_t position = 0; position < next.size(); ++position) {
        for (const char damage : {'\x01', '\x20', '\x80', '\xff'}) {
            std::string damaged = next;
            damaged[position] ^= damage;
            PutBoth(damaged, old);
            const int32 number = NumberAtStart();
            ASSERT_TRUE(number == 1 || number == 2) << "byte " << position << ": " << number;
        }
    }
    testing::internal::GetCapturedStderr();
}

TEST_F(StoreDamageTest, AFileWithZerosInsteadOfItsEndGivesWayToTheBackup)
{
    const std::string old = BytesOf(1);
    const std::string next = BytesOf(2);
    testing::internal::CaptureStderr();
    for (size_t from = 0; from < next.size(); ++from) {
        PutBoth(next.substr(0, from) + std::string(next.size() - from, '\0'), old);
        const int32 number = NumberAtStart();
        ASSERT_TRUE(number == 1 || number == 2) << "zeros from " << from << ": " << number;
    }
    testing::internal::GetCapturedStderr();
}

TEST_F(StoreDamageTest, ADamagedBackupDoesNotMatterBesideAWholeFile)
{
    const std::string old = BytesOf(1);
    const std::string next = BytesOf(2);
    for (size_t length = 0; length <= old.size(); length += 7) {
        PutBoth(next, old.substr(0, length));
        ASSERT_EQ(NumberAtStart(), 2);
        ASSERT_EQ(fFolder.Names(), std::set<std::string>{kFile});
    }
}

TEST_F(StoreDamageTest, ABackupAloneTakesItsPlace)
{
    const std::string bytes = BytesOf(1);
    fFolder.Put(kBackup, bytes);
    EXPECT_EQ(NumberAtStart(), 1);
    EXPECT_EQ(fFolder.Names(), std::set<std::string>{kFile});
}

TEST_F(StoreDamageTest, ABrokenFileIsKeptAndTold)
{
    fFolder.Put(kFile, "broken");
    testing::internal::CaptureStderr();
    Preferences store(kName, false);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "qel: the settings in " + fFolder.Path(kFile) +
                  " could not be read (Damaged, or no settings); they are kept as " + kKept + "\n");
    EXPECT_TRUE(store.IsEmpty());
    EXPECT_EQ(fFolder.Names(), std::set<std::string>{kKept});
    EXPECT_EQ(fFolder.Get(kKept), "broken");
    Fill(store, 1);
    EXPECT_EQ(store.Sync(), B_OK);
    EXPECT_EQ(fFolder.Get(kKept), "broken");
}

TEST_F(StoreDamageTest, NothingThatWasKeptIsReplaced)
{
    testing::internal::CaptureStderr();
    for (int number = 1; number <= 12; ++number) {
        fFolder.Put(kFile, "broken " + std::to_string(number));
        EXPECT_EQ(NumberAtStart(), -1);
    }
    testing::internal::GetCapturedStderr();
    EXPECT_EQ(fFolder.Get(kKept), "broken 1");
    EXPECT_EQ(fFolder.Get(std::string(kKept) + "-2"), "broken 2");
    EXPECT_EQ(fFolder.Get(std::string(kKept) + "-12"), "broken 12");
    EXPECT_EQ(fFolder.Names().size(), 12u);
}

TEST_F(StoreDamageTest, TwoBrokenOnesAreBothKept)
{
    PutBoth("broken", "backup");
    testing::internal::CaptureStderr();
    EXPECT_EQ(NumberAtStart(), -1);
    const std::string lines = testing::internal::GetCapturedStderr();
    EXPECT_EQ(fFolder.Get(kKept), "broken");
    EXPECT_EQ(fFolder.Get(std::string(kKept) + "-2"), "backup");
    EXPECT_NE(lines.find(std::string(kKept) + "\n"), std::string::npos);
    EXPECT_NE(lines.find(std::string(kKept) + "-2\n"), std::string::npos);
}

TEST_F(StoreDamageTest, AnEmptyFileIsNone)
{
    fFolder.Put(kFile, "");
    testing::internal::CaptureStderr();
    EXPECT_EQ(NumberAtStart(), -1);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_F(StoreDamageTest, WhatIsNoFileIsKept)
{
    std::filesystem::create_directories(fFolder.Path(kFile) + "/inside");
    testing::internal::CaptureStderr();
    EXPECT_EQ(NumberAtStart(), -1);
    ASSERT_EQ(mkfifo(fFolder.Path(kFile).c_str(), 0600), 0);
    EXPECT_EQ(NumberAtStart(), -1);
    testing::internal::GetCapturedStderr();
    EXPECT_TRUE(fFolder.Has(std::string(kKept) + "/inside"));
    Preferences store(kName, false);
    Fill(store, 1);
    EXPECT_EQ(store.Sync(), B_OK);
    EXPECT_EQ(NumberAtStart(), 1);
}

TEST_F(StoreDamageTest, ALinkIsReadAndThenReplacedByAFile)
{
    const std::string old = BytesOf(1);
    fFolder.Put("elsewhere", old);
    std::filesystem::create_symlink("elsewhere", fFolder.Path(kFile));
    Preferences store(kName, false);
    EXPECT_EQ(NumberOf(store), 1);
    Fill(store, 2);
    EXPECT_EQ(store.Sync(), B_OK);
    EXPECT_EQ(fFolder.Names(), (std::set<std::string>{"elsewhere", kFile}));
    EXPECT_EQ(fFolder.Get("elsewhere"), old);
    EXPECT_EQ(NumberAtStart(), 2);
}

TEST_F(StoreDamageTest, ALinkThatLeadsNowhereIsKept)
{
    const auto leadsNowhere = [this](const std::string& name) {
        std::error_code error;
        return std::filesystem::read_symlink(fFolder.Path(name), error) == "nowhere";
    };
    std::filesystem::create_symlink("nowhere", fFolder.Path(kFile));
    testing::internal::CaptureStderr();
    Preferences store(kName, false);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "qel: the settings in " + fFolder.Path(kFile) +
                  " could not be read (A link that leads nowhere); they are kept as " + kKept + "\n");
    EXPECT_EQ(store.UnreadStatus(), B_OK);
    EXPECT_TRUE(leadsNowhere(kKept));
    EXPECT_EQ(fFolder.Names(), std::set<std::string>{kKept});

    // Made while the program runs.
    std::filesystem::create_symlink("nowhere", fFolder.Path(kFile));
    Fill(store, 1);
    testing::internal::CaptureStderr();
    EXPECT_EQ(store.Sync(), B_OK);
    testing::internal::GetCapturedStderr();
    const std::string second = std::string(kKept) + "-2";
    EXPECT_TRUE(leadsNowhere(second));
    EXPECT_EQ(fFolder.Names(), (std::set<std::string>{kFile, kKept, second}));
    EXPECT_EQ(NumberAtStart(), 1);
}

TEST_F(StoreDamageTest, TheLineSaysThatTheBackupIsUsed)
{
    const std::string old = BytesOf(1);
    PutBoth("broken", old);
    testing::internal::CaptureStderr();
    Preferences store(kName, false);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "qel: the settings in " + fFolder.Path(kFile) +
                  " could not be read (Damaged, or no settings); they are kept as " + kKept +
                  "; those saved before them are used\n");
    const std::vector<StoreNote> notes = store.TakeNotes();
    ASSERT_EQ(notes.size(), 1u);
    EXPECT_TRUE(notes[0].usedBackup);
    EXPECT_EQ(notes[0].kept, kKept);
    EXPECT_TRUE(store.TakeNotes().empty());
}

TEST_F(StoreDamageTest, AFolderInThePlaceOfTheBackupIsNotBlamedOnTheStore)
{
    const std::string whole = BytesOf(1);
    fFolder.Put(kFile, whole);
    std::filesystem::create_directories(fFolder.Path(kBackup) + "/inside");
    testing::internal::CaptureStderr();
    EXPECT_EQ(NumberAtStart(), 1);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "qel: the backup " + fFolder.Path(kBackup) +
                                                          " could not be read (Is a folder); it is kept as " + kKept +
                                                          "\n");
    EXPECT_TRUE(fFolder.Has(std::string(kKept) + "/inside"));
}

TEST_F(StoreDamageTest, WhatCannotBeRenamedIsToldToo)
{
    /// Renames nothing.
    class Stubborn : public kits::FailingDevice {
    public:
        int Before(kits::FileAction& action) override { return action.call == kits::FileCall::kRename ? EROFS : 0; }
    };
    fFolder.Put(kFile, "broken");
    Stubborn disk;
    const WithDisk with(disk);
    testing::internal::CaptureStderr();
    Preferences store(kName, false);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "qel: the settings in " + fFolder.Path(kFile) +
                                                          " could not be read (Damaged, or no settings); renaming the "
                                                          "file failed (Only reading is possible there)\n");
    const std::vector<StoreNote> notes = store.TakeNotes();
    ASSERT_EQ(notes.size(), 1u);
    EXPECT_EQ(notes[0].notKept, B_READ_ONLY_DEVICE);
    testing::internal::CaptureStderr();
    EXPECT_EQ(store.Sync(), B_READ_ONLY_DEVICE);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(fFolder.Get(kFile), "broken");
}

TEST_F(StoreDamageTest, AReadOnlyStoreNotesWhatItCouldNotRead)
{
    const std::string old = BytesOf(1);
    PutBoth("broken", old);
    std::vector<StoreNote> notes = Preferences(kName, false, true).TakeNotes();
    ASSERT_EQ(notes.size(), 1u);
    EXPECT_TRUE(notes[0].usedBackup);
    EXPECT_EQ(LineOf(notes[0]), "qel: the settings in " + fFolder.Path(kFile) +
                                    " could not be read (Damaged, or no settings); those saved before them are used");
    fFolder.Clear();
    fFolder.Put(kFile, "broken");
    notes = Preferences(kName, false, true).TakeNotes();
    ASSERT_EQ(notes.size(), 1u);
    EXPECT_EQ(LineOf(notes[0]),
              "qel: the settings in " + fFolder.Path(kFile) + " could not be read (Damaged, or no settings)");
    fFolder.Clear();
    EXPECT_TRUE(Preferences(kName, false, true).TakeNotes().empty()) << "there is nothing to be read";
}

TEST_F(StoreDamageTest, BytesBehindTheMessageDoNotMatter)
{
    const std::string bytes = BytesOf(1);
    fFolder.Put(kFile, bytes + "and more");
    EXPECT_EQ(NumberAtStart(), 1);
}

TEST_F(StoreDamageTest, WhateverLiesThereNextStoresAreWritten)
{
    const std::string old = BytesOf(1);
    const std::string next = BytesOf(2);
    const auto put = [&](const std::string& name, const std::string& kind, const std::string& whole) {
        if (kind == "whole")
            fFolder.Put(name, whole);
        else if (kind == "empty")
            fFolder.Put(name, "");
        else if (kind == "broken")
            fFolder.Put(name, whole.substr(0, whole.size() / 2));
        else if (kind == "folder")
            std::filesystem::create_directories(fFolder.Path(name) + "/inside");
        else if (kind == "pipe")
            ASSERT_EQ(mkfifo(fFolder.Path(name).c_str(), 0600), 0);
        else if (kind == "link to nowhere")
            std::filesystem::create_symlink("nowhere", fFolder.Path(name));
        else if (kind == "link to itself")
            std::filesystem::create_symlink(name, fFolder.Path(name));
    };
    const char* const kinds[] = {"none",   "whole", "empty",           "broken",
                                 "folder", "pipe",  "link to nowhere", "link to itself"};
    testing::internal::CaptureStderr();
    for (const std::string main : kinds) {
        for (const std::string backup : kinds) {
            SCOPED_TRACE("file: " + main + ", backup: " + backup);
            fFolder.Clear();
            put(kFile, main, next);
            put(kBackup, backup, old);
            Preferences store(kName, false);
            EXPECT_EQ(NumberOf(store), main == "whole" ? 2 : backup == "whole" ? 1 : -1);
            for (const int32 number : {3, 4}) {
                Fill(store, number);
                EXPECT_EQ(store.Sync(), B_OK);
                EXPECT_EQ(NumberAtStart(), number);
            }
        }
    }
    testing::internal::GetCapturedStderr();
}
