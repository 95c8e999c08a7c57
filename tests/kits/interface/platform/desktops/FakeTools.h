// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Message.h"
#include "kits/interface/platform/desktops/DesktopBackend.h"
#include "tests/support/Await.h"
#include "tests/support/PictureReader.h"
#include "tests/support/TempFolder.h"

#include <gtest/gtest.h>

#include <sstream>
#include <vector>

namespace kits {

/// A desktop whose tools are scripts, first in $PATH: they record their calls and keep the settings as files in a
/// folder.
class FakeToolsTest : public testing::Test {
protected:
    void SetUp() override
    {
        fPath = getenv("PATH");
        setenv("PATH", (folder.Path("bin") + ":" + fPath).c_str(), 1);
        setenv("FAKE", folder.Path().c_str(), 1);
        setenv("XDG_CONFIG_HOME", folder.Path("config").c_str(), 1);
        for (const char* name : {"bin", "config"})
            std::filesystem::create_directory(folder.Path(name));
        folder.Put("calls", "");
    }
    void TearDown() override { setenv("PATH", fPath.c_str(), 1); }

    void PutTool(const std::string& name, const std::string& script)
    {
        folder.Put("bin/" + name, "#!/bin/sh\necho \"" + name + " $*\" >>\"$FAKE/calls\"\n" + script);
        std::filesystem::permissions(folder.Path("bin/" + name), std::filesystem::perms::owner_all);
    }
    /// Returns the calls of the tools since the last time.
    std::vector<std::string> TakeCalls()
    {
        std::vector<std::string> calls;
        std::istringstream lines(folder.Get("calls"));
        for (std::string line; std::getline(lines, line);)
            calls.push_back(line);
        folder.Put("calls", "");
        return calls;
    }
    /// Writes a picture file of two colours, half each.
    std::string PutPicture(const std::string& name, rgb_color left, rgb_color right)
    {
        std::string bytes = "P6 64 64 255\n";
        for (int i = 0; i < 64 * 64; i++) {
            const rgb_color color = i % 64 < 32 ? left : right;
            bytes += {static_cast<char>(color.red), static_cast<char>(color.green), static_cast<char>(color.blue)};
        }
        folder.Put(name, bytes);
        return folder.Path(name);
    }
    static bool AwaitNews(DesktopBackend& desktop)
    {
        return test::Await([&] { return desktop.TakeNews(); });
    }

    TempFolder folder{TempFolder::Place::kMemory};
    BuiltPictureReader reader;

private:
    std::string fPath;
};

} // namespace kits
