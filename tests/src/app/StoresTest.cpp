// SPDX-License-Identifier: MIT
#include "src/app/Stores.h"

#include "kits/support/TypeConstants.h"
#include "src/prefs/store/Preferences.h"
#include "src/support/MessageCodes.h"
#include "src/support/Qel.h"
#include "tests/src/app/AppTest.h"

#include <filesystem>
#include <string>

namespace {

constexpr const char* kUser = "x-vnd.kvt-Qel.user";
constexpr const char* kCommon = "x-vnd.kvt-Qel.common";

class StoresTest : public AppTest {
protected:
    struct Key {
        const char* name;
        type_code type;
    };
    static constexpr Key kCommonKeys[] = {{"Uptimes", B_RAW_TYPE},
                                          {"BootCount", B_INT32_TYPE},
                                          {"UptimeSum", B_INT64_TYPE},
                                          {"USLastBoot", B_INT64_TYPE},
                                          {"USLastUptime", B_INT64_TYPE}};
    static constexpr Key kUserKeys[] = {{"Version", B_STRING_TYPE},
                                        {"MainWindow", B_MESSAGE_TYPE},
                                        {"GlobalPrefsWindow", B_MESSAGE_TYPE},
                                        {"Sysinfo", B_MESSAGE_TYPE}};

    /// Writes a store in which each key has a wrong type, and one key that nobody knows.
    template <size_t kCount> static void Damage(bool common, const Key (&keys)[kCount])
    {
        Preferences store(signature, common);
        for (const Key& key : keys)
            if (key.type == B_STRING_TYPE)
                store.AddRect(key.name, BRect(1, 2, 3, 4));
            else
                store.AddString(key.name, "of another type");
        store.AddString("Nobody's", "stays");
        ASSERT_EQ(store.Sync(), B_OK);
    }

    template <size_t kCount> static void Check(bool common, const Key (&keys)[kCount])
    {
        const Preferences store(signature, common, true);
        for (const Key& key : keys) {
            type_code type = 0;
            EXPECT_EQ(store.GetInfo(key.name, &type), B_OK) << key.name;
            EXPECT_EQ(type, key.type) << key.name;
        }
        EXPECT_TRUE(store.HasData("Nobody's", B_STRING_TYPE));
    }
};

} // namespace

TEST_F(StoresTest, EveryKeyIsSavedWhateverTypeItHadBefore)
{
    Damage(true, kCommonKeys);
    Damage(false, kUserKeys);
    QelApp& app = Make();
    prefs_user->Claim(kVersionField); // as the program does when it asks about the version
    Run({[](QelApp& running) {
             BMessage open(MSG_OPEN_GLOBAL_PREFS);
             running.PostMessage(&open);
         },
         [this](QelApp& running) { Await([&running] { return running.PreferencesWindow() != nullptr; }); }});
    EXPECT_EQ(&app, be_app);
    EXPECT_EQ(Finish(), B_OK);
    Check(true, kCommonKeys);
    Check(false, kUserKeys);
}

TEST_F(StoresTest, ATableOfUptimesOfAnotherLengthIsReplaced)
{
    for (const size_t length : {40, 200}) {
        Preferences store(signature, true);
        const std::string bytes(length, '\0');
        store.RemoveName("Uptimes");
        store.AddData("Uptimes", B_RAW_TYPE, bytes.data(), static_cast<ssize_t>(length));
        ASSERT_EQ(store.Sync(), B_OK);
        Run({});
        EXPECT_EQ(Finish(), B_OK);
        const Preferences after(signature, true, true);
        const void* data = nullptr;
        ssize_t size = 0;
        ASSERT_EQ(after.FindData("Uptimes", B_RAW_TYPE, &data, &size), B_OK);
        EXPECT_EQ(size, static_cast<ssize_t>(UptimeTable::kSize));
        UptimeTable table;
        table.SetTo(kUptimesField.Get(after));
        EXPECT_GT(table.At(0).uptime, 0);
    }
}

TEST_F(StoresTest, AnEndThatCannotSaveSaysSo)
{
    Make();
    std::filesystem::remove_all(fConfig.Path());
    testing::internal::CaptureStderr();
    EXPECT_NE(Finish(), B_OK);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "qel: the settings could not be saved in " + fConfig.Path() + ": Not found\n");
}

TEST_F(StoresTest, AMomentOfBootThatCannotBeKeptIsSaidUnlessItIsOneOfMany)
{
    const std::string boot = "x-vnd.kvt-Qel.boot";
    const auto endIn = [&](const std::string& folder) {
        setenv("XDG_CONFIG_HOME", folder.c_str(), 1);
        testing::internal::CaptureStderr();
        {
            Stores stores(Stores::Mode::kSession);
            stores.Save();
        }
        return testing::internal::GetCapturedStderr();
    };
    const std::string taken = fConfig.Path("taken");
    std::filesystem::create_directories(taken + "/" + boot + "/full");
    const std::string line = endIn(taken);
    EXPECT_TRUE(line.starts_with("qel: the moment of boot could not be kept in " + taken + "/" + boot + ": ")) << line;
    EXPECT_EQ(line.find('\n'), line.size() - 1) << line;
    const std::string none = endIn("/proc/nowhere");
    EXPECT_TRUE(none.starts_with("qel: the settings could not be saved in /proc/nowhere: ")) << none;
    EXPECT_EQ(none.find('\n'), none.size() - 1) << none;
    unsetenv("XDG_CONFIG_HOME");
    setenv("HOME", fConfig.Path("nobody").c_str(), 1);
    testing::internal::CaptureStderr();
    {
        Stores stores(Stores::Mode::kSession);
        stores.Save();
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "qel: the settings could not be saved: XDG_CONFIG_HOME is not set, and there is no home folder\n");
    EXPECT_FALSE(fConfig.Has("nobody")) << "nobody's home is made";
}

TEST_F(StoresTest, WithoutWindowsWhatCannotBeReadIsSaidOnStderr)
{
    fConfig.Put(kUser, "broken");
    testing::internal::CaptureStderr();
    {
        const Stores stores(Stores::Mode::kReadOnly);
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "qel: the settings in " + fConfig.Path(kUser) + " could not be read (Damaged, or no settings)\n");
    EXPECT_EQ(fConfig.Get(kUser), "broken");
}
