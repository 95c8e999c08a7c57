// SPDX-License-Identifier: MIT
#include "tests/src/prefs/store/StoreFixture.h"

#include <filesystem>

namespace {

/// A process that writes or loads a store is killed at every call that it makes to the disk and at every byte that it
/// writes; the next process has the old store or the new one.
class StoreKillTest : public StoreFixture {
protected:
    /// Writes store 2 over store 1 in a process that is killed.
    /// @return whether it was killed before it had finished
    bool Replace(KillingDisk disk, const std::string& old) const
    {
        fFolder.Clear();
        if (!old.empty())
            fFolder.Put(kFile, old);
        return RunsUntilKilled([&disk] {
            Preferences store(kName, false);
            Fill(store, 2);
            const WithDisk with(disk);
            store.Sync();
        });
    }
};

} // namespace

TEST_F(StoreKillTest, AtEveryCallOfAWriter)
{
    const std::string old = BytesOf(1);
    int call = 0;
    int found[3] = {};
    for (; Replace(KillingDisk::AtCall(call), old); ++call) {
        const int32 number = NumberAtStart();
        ASSERT_TRUE(number == 1 || number == 2) << "killed at call " << call << ": " << number;
        ++found[number];
        EXPECT_EQ(fFolder.Get(kFile), number == 1 ? old : fFolder.Get(kFile));
        EXPECT_FALSE(fFolder.Has(kBackup)) << "killed at call " << call;
        EXPECT_FALSE(fFolder.Has(kKept)) << "killed at call " << call;
        ASSERT_EQ(NumberAtStart(), number) << "and the start after that";
    }
    EXPECT_EQ(NumberAtStart(), 2);
    EXPECT_GT(found[1], 3);
    EXPECT_GT(found[2], 1);
}

TEST_F(StoreKillTest, AtEveryByteOfAWriter)
{
    const std::string old = BytesOf(1);
    size_t bytes = 0;
    testing::internal::CaptureStderr();
    for (; Replace(KillingDisk::AfterBytes(bytes), old); ++bytes) {
        ASSERT_EQ(NumberAtStart(), 1) << "killed after byte " << bytes;
        ASSERT_EQ(fFolder.Get(kFile), old);
        ASSERT_EQ(fFolder.Has(kKept), bytes > 0) << "what was written of the new one is kept too";
    }
    testing::internal::GetCapturedStderr();
    EXPECT_EQ(NumberAtStart(), 2);
    EXPECT_EQ(fFolder.Get(kFile).size(), bytes);
    EXPECT_GT(bytes, 100u);
}

TEST_F(StoreKillTest, AtEveryCallOfTheFirstWriterEver)
{
    int call = 0;
    for (; Replace(KillingDisk::AtCall(call), ""); ++call) {
        const int32 number = NumberAtStart();
        ASSERT_TRUE(number == -1 || number == 2) << "killed at call " << call << ": " << number;
    }
    EXPECT_EQ(NumberAtStart(), 2);
    EXPECT_GT(call, 5);
}

TEST_F(StoreKillTest, AtEveryCallOfALoaderAfterAKilledWriter)
{
    const std::string old = BytesOf(1);
    int runs = 0;
    const TempFolder saved(TempFolder::Place::kMemory);
    testing::internal::CaptureStderr();
    for (int call = 0; Replace(KillingDisk::AtCall(call), old); ++call) {
        std::filesystem::copy(fFolder.Path(), saved.Path());
        for (int loaderCall = 0;; ++loaderCall, ++runs) {
            const bool killed = RunsUntilKilled([loaderCall] {
                KillingDisk disk = KillingDisk::AtCall(loaderCall);
                const WithDisk with(disk);
                const Preferences store(kName, false);
            });
            const int32 number = NumberAtStart();
            ASSERT_TRUE(number == 1 || number == 2)
                << "writer killed at call " << call << ", loader at " << loaderCall << ": " << number;
            fFolder.Clear();
            std::filesystem::copy(saved.Path(), fFolder.Path());
            if (!killed)
                break;
        }
        saved.Clear();
    }
    testing::internal::GetCapturedStderr();
    EXPECT_GT(runs, 80);
}

TEST_F(StoreKillTest, AWriterAfterAKilledWriterThatNobodyLoadedAfter)
{
    // The second process had loaded before the first one began to write.
    const std::string old = BytesOf(1);
    for (int call = 0;; ++call) {
        fFolder.Clear();
        fFolder.Put(kFile, old);
        Preferences second(kName, false);
        Fill(second, 3);
        const bool killed = RunsUntilKilled([call] {
            Preferences first(kName, false);
            Fill(first, 2);
            KillingDisk disk = KillingDisk::AtCall(call);
            const WithDisk with(disk);
            first.Sync();
        });
        ASSERT_EQ(second.Sync(), B_OK) << "after call " << call;
        ASSERT_EQ(NumberAtStart(), 3) << "after call " << call;
        ASSERT_EQ(fFolder.Names(), std::set<std::string>{kFile}) << "after call " << call;
        if (!killed)
            break;
    }
}

TEST_F(StoreKillTest, TwoWritersOneAfterTheOther)
{
    // Both had loaded before; the first is killed, and then the second.
    const std::string old = BytesOf(1);
    int runs = 0;
    testing::internal::CaptureStderr();
    for (int first = 0;; ++first) {
        for (int second = 0;; ++second, ++runs) {
            fFolder.Clear();
            fFolder.Put(kFile, old);
            Preferences stores[2] = {{kName, false}, {kName, false}};
            bool killed[2];
            for (int writer = 0; writer < 2; ++writer) {
                Fill(stores[writer], 2 + writer);
                killed[writer] = RunsUntilKilled([&] {
                    KillingDisk disk = KillingDisk::AtCall(writer == 0 ? first : second);
                    const WithDisk with(disk);
                    stores[writer].Sync();
                });
            }
            const int32 number = NumberAtStart();
            ASSERT_TRUE(number >= 1 && number <= 3) << "killed at calls " << first << " and " << second;
            if (!killed[1]) {
                ASSERT_EQ(number, 3);
                if (!killed[0]) {
                    testing::internal::GetCapturedStderr();
                    EXPECT_GT(runs, 150);
                    return;
                }
                break;
            }
        }
    }
}
