// SPDX-License-Identifier: MIT
#include "kits/support/TypeConstants.h"
#include "src/prefs/store/Preferences.h"
#include "src/sampling/Sysinfo.h"
#include "tests/src/sampling/MachineOverTime.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <memory>

namespace {

namespace fs = std::filesystem;

/// The user's store, in a folder of the test's own.
class SysinfoStoreTest : public testing::Test {
protected:
    SysinfoStoreTest()
        : fFolder(fs::temp_directory_path() / "sampler-settings-XXXXXX")
    {
        std::string pattern = fFolder;
        fFolder = mkdtemp(pattern.data());
        setenv("XDG_CONFIG_HOME", fFolder.c_str(), 1);
        fStore = std::make_unique<Preferences>("application/x-vnd.test", false);
        prefs_user = fStore.get();
    }
    ~SysinfoStoreTest() override
    {
        prefs_user = nullptr;
        fs::remove_all(fFolder);
    }

    MachineOverTime fMachine;
    fs::path fFolder;
    std::unique_ptr<Preferences> fStore;
};

} // namespace

TEST_F(SysinfoStoreTest, StoresItsSettingsWhenItEnds)
{
    {
        Sysinfo sampler(10);
        sampler.SetNodesToKeep(33);
        sampler.SetSamplingDelay(150000);
        EXPECT_FALSE(fStore->HasData("Sysinfo", B_MESSAGE_TYPE));
    }
    BMessage settings;
    ASSERT_EQ(fStore->FindMessage("Sysinfo", &settings), B_OK);
    int64 delay = 0;
    int16 nodes = 0;
    EXPECT_EQ(settings.FindInt64("Delay", &delay), B_OK);
    EXPECT_EQ(settings.FindInt16("NodesToKeep", &nodes), B_OK);
    EXPECT_EQ(delay, 150000);
    EXPECT_EQ(nodes, 33);
}

TEST_F(SysinfoStoreTest, TakesThemWhenItBegins)
{
    BMessage settings;
    settings.AddInt64("Delay", 70000);
    settings.AddInt16("NodesToKeep", 12);
    fStore->Set(kSamplerSettingsField, settings);
    const Sysinfo sampler(10);
    EXPECT_EQ(sampler.SamplingDelay(), 70000);
    EXPECT_EQ(sampler.NodesToKeep(), 12);
    EXPECT_GT(find_thread("Sysinfo sampler"), 0);
}

TEST_F(SysinfoStoreTest, AStoreThatLacksTheDelayStillStartsTheThread)
{
    BMessage settings;
    settings.AddInt16("NodesToKeep", 0);
    fStore->Set(kSamplerSettingsField, settings);
    const Sysinfo sampler(10);
    EXPECT_EQ(sampler.SamplingDelay(), Sysinfo::kDefaultDelay);
    EXPECT_EQ(sampler.NodesToKeep(), 10);
    EXPECT_GT(find_thread("Sysinfo sampler"), 0);
}

TEST_F(SysinfoStoreTest, AGhostStoresNothing)
{
    BMessage archive;
    {
        Sysinfo sampler(10);
        sampler.GhostArchive(&archive);
    }
    fStore->RemoveName("Sysinfo");
    {
        const Sysinfo ghost(&archive);
        EXPECT_EQ(ghost.InitCheck(), B_OK);
    }
    EXPECT_FALSE(fStore->HasData("Sysinfo", B_MESSAGE_TYPE));
}
