// SPDX-License-Identifier: MIT
#include "kits/application/Roster.h"

#include "kits/application/teams/DetachedProcess.h"
#include "kits/kernel/Errors.h"
#include "kits/storage/File.h"
#include "kits/support/TypeConstants.h"
#include "tests/support/BoundProcess.h"
#include "tests/support/Loop.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>

namespace {

/// A folder with a desktop's opener in it that records what it is asked to open.
class RosterTest : public testing::Test {
protected:
    RosterTest()
    {
        test::NameTest();
        char name[] = "/tmp/kits-roster-XXXXXX";
        fFolder = mkdtemp(name);
        WriteOpener("#!/bin/sh\nfor text in \"$@\"; do echo \"$text\"; done > \"" + fFolder + "/new\"\nmv \"" +
                    fFolder + "/new\" \"" + fFolder + "/opened\"\n");
        setenv("PATH", (fFolder + ":" + fPath).c_str(), 1);
    }
    ~RosterTest() override
    {
        setenv("PATH", fPath.c_str(), 1);
        std::filesystem::remove_all(fFolder);
    }

    void WriteOpener(const std::string& text)
    {
        const std::string path = fFolder + "/xdg-open";
        std::ofstream(path) << text;
        chmod(path.c_str(), 0755);
    }

    entry_ref MakeFile(const char* name)
    {
        std::ofstream(fFolder + "/" + name) << "content";
        return entry_ref{fFolder, name};
    }

    /// Returns the opener's arguments, without the end of the last line.
    std::string Opened()
    {
        const std::string path = fFolder + "/opened";
        EXPECT_TRUE(test::Await([&path] { return std::filesystem::exists(path); }));
        std::ifstream file(path);
        std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
        std::filesystem::remove(path);
        if (!text.empty())
            text.pop_back();
        return text;
    }

    static void SetText(const entry_ref& ref, const char* name, const char* text)
    {
        const BEntry entry(&ref);
        BNode node(&entry);
        EXPECT_GT(node.WriteAttr(name, B_STRING_TYPE, 0, text, strlen(text) + 1), 0);
    }

    const std::string fPath = getenv("PATH");
    std::string fFolder;
};

} // namespace

TEST_F(RosterTest, OpensAFileAsTheDesktopWould)
{
    const entry_ref ref = MakeFile("a file; with $(odd) name");
    EXPECT_EQ(be_roster->Launch(&ref), B_OK);
    EXPECT_EQ(Opened(), fFolder + "/a file; with $(odd) name");
    // The opener is no child of this process, so it leaves no zombie.
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD);
}

TEST_F(RosterTest, OpensTheAddressOfABookmark)
{
    const entry_ref ref = MakeFile("bookmark");
    SetText(ref, "META:url", "https://example.org/qel?a=b&c");
    EXPECT_EQ(be_roster->Launch(&ref), B_OK);
    EXPECT_EQ(Opened(), "https://example.org/qel?a=b&c");
    for (const char* odd : {"--help", "/etc/passwd", "-x://y", "javascript:1", ""}) {
        SetText(ref, "META:url", odd);
        EXPECT_EQ(be_roster->Launch(&ref), B_OK);
        EXPECT_EQ(Opened(), fFolder + "/bookmark") << odd;
    }
}

TEST_F(RosterTest, OpensAMailToTheSender)
{
    const entry_ref ref = MakeFile("mail");
    SetText(ref, "MAIL:from", "\"The Qel developers\" <qel@example.org>");
    EXPECT_EQ(be_roster->Launch(&ref), B_OK);
    EXPECT_EQ(Opened(), "mailto:qel@example.org");
    SetText(ref, "MAIL:subject", "Just reply & see?");
    EXPECT_EQ(be_roster->Launch(&ref), B_OK);
    EXPECT_EQ(Opened(), "mailto:qel@example.org?subject=Just%20reply%20%26%20see%3F");
    SetText(ref, "MAIL:from", "a\nb&c=d");
    EXPECT_EQ(be_roster->Launch(&ref), B_OK);
    EXPECT_EQ(Opened(), "mailto:a%0Ab%26c%3Dd?subject=Just%20reply%20%26%20see%3F");
}

TEST_F(RosterTest, SaysWhenNothingCanBeOpened)
{
    EXPECT_EQ(be_roster->Launch(static_cast<const entry_ref*>(nullptr)), B_BAD_VALUE);
    const entry_ref missing{fFolder, "missing"};
    EXPECT_EQ(be_roster->Launch(&missing), B_ENTRY_NOT_FOUND);
    const entry_ref ref = MakeFile("file");
    WriteOpener("#!/nowhere/to/be/found\n");
    EXPECT_EQ(be_roster->Launch(&ref), B_LAUNCH_FAILED);
    setenv("PATH", "/nowhere/to/be/found", 1);
    EXPECT_EQ(be_roster->Launch(&ref), B_LAUNCH_FAILED);
}

TEST_F(RosterTest, StartsProgramsThatItDoesNotWaitFor)
{
    WriteOpener("#!/bin/sh\nwhile [ ! -e \"" + fFolder +
                "/go\" ]; do kill -0 ${TEST_PROCESS% *} || exit; sleep 0.01; done\n: > \"" + fFolder + "/done\"\n");
    EXPECT_EQ(kits::StartDetached({fFolder + "/xdg-open"}), B_OK);
    EXPECT_FALSE(std::filesystem::exists(fFolder + "/done"));
    std::ofstream(fFolder + "/go") << "x";
    EXPECT_TRUE(test::Await([this] { return std::filesystem::exists(fFolder + "/done"); }));
    EXPECT_EQ(kits::StartDetached({}), B_ENTRY_NOT_FOUND);
    EXPECT_EQ(kits::StartDetached({fFolder}), B_PERMISSION_DENIED);
}
