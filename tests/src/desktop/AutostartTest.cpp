// SPDX-License-Identifier: MIT
#include "src/desktop/Autostart.h"

#include "kits/storage/files/FileCalls.h"
#include "tests/support/TempFolder.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>

namespace {

const std::string kName = std::string("autostart/") + Autostart::kFile;

class AutostartTest : public testing::Test {
protected:
    AutostartTest() { setenv("XDG_CONFIG_HOME", fConfig.Path().c_str(), 1); }

    TempFolder fConfig;
};

/// A disk on which one kind of call fails.
class NoDisk : public kits::FailingDevice {
public:
    explicit NoDisk(kits::FileCall call)
        : fCall(call)
    {
        kits::SetFailingDevice(this);
    }
    ~NoDisk() override { kits::SetFailingDevice(nullptr); }
    int Before(kits::FileAction& action) override { return action.call == fCall ? ENOSPC : 0; }

private:
    kits::FileCall fCall;
};

} // namespace

TEST_F(AutostartTest, IsAnEntryThatStartsThisProgram)
{
    ASSERT_EQ(Autostart::Enable("/opt/a b/qel-desktop"), B_OK);
    const std::string entry = fConfig.Get(kName);
    EXPECT_EQ(entry, Autostart::EntryFor("/opt/a b/qel-desktop"));
    EXPECT_TRUE(entry.starts_with("[Desktop Entry]\nType=Application\n"));
    EXPECT_NE(entry.find("\nExec=\"/opt/a b/qel-desktop\"\n"), std::string::npos);
    EXPECT_NE(entry.find("\nTryExec=/opt/a b/qel-desktop\n"), std::string::npos);
    EXPECT_NE(entry.find("\nIcon=org.example.qel\n"), std::string::npos);
    ASSERT_EQ(Autostart::Disable(), B_OK);
    EXPECT_FALSE(fConfig.Has(kName));
    EXPECT_EQ(Autostart::Disable(), B_OK);
}

TEST_F(AutostartTest, QuotesWhatAFileNameMayHold)
{
    const std::string entry = Autostart::EntryFor("/a\"b$c`d%e\\f");
    EXPECT_NE(entry.find("\nExec=\"/a\\\\\"b\\\\$c\\\\`d%%e\\\\\\\\f\"\n"), std::string::npos) << entry;
}

TEST_F(AutostartTest, LeavesAnEntryThatIsRight)
{
    ASSERT_EQ(Autostart::Enable("/bin/qel-desktop"), B_OK);
    // As a desktop's settings switch it off.
    const std::string off = fConfig.Get(kName) + "Hidden=true\n";
    fConfig.Put(kName, off);
    ASSERT_EQ(Autostart::Enable("/bin/qel-desktop"), B_OK);
    EXPECT_EQ(fConfig.Get(kName), off);
    // Not an entry for a program that was moved.
    ASSERT_EQ(Autostart::Enable("/usr/bin/qel-desktop"), B_OK);
    EXPECT_EQ(fConfig.Get(kName), Autostart::EntryFor("/usr/bin/qel-desktop"));
}

TEST_F(AutostartTest, KeepsTheOldEntryOnAFullDisk)
{
    ASSERT_EQ(Autostart::Enable("/bin/old"), B_OK);
    for (const kits::FileCall call :
         {kits::FileCall::kCreate, kits::FileCall::kWrite, kits::FileCall::kSync, kits::FileCall::kRename}) {
        const NoDisk disk(call);
        EXPECT_NE(Autostart::Enable("/bin/new"), B_OK);
        EXPECT_EQ(fConfig.Get(kName), Autostart::EntryFor("/bin/old"));
    }
    EXPECT_EQ(Autostart::Enable("/bin/new"), B_OK);
}

TEST_F(AutostartTest, IsNeverWrittenThroughALink)
{
    ASSERT_EQ(Autostart::Enable("/bin/qel-desktop"), B_OK);
    fConfig.Put("mine", "mine");
    for (const char* const target : {"mine", "nowhere"}) {
        for (const std::string& name : {kName, kName + ".new"}) {
            std::filesystem::remove(fConfig.Path(name));
            std::filesystem::create_symlink(fConfig.Path(target), fConfig.Path(name));
            const bool isEntry = name == kName;
            EXPECT_EQ(Autostart::Enable("/bin/qel-desktop"), isEntry ? B_NOT_ALLOWED : B_OK) << target;
            EXPECT_EQ(std::filesystem::is_symlink(fConfig.Path(kName)), isEntry) << target;
            if (isEntry) {
                EXPECT_EQ(Autostart::Disable(), B_NOT_ALLOWED);
                EXPECT_TRUE(std::filesystem::is_symlink(fConfig.Path(kName))) << "it is the user's";
                std::filesystem::remove(fConfig.Path(kName));
            }
            EXPECT_EQ(fConfig.Get("mine"), "mine");
            EXPECT_FALSE(fConfig.Has("nowhere"));
        }
    }
}

TEST_F(AutostartTest, MayBeALinkToAnEntryThatIsRight)
{
    std::filesystem::create_directory(fConfig.Path("autostart"));
    fConfig.Put("mine", Autostart::EntryFor("/bin/qel-desktop"));
    std::filesystem::create_symlink("../mine", fConfig.Path(kName));
    EXPECT_EQ(Autostart::Enable("/bin/qel-desktop"), B_OK);
    EXPECT_EQ(Autostart::Enable("/usr/bin/qel-desktop"), B_NOT_ALLOWED);
    EXPECT_EQ(fConfig.Get("mine"), Autostart::EntryFor("/bin/qel-desktop"));
}

TEST_F(AutostartTest, FollowsALinkInPlaceOfItsFolder)
{
    std::filesystem::create_directory(fConfig.Path("elsewhere"));
    std::filesystem::create_directory_symlink("elsewhere", fConfig.Path("autostart"));
    EXPECT_EQ(Autostart::Enable("/bin/qel-desktop"), B_OK);
    EXPECT_TRUE(fConfig.Has(std::string("elsewhere/") + Autostart::kFile));
    EXPECT_EQ(Autostart::Disable(), B_OK);
    std::filesystem::remove(fConfig.Path("elsewhere"));
    EXPECT_NE(Autostart::Enable("/bin/qel-desktop"), B_OK) << "a link that leads nowhere";
    EXPECT_FALSE(fConfig.Has("elsewhere"));
}

TEST_F(AutostartTest, NeedsASettingsFolder)
{
    fConfig.Put("file", "");
    setenv("XDG_CONFIG_HOME", fConfig.Path("file").c_str(), 1);
    EXPECT_NE(Autostart::Enable("/bin/qel-desktop"), B_OK);
    EXPECT_EQ(Autostart::Disable(), B_OK);
}
