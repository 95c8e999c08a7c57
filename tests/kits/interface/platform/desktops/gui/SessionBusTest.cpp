// SPDX-License-Identifier: MIT
#include "kits/interface/platform/desktops/SessionBus.h"

#include "tests/support/Environment.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

/// An environment of this process without a bus, and the environment afterwards.
class SessionBus : public testing::Test {
protected:
    SessionBus()
    {
        std::filesystem::create_directory(folder);
        unsetenv("DBUS_SESSION_BUS_ADDRESS");
        setenv("XDG_RUNTIME_DIR", folder.c_str(), 1);
        setenv("PATH", folder.c_str(), 1);
    }
    ~SessionBus() override { std::filesystem::remove_all(folder); }
    /// Makes an executable file.
    void Make(const std::string& name)
    {
        std::ofstream(folder / name) << "#!/bin/sh\n";
        std::filesystem::permissions(folder / name, std::filesystem::perms::owner_all);
    }

    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("session-bus-" + std::to_string(getpid()));

private:
    const EnvironmentGuard fGuard{"DBUS_SESSION_BUS_ADDRESS", "XDG_RUNTIME_DIR", "PATH"};
};

} // namespace

TEST_F(SessionBus, IsReachedByItsAddress)
{
    setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/anywhere", 1);
    EXPECT_TRUE(kits::SessionBus::CanBeReached());
}

TEST_F(SessionBus, IsReachedAtItsUsualPlace)
{
    Make("bus");
    EXPECT_TRUE(kits::SessionBus::CanBeReached());
}

TEST_F(SessionBus, IsStartedByAProgramInAnyFolderOfThem)
{
    setenv("PATH", ("/nowhere::" + folder.string()).c_str(), 1);
    Make("dbus-launch");
    EXPECT_TRUE(kits::SessionBus::CanBeReached());
}

TEST_F(SessionBus, IsElsewhereNowhere)
{
    if (std::filesystem::exists("/usr/bin/dbus-launch"))
        GTEST_SKIP() << "one can be started here";
    EXPECT_FALSE(kits::SessionBus::CanBeReached());
    unsetenv("XDG_RUNTIME_DIR");
    unsetenv("PATH");
    EXPECT_FALSE(kits::SessionBus::CanBeReached());
}

TEST_F(SessionBus, LeavesTheEnvironmentAsItWas)
{
    {
        const kits::SessionBus bus;
    }
    EXPECT_EQ(std::getenv("DBUS_SESSION_BUS_ADDRESS"), nullptr);
    setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/anywhere", 1);
    {
        const kits::SessionBus bus;
    }
    EXPECT_STREQ(std::getenv("DBUS_SESSION_BUS_ADDRESS"), "unix:path=/anywhere");
}
