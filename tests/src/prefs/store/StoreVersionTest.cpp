// SPDX-License-Identifier: MIT
#include "tests/src/prefs/store/StoreFixture.h"

namespace {

/// A store of another version that is kept beside the next one.
class StoreVersionTest : public StoreFixture {
protected:
    /// Saves store 2 in place of store 1, which must be kept.
    /// @return the names beside the store's own
    std::set<std::string> Keep(const std::string& version) const
    {
        fFolder.Put(kFile, fOld);
        Preferences store(kName, false);
        store.MakeEmpty();
        store.KeepOld(version.c_str());
        Fill(store, 2);
        EXPECT_EQ(store.Sync(), B_OK);
        EXPECT_EQ(NumberAtStart(), 2);
        // The next save replaces the new one.
        Fill(store, 3);
        EXPECT_EQ(store.Sync(), B_OK);
        EXPECT_EQ(NumberAtStart(), 3);
        std::set<std::string> names = fFolder.Names();
        names.erase(kFile);
        return names;
    }

    static std::string Named(const std::string& end) { return std::string(kFile) + "." + end; }

    const std::string fOld = BytesOf(1);
};

} // namespace

TEST_F(StoreVersionTest, IsNamedAfterIt)
{
    for (const std::string version : {"0.2.9", "0.3.1", "2", "1.0beta.12345678.90z"}) {
        fFolder.Clear();
        EXPECT_EQ(Keep(version), std::set<std::string>{Named(version)});
        EXPECT_EQ(fFolder.Get(Named(version)), fOld);
    }
}

TEST_F(StoreVersionTest, IsNumberedWhenThatIsNoName)
{
    for (const std::string version :
         {"", "1.0beta.12345678.9012", "0.2 9", "../../0.1", "V2", "0.2/9", "0.2\n", "\xc3\xa4", "backup", "kept"}) {
        fFolder.Clear();
        EXPECT_EQ(Keep(version), std::set<std::string>{Named("1")}) << version;
        EXPECT_EQ(fFolder.Get(Named("1")), fOld);
    }
    EXPECT_EQ(Keep("?"), (std::set<std::string>{Named("1"), Named("2")}));
}

TEST_F(StoreVersionTest, ReplacesNoneThatWasKeptBefore)
{
    fFolder.Put(Named("0.2.9"), "another");
    EXPECT_EQ(Keep("0.2.9"), (std::set<std::string>{Named("0.2.9"), Named("0.2.9-2")}));
    EXPECT_EQ(fFolder.Get(Named("0.2.9")), "another");
    EXPECT_EQ(fFolder.Get(Named("0.2.9-2")), fOld);
}

TEST_F(StoreVersionTest, IsInItsPlaceAsLongAsNoOtherIsOnTheDisk)
{
    for (size_t room = 0;; ++room) {
        fFolder.Clear();
        fFolder.Put(kFile, fOld);
        Preferences store(kName, false);
        store.KeepOld("0.2.9");
        Fill(store, 2);
        FullDisk disk(room);
        const WithDisk with(disk);
        if (store.Sync() == B_OK)
            break;
        ASSERT_EQ(fFolder.Names(), std::set<std::string>{kFile}) << "room for " << room;
        ASSERT_EQ(fFolder.Get(kFile), fOld);
    }
    EXPECT_EQ(fFolder.Get(Named("0.2.9")), fOld);
}

TEST_F(StoreVersionTest, IsThereWheneverTheProcessIsKilled)
{
    int call = 0;
    const auto isKilled = [this, &call] {
        fFolder.Clear();
        fFolder.Put(kFile, fOld);
        return RunsUntilKilled([call] {
            Preferences store(kName, false);
            store.KeepOld("0.2.9");
            Fill(store, 2);
            KillingDisk disk = KillingDisk::AtCall(call);
            const WithDisk with(disk);
            store.Sync();
        });
    };
    for (; isKilled(); ++call) {
        const int32 number = NumberAtStart();
        ASSERT_TRUE(number == 1 || fFolder.Get(Named("0.2.9")) == fOld) << "killed at call " << call << ": " << number;
    }
    EXPECT_GT(call, 5);
}
