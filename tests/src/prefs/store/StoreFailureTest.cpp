// SPDX-License-Identifier: MIT
#include "tests/src/prefs/store/StoreFixture.h"

#include <cstring>

namespace {

/// Disks that are full or fail while a store is written or loaded.
class StoreFailureTest : public StoreFixture {
protected:
    /// Returns whether some file in the folder holds a whole old store.
    bool IsKeptSomewhere(const std::string& bytes) const
    {
        for (const std::string& name : fFolder.Names())
            if (fFolder.Get(name) == bytes)
                return true;
        return false;
    }
};

} // namespace

TEST_F(StoreFailureTest, AFullDiskAtEveryByteLeavesTheOldStore)
{
    const std::string old = BytesOf(1);
    for (const int error : {ENOSPC, EIO, EDQUOT}) {
        for (size_t room = 0;; ++room) {
            fFolder.Clear();
            fFolder.Put(kFile, old);
            Preferences store(kName, false);
            Fill(store, 2);
            FullDisk disk(room, error);
            {
                const WithDisk with(disk);
                const status_t status = store.Sync();
                if (!disk.Failed()) {
                    ASSERT_EQ(status, B_OK);
                    break;
                }
                ASSERT_EQ(status, error == EIO ? B_IO_ERROR : B_DEVICE_FULL) << "room for " << room;
            }
            ASSERT_EQ(fFolder.Names(), std::set<std::string>{kFile}) << "room for " << room;
            ASSERT_EQ(fFolder.Get(kFile), old) << "room for " << room;
            ASSERT_EQ(NumberOf(store), 2) << "the store in memory is as it was";
        }
        EXPECT_EQ(NumberAtStart(), 2);
    }
}

TEST_F(StoreFailureTest, AFullDiskAtTheFirstWriteEver)
{
    testing::internal::CaptureStderr();
    for (size_t room = 0;; ++room) {
        fFolder.Clear();
        Preferences store(kName, false);
        Fill(store, 2);
        FullDisk disk(room);
        {
            const WithDisk with(disk);
            if (store.Sync() == B_OK)
                break;
        }
        ASSERT_EQ(fFolder.Names(), std::set<std::string>{kFile}) << "the part stays";
        ASSERT_EQ(fFolder.Get(kFile).size(), room);
        ASSERT_EQ(store.Sync(), B_OK) << "with room again it is written over";
        ASSERT_EQ(fFolder.Names(), std::set<std::string>{kFile});
        ASSERT_EQ(NumberAtStart(), 2);
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_F(StoreFailureTest, EveryCallOfSyncFailsOnce)
{
    const std::string old = BytesOf(1);
    for (const int error : {EIO, ENOSPC, EACCES, EMFILE}) {
        for (int call = 0;; ++call) {
            fFolder.Clear();
            fFolder.Put(kFile, old);
            Preferences store(kName, false);
            Fill(store, 2);
            FailingDisk disk(call, error, 1);
            status_t status;
            {
                const WithDisk with(disk);
                status = store.Sync();
            }
            testing::internal::CaptureStderr();
            const int32 number = NumberAtStart();
            ASSERT_EQ(number, status == B_OK ? 2 : 1) << "call " << call << " failed with " << strerror(error);
            if (status != B_OK)
                ASSERT_EQ(fFolder.Get(kFile), old);
            ASSERT_FALSE(fFolder.Has(kBackup));
            ASSERT_EQ(store.Sync(), B_OK) << "the next attempt";
            ASSERT_EQ(NumberAtStart(), 2);
            testing::internal::GetCapturedStderr();
            if (call >= disk.Calls())
                break;
        }
    }
}

TEST_F(StoreFailureTest, TheDiskFailsForGoodAtEveryCallOfSync)
{
    const std::string old = BytesOf(1);
    for (const int error : {EIO, EROFS}) {
        for (int call = 0;; ++call) {
            fFolder.Clear();
            fFolder.Put(kFile, old);
            Preferences store(kName, false);
            Fill(store, 2);
            FailingDisk disk(call, error);
            status_t status;
            {
                const WithDisk with(disk);
                status = store.Sync();
            }
            testing::internal::CaptureStderr();
            const int32 number = NumberAtStart();
            testing::internal::GetCapturedStderr();
            ASSERT_TRUE(number == 2 || (number == 1 && status != B_OK)) << "call " << call << ": " << number;
            if (call >= disk.Calls()) {
                ASSERT_EQ(number, 2);
                break;
            }
        }
    }
}

TEST_F(StoreFailureTest, EveryCallOfALoaderFails)
{
    const std::string old = BytesOf(1);
    const std::string next = BytesOf(2);
    const std::string half = next.substr(0, next.size() / 2);
    struct State {
        std::string main;
        std::string backup;
    };
    testing::internal::CaptureStderr();
    for (const State& state : {State{old, ""}, State{next, old}, State{half, old}, State{"", old}}) {
        for (const int error : {EIO, EMFILE, EACCES}) {
            for (const int failures : {1, 1000}) {
                for (int call = 0;; ++call) {
                    fFolder.Clear();
                    if (!state.main.empty())
                        fFolder.Put(kFile, state.main);
                    if (!state.backup.empty())
                        fFolder.Put(kBackup, state.backup);
                    FailingDisk disk(call, error, failures);
                    {
                        const WithDisk with(disk);
                        const Preferences store(kName, false);
                        ASSERT_NE(NumberOf(store), -2);
                    }
                    const int32 number = NumberAtStart();
                    ASSERT_NE(number, -2);
                    ASSERT_TRUE(number >= 1 || IsKeptSomewhere(old) || IsKeptSomewhere(next))
                        << "call " << call << " failed with " << strerror(error);
                    if (error == EMFILE)
                        ASSERT_GE(number, 1) << "what could not be read for this moment is not put away";
                    if (call >= disk.Calls()) {
                        ASSERT_GE(number, 1);
                        break;
                    }
                }
            }
        }
    }
    testing::internal::GetCapturedStderr();
}

TEST_F(StoreFailureTest, AStoreThatCouldNotBeReadIsKeptWhenAnotherTakesItsPlace)
{
    const std::string old = BytesOf(1);
    fFolder.Put(kFile, old);
    FailingDisk disk(1, EMFILE);
    kits::SetFailingDevice(&disk);
    Preferences store(kName, false);
    kits::SetFailingDevice(nullptr);
    ASSERT_TRUE(store.IsEmpty());
    ASSERT_EQ(fFolder.Names(), std::set<std::string>{kFile});

    Fill(store, 2);
    testing::internal::CaptureStderr();
    EXPECT_EQ(store.Sync(), B_OK);
    const std::string line = testing::internal::GetCapturedStderr();
    EXPECT_EQ(NumberAtStart(), 2);
    EXPECT_EQ(fFolder.Get(kKept), old);
    EXPECT_NE(line.find(kKept), std::string::npos) << line;

    Fill(store, 3);
    EXPECT_EQ(store.Sync(), B_OK);
    EXPECT_EQ(fFolder.Names().size(), 2u) << "only once";
}

TEST_F(StoreFailureTest, AFileThatMayBeWholeStaysWhereItIsUntilItIsReplaced)
{
    /// Opens no file of this name.
    class Closed : public kits::FailingDevice {
    public:
        explicit Closed(std::string path)
            : fPath(std::move(path))
        {
        }
        int Before(kits::FileAction& action) override
        {
            return action.call == kits::FileCall::kOpen && fPath == action.path ? EACCES : 0;
        }

    private:
        std::string fPath;
    };
    const std::string old = BytesOf(1);
    for (const char* const name : {kFile, kBackup}) {
        fFolder.Clear();
        fFolder.Put(name, old);
        Closed disk(fFolder.Path(name));
        testing::internal::CaptureStderr();
        {
            const WithDisk with(disk);
            Preferences store(kName, false);
            EXPECT_EQ(store.UnreadStatus(), B_PERMISSION_DENIED);
            EXPECT_TRUE(store.TakeNotes().empty());
            EXPECT_EQ(fFolder.Names(), std::set<std::string>{name});
            Fill(store, 2);
            EXPECT_EQ(store.Sync(), B_OK);
        }
        const std::string line = testing::internal::GetCapturedStderr();
        EXPECT_NE(line.find("(Permission denied); they are kept as " + std::string(kKept)), std::string::npos) << line;
        EXPECT_EQ(fFolder.Names(), (std::set<std::string>{kFile, kKept}));
        EXPECT_EQ(fFolder.Get(kKept), old);
        EXPECT_EQ(NumberAtStart(), 2);

        fFolder.Clear();
        fFolder.Put(name, old);
        Preferences store(kName, false);
        EXPECT_EQ(store.UnreadStatus(), B_OK) << "it can be read again";
        EXPECT_EQ(NumberOf(store), 1);
    }
}

TEST_F(StoreFailureTest, AnotherAttemptReadsIt)
{
    const std::string old = BytesOf(1);
    fFolder.Put(kFile, old);
    FailingDisk disk(1, EACCES);
    kits::SetFailingDevice(&disk);
    Preferences store(kName, false);
    kits::SetFailingDevice(nullptr);
    ASSERT_EQ(store.UnreadStatus(), B_PERMISSION_DENIED);
    EXPECT_EQ(store.Revert(), B_OK);
    EXPECT_EQ(store.UnreadStatus(), B_OK);
    EXPECT_EQ(NumberOf(store), 1);
    Fill(store, 2);
    EXPECT_EQ(store.Sync(), B_OK);
    EXPECT_EQ(fFolder.Names(), std::set<std::string>{kFile});
}
