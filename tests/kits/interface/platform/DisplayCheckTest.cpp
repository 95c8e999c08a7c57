// SPDX-License-Identifier: MIT
#include "kits/interface/platform/DisplayCheck.h"

#include "kits/interface/InterfaceKit.h"

#include <gtest/gtest.h>

#include <map>

namespace {

/// An invented machine.
struct Machine {
    std::map<std::string, std::string> variables;
    std::string xDisplay;      ///< the display that answers
    std::string waylandSocket; ///< the socket that answers
    bool plugin = false;

    std::string WhyNone(const std::vector<std::string>& arguments = {"program"}) const
    {
        kits::DisplayCheck::Surroundings surroundings;
        surroundings.variable = [this](const char* name) {
            const auto found = variables.find(name);
            return found != variables.end() ? found->second : std::string();
        };
        surroundings.reachesX = [this](const std::string& display) { return display == xDisplay; };
        surroundings.reachesWayland = [this](const std::string& socket) { return socket == waylandSocket; };
        surroundings.hasWaylandPlugin = [this] { return plugin; };
        surroundings.hasPlatform = kits::DisplayCheck::Real().hasPlatform;
        return kits::DisplayCheck::WhyNone(arguments, surroundings);
    }
};

} // namespace

TEST(DisplayCheck, WithoutAnythingThereIsNone)
{
    const Machine machine;
    EXPECT_EQ(machine.WhyNone(), "there is no display: neither DISPLAY nor WAYLAND_DISPLAY is set");
}

TEST(DisplayCheck, ADisplayHasToAnswer)
{
    Machine machine;
    machine.variables["DISPLAY"] = ":7";
    EXPECT_EQ(machine.WhyNone(), "cannot reach the display \":7\"");
    machine.xDisplay = ":7";
    EXPECT_EQ(machine.WhyNone(), "");
}

TEST(DisplayCheck, WaylandNeedsItsPlugin)
{
    Machine machine;
    machine.variables["WAYLAND_DISPLAY"] = "wayland-1";
    machine.variables["XDG_RUNTIME_DIR"] = "/run/user/1";
    machine.waylandSocket = "/run/user/1/wayland-1";
    EXPECT_EQ(machine.WhyNone(), "there is only a Wayland display, and the package qt6-wayland is missing");
    machine.plugin = true;
    EXPECT_EQ(machine.WhyNone(), "");
    machine.waylandSocket = "";
    EXPECT_EQ(machine.WhyNone(), "cannot reach the Wayland display \"/run/user/1/wayland-1\"");
    machine.variables["WAYLAND_DISPLAY"] = "/tmp/socket";
    machine.waylandSocket = "/tmp/socket";
    EXPECT_EQ(machine.WhyNone(), "");
}

TEST(DisplayCheck, APlatformThatNeedsNoDisplayIsFine)
{
    Machine machine;
    machine.variables["QT_QPA_PLATFORM"] = "offscreen";
    EXPECT_EQ(machine.WhyNone(), "");
    machine.variables["QT_QPA_PLATFORM"] = "vnc:size=100x100";
    EXPECT_EQ(machine.WhyNone(), "");
    machine.variables.clear();
    EXPECT_EQ(machine.WhyNone({"program", "-platform", "offscreen"}), "");
    EXPECT_EQ(machine.WhyNone({"program", "--platform", "minimal"}), "");
    EXPECT_NE(machine.WhyNone({"program", "-platform"}), "");
}

TEST(DisplayCheck, APlatformThatIsNotInstalledIsSaid)
{
    Machine machine;
    machine.variables["DISPLAY"] = machine.xDisplay = ":7";
    machine.variables["QT_QPA_PLATFORM"] = "bogus:depth=3";
    EXPECT_EQ(machine.WhyNone(), "QT_QPA_PLATFORM names a platform that is not installed: \"bogus\"");
    machine.variables["QT_QPA_PLATFORM"] = "bogus;xcb";
    EXPECT_EQ(machine.WhyNone(), "");
}

TEST(DisplayCheck, APlatformThatWasAskedForIsTheOneThatCounts)
{
    Machine machine;
    machine.variables["DISPLAY"] = ":7";
    machine.xDisplay = ":7";
    machine.variables["QT_QPA_PLATFORM"] = "wayland";
    EXPECT_NE(machine.WhyNone(), "");
    machine.variables["QT_QPA_PLATFORM"] = "wayland;xcb";
    EXPECT_EQ(machine.WhyNone(), "");
    EXPECT_EQ(machine.WhyNone({"program", "-platform", "xcb"}), "");
    machine.xDisplay = "";
    EXPECT_NE(machine.WhyNone(), "");
    machine.variables["QT_QPA_PLATFORM"] = ";";
    EXPECT_EQ(machine.WhyNone(), "cannot reach the display \":7\"");
}

TEST(DisplayCheck, TheRealOnesAreAsked)
{
    const kits::DisplayCheck::Surroundings real = kits::DisplayCheck::Real();
    EXPECT_EQ(real.variable("NO_SUCH_VARIABLE_HERE"), "");
    EXPECT_FALSE(real.reachesX(":4711"));
    EXPECT_FALSE(real.reachesX("nonsense"));
    EXPECT_FALSE(real.reachesWayland("/no/such/socket"));
    EXPECT_FALSE(real.reachesWayland(std::string(500, 'x')));
}

TEST(InterfaceKit, IsSetUpOnce)
{
    int argc = 1;
    char name[] = "program";
    char* argv[] = {name, nullptr};
    EXPECT_EQ(kits::InitInterface(argc, argv), B_NOT_ALLOWED);
    EXPECT_STREQ(kits::InterfaceError(), "");
}
