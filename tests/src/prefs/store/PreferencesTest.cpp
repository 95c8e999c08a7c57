// SPDX-License-Identifier: MIT
#include "src/prefs/store/Preferences.h"

#include "kits/storage/File.h"
#include "kits/support/TypeConstants.h"
#include "tests/src/prefs/store/StoreFixture.h"
#include "tests/support/FieldAt.h"

#include <cstring>

namespace {

class PreferencesTest : public StoreFixture {};

using kits::Field;

constexpr double kFar = 1e18;
const Field<bool> kBool("bool");
const Field<float> kFloat("float", -kFar, kFar);
const Field<int16> kInt16("int16", -kFar, kFar);
const Field<int32> kInt32("int32", -kFar, kFar);
const Field<int64> kInt64("int64", -kFar, kFar);
const Field<std::string> kString("string", 0, kFar);
const Field<BRect> kRect("rect", -kFar, kFar);
const Field<BPoint> kPoint("point", -kFar, kFar);
const Field<BMessage> kMessage("message");
const Field<std::string_view, B_RAW_TYPE> kData("data", 0, kFar);

/// One name, as fields of three types.
const Field<int32> kNumber("field", -kFar, kFar);
const Field<std::string> kText("field", 0, kFar);
const Field<std::string_view, B_RAW_TYPE> kBytes("field", 0, kFar);

/// Adds one value of every type that a store sets.
void SetOneOfEach(Preferences& store)
{
    EXPECT_EQ(store.Set(kBool, true), B_OK);
    EXPECT_EQ(store.Set(kFloat, 0.1f), B_OK);
    EXPECT_EQ(store.Set(kInt16, -1616), B_OK);
    EXPECT_EQ(store.Set(kInt32, -323232), B_OK);
    EXPECT_EQ(store.Set(kInt64, -64646464646464), B_OK);
    EXPECT_EQ(store.Set(kString, "text"), B_OK);
    EXPECT_EQ(store.Set(kRect, BRect(1, 2, 3.5, 4)), B_OK);
    EXPECT_EQ(store.Set(kPoint, BPoint(-1, 0.5)), B_OK);
    BMessage inner('inne');
    inner.AddString("leaf", "green");
    EXPECT_EQ(store.Set(kMessage, inner), B_OK);
    EXPECT_EQ(store.Set(kData, std::string_view("\0\1\2", 3)), B_OK);
}

} // namespace

TEST_F(PreferencesTest, FilesAreNamedAfterTheLastPartOfTheName)
{
    for (const auto& [name, file] : std::initializer_list<std::pair<const char*, const char*>>{
             {"application/x-vnd.kvt-Qel", "x-vnd.kvt-Qel"}, {"plain", "plain"}, {"a/b/c", "c"}}) {
        fFolder.Clear();
        EXPECT_EQ(Preferences(name, true).Sync(), B_OK);
        EXPECT_EQ(Preferences(name, false).Sync(), B_OK);
        const std::string leaf = file;
        EXPECT_EQ(fFolder.Names(), (std::set<std::string>{leaf + ".common", leaf + ".user"}));
    }
}

TEST_F(PreferencesTest, ASlashAtTheBeginningMakesNoFileElsewhere)
{
    const Preferences store("/name", false);
    EXPECT_NE(store.InitCheck(), B_OK);
    EXPECT_EQ(fFolder.Names(), std::set<std::string>{});
}

TEST_F(PreferencesTest, BothStoresLieInTheSettingsFolder)
{
    entry_ref ref;
    EXPECT_EQ(Preferences(kName, true).GetRef(&ref), B_OK);
    EXPECT_EQ(ref, (entry_ref{fFolder.Path(), "x-vnd.test-Store.common"}));
    EXPECT_EQ(Preferences(kName, false).GetRef(&ref), B_OK);
    EXPECT_EQ(ref, (entry_ref{fFolder.Path(), kFile}));
    EXPECT_EQ(fFolder.Names(), std::set<std::string>{}) << "nothing is written before Sync";
}

TEST_F(PreferencesTest, ANewStoreIsEmptyAndHasItsCode)
{
    const Preferences store(kName, false);
    EXPECT_EQ(store.InitCheck(), B_OK);
    EXPECT_TRUE(store.IsEmpty());
    EXPECT_EQ(store.what, 0x70726566u);
}

TEST_F(PreferencesTest, EveryTypeComesBack)
{
    Preferences store(kName, false);
    SetOneOfEach(store);
    ASSERT_EQ(store.Sync(), B_OK);
    const Preferences again(kName, false);
    EXPECT_EQ(again.CountNames(B_ANY_TYPE), 10);
    EXPECT_TRUE(again.HasSameData(store));
}

TEST_F(PreferencesTest, SettingReplacesTheFirstValue)
{
    Preferences store(kName, false);
    EXPECT_EQ(store.Set(kInt32, 1), B_OK);
    EXPECT_EQ(store.Set(kInt32, 2), B_OK);
    int32 count = 0;
    EXPECT_EQ(store.GetInfo("int32", nullptr, &count), B_OK);
    EXPECT_EQ(count, 1);
    int32 value = 0;
    EXPECT_EQ(store.FindInt32("int32", &value), B_OK);
    EXPECT_EQ(value, 2);

    SetOneOfEach(store);
    SetOneOfEach(store);
    for (int32 index = 0; index < store.CountNames(B_ANY_TYPE); ++index) {
        EXPECT_TRUE(test::FieldAt(store, B_ANY_TYPE, index, nullptr, nullptr, &count));
        EXPECT_EQ(count, 1) << "field " << index;
    }
}

TEST_F(PreferencesTest, AFieldKeepsItsType)
{
    Preferences store(kName, false);
    EXPECT_EQ(store.Set(kNumber, 1), B_OK);
    EXPECT_EQ(store.Set(kText, "text"), B_BAD_TYPE);
    EXPECT_EQ(store.Set(kBytes, "x"), B_BAD_TYPE);
    int32 value = 0;
    EXPECT_EQ(store.FindInt32("field", &value), B_OK);
    EXPECT_EQ(value, 1);
}

TEST_F(PreferencesTest, SyncMakesTheFileAndLeavesNoBackup)
{
    Preferences store(kName, false);
    Fill(store, 1);
    EXPECT_EQ(store.Sync(), B_OK);
    EXPECT_EQ(fFolder.Names(), std::set<std::string>{kFile});
    Fill(store, 2);
    EXPECT_EQ(store.Sync(), B_OK);
    EXPECT_EQ(fFolder.Names(), std::set<std::string>{kFile});
    std::string flattened(static_cast<size_t>(store.FlattenedSize()), '\0');
    ASSERT_EQ(store.Flatten(flattened.data(), static_cast<ssize_t>(flattened.size())), B_OK);
    EXPECT_EQ(fFolder.Get(kFile), flattened) << "the file holds the flattened store and nothing else";
}

TEST_F(PreferencesTest, DestroyingAStoreWritesNothing)
{
    {
        Preferences store(kName, false);
        Fill(store, 1);
    }
    EXPECT_EQ(fFolder.Names(), std::set<std::string>{});
}

TEST_F(PreferencesTest, RevertTakesTheFileAgain)
{
    Preferences store(kName, false);
    EXPECT_EQ(store.Revert(), B_ENTRY_NOT_FOUND);
    Fill(store, 1);
    EXPECT_EQ(store.Revert(), B_ENTRY_NOT_FOUND);
    EXPECT_EQ(NumberOf(store), 1) << "without a file the contents stay";
    ASSERT_EQ(store.Sync(), B_OK);
    Fill(store, 2);
    EXPECT_EQ(store.Revert(), B_OK);
    EXPECT_EQ(NumberOf(store), 1);
}

TEST_F(PreferencesTest, LoadFromTakesContentsAndCodeOfAnyMessageFile)
{
    BMessage message('othr');
    message.AddInt32("Number", 7);
    {
        BFile file(fFolder.Path("defaults").c_str(), B_READ_WRITE | B_CREATE_FILE);
        ASSERT_EQ(message.Flatten(&file), B_OK);
    }
    Preferences store(kName, false);
    Fill(store, 1);
    BFile file(fFolder.Path("defaults").c_str(), B_READ_ONLY);
    EXPECT_EQ(store.LoadFrom(&file), B_OK);
    EXPECT_TRUE(store.HasSameData(message));
    EXPECT_EQ(store.what, static_cast<uint32>('othr'));
    EXPECT_EQ(file.Lock(), B_OK) << "it was unlocked again";
}

TEST_F(PreferencesTest, LoadFromABrokenFileChangesNothing)
{
    fFolder.Put("defaults", "this is no message");
    Preferences store(kName, false);
    Fill(store, 1);
    BFile file(fFolder.Path("defaults").c_str(), B_READ_ONLY);
    EXPECT_EQ(store.LoadFrom(&file), B_BAD_VALUE);
    EXPECT_EQ(NumberOf(store), 1);
    EXPECT_TRUE(fFolder.Has("defaults")) << "a file of somebody else's stays where it is";
    EXPECT_EQ(store.LoadFrom(nullptr), B_BAD_VALUE);
    EXPECT_EQ(store.SaveTo(nullptr), B_BAD_VALUE);
}

TEST_F(PreferencesTest, SaveToWritesAtThePositionOfTheFile)
{
    Preferences store(kName, false);
    Fill(store, 3);
    BFile file(fFolder.Path("copy").c_str(), B_READ_WRITE | B_CREATE_FILE);
    ASSERT_EQ(file.Write("head", 4), 4);
    EXPECT_EQ(store.SaveTo(&file), B_OK);
    Preferences other("other", false);
    ASSERT_EQ(file.SetTo(fFolder.Path("copy").c_str(), B_READ_ONLY), B_OK);
    char head[4];
    ASSERT_EQ(file.Read(head, sizeof(head)), 4);
    EXPECT_EQ(other.LoadFrom(&file), B_OK);
    EXPECT_EQ(NumberOf(other), 3);
    EXPECT_EQ(fFolder.Get("copy").substr(0, 4), "head");
}

TEST_F(PreferencesTest, WithoutASettingsFolderItWorksInMemory)
{
    BFile file(fFolder.Path("file").c_str(), B_READ_WRITE | B_CREATE_FILE);
    unsetenv("XDG_CONFIG_HOME");
    unsetenv("HOME");
    Preferences store(kName, false);
    EXPECT_EQ(store.InitCheck(), B_ENTRY_NOT_FOUND) << "the reason, for whoever tells of it";
    EXPECT_EQ(store.Place().directory, "");
    EXPECT_EQ(store.Place().name, kFile);
    EXPECT_EQ(store.AddInt32("Number", 5), B_OK);
    EXPECT_EQ(store.Sync(), static_cast<status_t>(0x8000000D));
    EXPECT_EQ(store.Revert(), B_NO_INIT);
    EXPECT_EQ(store.SaveTo(&file), B_NO_INIT);
    EXPECT_EQ(store.LoadFrom(&file), B_NO_INIT);
    entry_ref ref;
    EXPECT_EQ(store.GetRef(&ref), B_NO_INIT);
    int32 value = 0;
    EXPECT_EQ(store.FindInt32("Number", &value), B_OK);
    EXPECT_EQ(value, 5);
}

TEST_F(PreferencesTest, KeepsWhyTheFolderCouldNotBeMadeAndWhichOne)
{
    fFolder.Put("file", "");
    setenv("XDG_CONFIG_HOME", fFolder.Path("file").c_str(), 1);
    Preferences store(kName, false);
    EXPECT_EQ(store.InitCheck(), B_FILE_EXISTS);
    EXPECT_EQ(store.Place().directory, fFolder.Path("file"));
    EXPECT_EQ(store.Sync(), B_NO_INIT);
}

TEST_F(PreferencesTest, SettingReplacesDataWhateverItsLength)
{
    for (const size_t length : {0, 40, 160, 200}) {
        Preferences store(kName, false);
        const std::string old(length, 'o');
        ASSERT_EQ(store.AddData("data", B_RAW_TYPE, old.data(), static_cast<ssize_t>(length)), B_OK);
        ASSERT_EQ(store.Sync(), B_OK);
        Preferences again(kName, false);
        const std::string next(160, 'n');
        EXPECT_EQ(again.Set(kData, next), B_OK);
        ASSERT_EQ(again.Sync(), B_OK);
        const Preferences last(kName, false);
        const void* data = nullptr;
        ssize_t size = 0;
        ASSERT_EQ(last.FindData("data", B_RAW_TYPE, &data, &size), B_OK);
        EXPECT_EQ(std::string(static_cast<const char*>(data), static_cast<size_t>(size)), next);
        fFolder.Clear();
    }
}

TEST_F(PreferencesTest, TheOwnerOfAKeyRemovesAnotherType)
{
    Preferences store(kName, false);
    store.AddString("field", "text");
    store.AddString("Nobody's", "text");
    store.AddInt32("int32", 1);
    EXPECT_EQ(store.Set(kNumber, 2), B_BAD_TYPE);
    EXPECT_TRUE(store.Claim(kInt32));
    EXPECT_FALSE(store.Claim(kInt64)) << "it is missing";
    EXPECT_FALSE(store.Claim(kNumber));
    EXPECT_FALSE(store.HasData("field", B_ANY_TYPE));
    EXPECT_EQ(store.Set(kNumber, 2), B_OK);
    EXPECT_TRUE(store.HasData("Nobody's", B_STRING_TYPE));
    EXPECT_EQ(kInt32.Get(store), 1);
}

TEST_F(PreferencesTest, RemembersThatAValueCouldNotBeSet)
{
    Preferences store(kName, false);
    EXPECT_EQ(store.Error(), B_OK);
    store.Set(kText, "text");
    store.Set(kNumber, 1);
    store.Set(kInt32, 1);
    EXPECT_EQ(store.Error(), B_BAD_TYPE);
    store.ForgetErrors();
    EXPECT_EQ(store.Error(), B_OK);
    EXPECT_EQ(store.NoteError(B_OK), B_OK);
    EXPECT_EQ(store.NoteError(B_ERROR), B_ERROR);
    EXPECT_EQ(store.Error(), B_ERROR);
}

TEST_F(PreferencesTest, ANameTooLongForAFileIsAnErrorAndNothingElse)
{
    Preferences store(std::string(300, 'n').c_str(), false);
    EXPECT_EQ(store.InitCheck(), B_NAME_TOO_LONG);
    EXPECT_EQ(store.Sync(), B_NO_INIT);

    // The file's own name fits, that of its backup does not.
    Preferences tight(std::string(245, 'n').c_str(), false);
    Fill(tight, 1);
    EXPECT_EQ(tight.Sync(), B_OK);
    Fill(tight, 2);
    EXPECT_EQ(tight.Sync(), B_NAME_TOO_LONG);
    EXPECT_EQ(NumberOf(Preferences(std::string(245, 'n').c_str(), false)), 1);
}

TEST_F(PreferencesTest, AReadOnlyStoreLoadsAndTouchesNothing)
{
    const std::string old = BytesOf(1);
    {
        setenv("XDG_CONFIG_HOME", fFolder.Path("none").c_str(), 1);
        Preferences store(kName, false, true);
        EXPECT_TRUE(store.IsEmpty());
        EXPECT_EQ(fFolder.Names(), std::set<std::string>{}) << "no folder is made";
        setenv("XDG_CONFIG_HOME", fFolder.Path().c_str(), 1);
    }
    fFolder.Put(kFile, "broken");
    fFolder.Put(kBackup, old);
    const auto names = fFolder.Names();
    Preferences store(kName, false, true);
    EXPECT_EQ(NumberOf(store), 1);
    EXPECT_EQ(store.Sync(), B_NOT_ALLOWED);
    fFolder.Put(kBackup, "broken too");
    EXPECT_TRUE(Preferences(kName, false, true).IsEmpty());
    EXPECT_EQ(fFolder.Names(), names);
    EXPECT_EQ(fFolder.Get(kFile), "broken");
}
