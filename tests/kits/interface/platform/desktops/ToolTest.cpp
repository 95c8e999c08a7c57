// SPDX-License-Identifier: MIT
#include "kits/interface/platform/desktops/Tool.h"

#include "tests/kits/interface/platform/desktops/FakeTools.h"

#include <sys/eventfd.h>

#include <csignal>

using test::Await;

namespace kits {
namespace {

class ToolTest : public FakeToolsTest {};

TEST_F(ToolTest, GivesWhatIsPrinted)
{
    PutTool("say", "echo \"$1\"; echo \"$2\"; echo wrong >&2; read nothing; echo $LC_ALL");
    EXPECT_EQ(Tool::Run({"say", "a  b", "'c'"}), "a  b\n'c'\nC.UTF-8\n");
}

TEST_F(ToolTest, FailsWhenTheToolFailsOrIsMissing)
{
    PutTool("fail", "echo something; exit 3");
    EXPECT_EQ(Tool::Run({"fail"}), std::nullopt);
    EXPECT_EQ(Tool::Run({"no-such-tool"}), std::nullopt);
    EXPECT_FALSE(Tool::Exists("no-such-tool"));
    EXPECT_TRUE(Tool::Exists("fail"));
    folder.Put("bin/broken", "no program");
    std::filesystem::permissions(folder.Path("bin/broken"), std::filesystem::perms::owner_all);
    EXPECT_EQ(Tool::Run({"broken"}), std::nullopt);
}

TEST_F(ToolTest, StopsOneThatNeverStopsPrinting)
{
    PutTool("chatter", "exec yes");
    EXPECT_EQ(Tool::Run({"chatter"}), std::nullopt);
}

TEST_F(ToolTest, TellsHowItEnded)
{
    std::string printed = "before";
    const auto run = [&](const char* script, bigtime_t longest = 60000000, int stop = -1) {
        PutTool("tool", script);
        return Tool::Run({folder.Path("bin/tool")}, longest, stop, &printed);
    };
    EXPECT_EQ(run("exit 3"), Tool::Ending::kFailed);
    EXPECT_EQ(run("kill -SEGV $$"), Tool::Ending::kFailed);
    EXPECT_EQ(run("exec sleep 1000", 100000), Tool::Ending::kGivenUp);
    const FileDescriptor stop(eventfd(1, EFD_CLOEXEC | EFD_NONBLOCK));
    EXPECT_EQ(run("exec sleep 1000", 60000000, stop.Get()), Tool::Ending::kGivenUp);
    EXPECT_EQ(Tool::Run({folder.Path("bin/none")}, 60000000, -1, &printed), Tool::Ending::kGivenUp);
    EXPECT_EQ(printed, "before");
    EXPECT_EQ(run("echo line"), Tool::Ending::kGood);
    EXPECT_EQ(printed, "line\n");
}

TEST_F(ToolTest, GivesLinesAsTheyCome)
{
    PutTool("lines", "printf 'one\\ntwo\\nhalf'; exec sleep 1000");
    Tool tool({"lines"});
    std::vector<std::string> lines;
    EXPECT_TRUE(Await([&] {
        for (std::string& line : tool.TakeLines())
            lines.push_back(line);
        return lines.size() >= 2;
    }));
    EXPECT_EQ(lines, (std::vector<std::string>{"one", "two"}));
    EXPECT_GE(tool.Descriptor(), 0);
}

TEST_F(ToolTest, HasNoDescriptorOnceItHasEnded)
{
    PutTool("short", "echo line");
    Tool tool({"short"});
    std::vector<std::string> lines;
    EXPECT_TRUE(Await([&] {
        for (std::string& line : tool.TakeLines())
            lines.push_back(line);
        return tool.Descriptor() < 0;
    }));
    EXPECT_EQ(lines, std::vector<std::string>{"line"});
}

TEST_F(ToolTest, EndsWithTheObject)
{
    PutTool("stay", "echo $$ >\"$FAKE/number\"; exec sleep 1000");
    pid_t process = 0;
    {
        const Tool tool({"stay"});
        ASSERT_TRUE(Await([&] { return folder.Get("number").find('\n') != std::string::npos; }));
        process = std::stoi(folder.Get("number"));
        EXPECT_EQ(kill(process, 0), 0);
    }
    EXPECT_NE(kill(process, 0), 0);
}

/// Which desktop a session has.
class DesktopChoiceTest : public FakeToolsTest {
protected:
    void TearDown() override
    {
        unsetenv("XDG_CURRENT_DESKTOP");
        FakeToolsTest::TearDown();
    }
    std::string Choice(const char* names)
    {
        setenv("XDG_CURRENT_DESKTOP", names, 1);
        const std::unique_ptr<DesktopBackend> desktop = MakeDesktopBackend(false);
        return desktop != nullptr ? desktop->Name() : "none";
    }
};

TEST_F(DesktopChoiceTest, IsThatOfTheSessionIfItAnswers)
{
    for (const char* tool : {"gsettings", "xfconf-query", "dbus-send"})
        PutTool(tool, "exit 0");
    EXPECT_EQ(Choice("GNOME"), "gnome");
    EXPECT_EQ(Choice("ubuntu:GNOME"), "gnome");
    EXPECT_EQ(Choice("XFCE"), "xfce");
    EXPECT_EQ(Choice("KDE"), "plasma");
    EXPECT_EQ(Choice("MATE"), "mate");
    EXPECT_EQ(Choice("X-Cinnamon"), "cinnamon");
    EXPECT_EQ(Choice("Other"), "none");
    EXPECT_EQ(Choice(""), "none");
    for (const char* tool : {"gsettings", "xfconf-query", "dbus-send"})
        PutTool(tool, "exit 1");
    EXPECT_EQ(Choice("GNOME"), "none");
    EXPECT_EQ(Choice("XFCE"), "none");
    EXPECT_EQ(Choice("KDE"), "none");
}

} // namespace
} // namespace kits
