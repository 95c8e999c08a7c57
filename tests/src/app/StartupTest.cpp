#include "src/app/Startup.h"

#include "kits/support/TypeConstants.h"
#include "src/prefs/Preferences.h"
#include "tests/src/app/AppTest.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace {

class StartupTest : public AppTest {
protected:
    void SetUp() override
    {
        AppTest::SetUp();
        Make();
    }
};

} // namespace

TEST_F(StartupTest, TellsOtherVersionsApart)
{
    EXPECT_FALSE(IsOfAnotherVersion(*prefs_user)) << "a first start";
    prefs_user->SetString("Version", "0.3.0");
    EXPECT_FALSE(IsOfAnotherVersion(*prefs_user));
    for (const char* version : {"0.2.9", "0.3.1", "", "0.3.0 ", "0.3"}) {
        prefs_user->SetString("Version", version);
        EXPECT_TRUE(IsOfAnotherVersion(*prefs_user)) << version;
    }
}

TEST_F(StartupTest, AsksNothingAboutThisVersion)
{
    EXPECT_TRUE(AskAboutVersion(prefs_user));
    prefs_user->SetString("Version", "0.3.0");
    EXPECT_TRUE(AskAboutVersion(prefs_user));
    EXPECT_TRUE(prefs_user->HasString("Version"));
}

TEST_F(StartupTest, LeavesAFilledStoreAlone)
{
    prefs_user->SetInt32("Something", 1);
    LoadDefaults(prefs_user);
    EXPECT_EQ(prefs_user->CountNames(B_ANY_TYPE), 1);
}

TEST_F(StartupTest, LoadsTheFileWithoutTheResource)
{
    // This program has no resource of that name.
    std::filesystem::current_path(fConfig.Path());
    LoadDefaults(prefs_user);
    EXPECT_TRUE(prefs_user->IsEmpty());

    BMessage defaults('pref');
    defaults.AddInt32("Something", 7);
    std::string bytes(static_cast<size_t>(defaults.FlattenedSize()), '\0');
    ASSERT_EQ(defaults.Flatten(bytes.data(), static_cast<ssize_t>(bytes.size())), B_OK);
    fConfig.Put("defaults", bytes);
    LoadDefaults(prefs_user);
    int32 value = 0;
    EXPECT_EQ(prefs_user->FindInt32("Something", &value), B_OK);
    EXPECT_EQ(value, 7);
}
