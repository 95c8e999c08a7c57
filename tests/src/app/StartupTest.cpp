// SPDX-License-Identifier: MIT
#include "src/app/Startup.h"

#include "kits/support/TypeConstants.h"
#include "src/prefs/store/Preferences.h"
#include "tests/src/app/AppTest.h"

#include <QApplication>
#include <QPushButton>
#include <QTimer>

#include <gtest/gtest.h>

#include <filesystem>

namespace {

class StartupTest : public AppTest {
protected:
    void SetUp() override
    {
        AppTest::SetUp();
        Make();
    }

    static constexpr const char* kStore = "x-vnd.kvt-Qel.user";

    /// Presses the second button of the next question.
    static void PressSecondButton()
    {
        QTimer::singleShot(
            1, qApp,
            [] {
                QWidget* alert = QApplication::activeModalWidget();
                if (alert == nullptr)
                    PressSecondButton();
                else
                    alert->findChildren<QPushButton*>().at(1)->click();
            });
    }
};

} // namespace

TEST_F(StartupTest, TellsOtherVersionsApart)
{
    EXPECT_FALSE(IsOfAnotherVersion(*prefs_user)) << "a first start";
    prefs_user->Set(kVersionField, "0.3.0");
    EXPECT_FALSE(IsOfAnotherVersion(*prefs_user));
    for (const char* version : {"0.2.9", "0.3.1", "", "0.3.0 ", "0.3"}) {
        prefs_user->Set(kVersionField, version);
        EXPECT_TRUE(IsOfAnotherVersion(*prefs_user)) << version;
    }
}

TEST_F(StartupTest, AsksNothingAboutThisVersion)
{
    EXPECT_TRUE(AskAboutVersion(prefs_user));
    prefs_user->Set(kVersionField, "0.3.0");
    EXPECT_TRUE(AskAboutVersion(prefs_user));
    EXPECT_TRUE(prefs_user->HasData("Version", B_STRING_TYPE));
}

TEST_F(StartupTest, TheDefaultsLeaveTheStoreOfTheOtherVersionBesideTheNewOne)
{
    prefs_user->Set(kVersionField, "0.2.9");
    ASSERT_EQ(prefs_user->Sync(), B_OK);
    const std::string old = fConfig.Get(kStore);
    Finish();
    fConfig.Put(kStore, old);
    Make();
    ASSERT_TRUE(IsOfAnotherVersion(*prefs_user));
    PressSecondButton();
    EXPECT_TRUE(AskAboutVersion(prefs_user));
    EXPECT_TRUE(prefs_user->IsEmpty());
    EXPECT_EQ(fConfig.Get(kStore), old) << "nothing is written before there is something to write";
    ASSERT_EQ(prefs_user->Sync(), B_OK);
    EXPECT_EQ(fConfig.Get(std::string(kStore) + ".0.2.9"), old);
    EXPECT_NE(fConfig.Get(kStore), old);
}

TEST_F(StartupTest, AVersionThatIsNoTextIsNone)
{
    prefs_user->AddInt32("Version", 2);
    EXPECT_TRUE(AskAboutVersion(prefs_user));
    EXPECT_EQ(prefs_user->Set(kVersionField, "0.3.0"), B_OK) << "it does not keep the next one out";
}

TEST_F(StartupTest, LeavesAFilledStoreAlone)
{
    prefs_user->AddInt32("Something", 1);
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
