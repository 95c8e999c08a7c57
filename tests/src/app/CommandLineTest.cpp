// SPDX-License-Identifier: MIT
#include "src/app/CommandLine.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <initializer_list>
#include <vector>

namespace {

using Action = CommandLine::Action;

CommandLine Parse(std::initializer_list<const char*> arguments)
{
    std::vector<const char*> argv{"qel"};
    argv.insert(argv.end(), arguments);
    return ParseCommandLine(static_cast<int>(argv.size()), argv.data());
}

} // namespace

TEST(CommandLine, OpensTheWindowWithoutArguments)
{
    EXPECT_EQ(Parse({}).action, Action::kOpenWindow);
    EXPECT_EQ(Parse({}).error, "");
    EXPECT_EQ(ParseCommandLine(0, nullptr).error, "");
}

TEST(CommandLine, KnowsItsActions)
{
    EXPECT_EQ(Parse({"--help"}).action, Action::kHelp);
    EXPECT_EQ(Parse({"--version"}).action, Action::kVersion);
    EXPECT_EQ(Parse({"--read"}).action, Action::kRead);
    EXPECT_EQ(Parse({"--snapshot", "a.png"}).action, Action::kSnapshot);
    EXPECT_EQ(Parse({"--read", "--help"}).action, Action::kHelp);
}

TEST(CommandLine, TakesOneSampleAtTheStoredInterval)
{
    const CommandLine line = Parse({"--read"});
    EXPECT_EQ(line.samples, 1);
    EXPECT_EQ(line.interval, 0);
    EXPECT_FALSE(line.json);
}

TEST(CommandLine, ReadsTheOptionsOfRead)
{
    const CommandLine line = Parse({"--samples", "3", "--json", "--interval=0.25", "--read"});
    EXPECT_EQ(line.error, "");
    EXPECT_EQ(line.samples, 3);
    EXPECT_EQ(line.interval, 250'000);
    EXPECT_TRUE(line.json);
}

TEST(CommandLine, ReadsWhenToTakeThePicture)
{
    EXPECT_EQ(Parse({"--snapshot=a.png"}).snapshotAfter, 2'000'000);
    EXPECT_EQ(Parse({"--snapshot=a.png", "--after", "0"}).snapshotAfter, 0);
    EXPECT_EQ(Parse({"--after", "1.5", "--snapshot=a.png"}).snapshotAfter, 1'500'000);
}

TEST(CommandLine, ReadsWhatToTellTheRunningProgram)
{
    CommandLine line = Parse({"--set-delay", "0.5"});
    EXPECT_EQ(line.error, "");
    EXPECT_EQ(line.action, Action::kTell);
    EXPECT_EQ(line.setDelay, 500'000);
    EXPECT_EQ(line.setHistory, 0);
    EXPECT_FALSE(line.quit);
    line = Parse({"--quit", "--set-history=25", "--set-delay=1"});
    EXPECT_EQ(line.error, "");
    EXPECT_EQ(line.setDelay, 1'000'000);
    EXPECT_EQ(line.setHistory, 25);
    EXPECT_TRUE(line.quit);
    EXPECT_EQ(Parse({"--set-delay", "0.01"}).setDelay, 10'000);
    EXPECT_EQ(Parse({"--set-delay", "5"}).setDelay, 5'000'000);
    EXPECT_EQ(Parse({"--set-history", "2"}).setHistory, 2);
    EXPECT_EQ(Parse({"--set-history", "200"}).setHistory, 200);
}

TEST(CommandLine, RefusesToTellWhatIsOutOfRange)
{
    for (const char* delay : {"0", "-1", "0.0099", "5.0001", "nan", "inf", "1e9", "soon", "", "0.1s", " 1", "0x1"})
        EXPECT_NE(Parse({"--set-delay", delay}).error, "") << delay;
    for (const char* history : {"0", "1", "-2", "201", "65538", "99999999999", "2.5", "ten", "", "3x", " 3"})
        EXPECT_NE(Parse({"--set-history", history}).error, "") << history;
    for (const char* other : {"--read", "--snapshot=a.png"}) {
        EXPECT_NE(Parse({"--quit", other}).error, "") << other;
        EXPECT_NE(Parse({other, "--set-history", "20"}).error, "") << other;
    }
    for (const char* option : {"--set-delay", "--set-history", "--quit=1"})
        EXPECT_NE(Parse({option}).error, "") << option;
    EXPECT_EQ(Parse({"--quit", "--help"}).action, Action::kHelp);
}

TEST(CommandLine, ResolvesRelativePathsAtOnce)
{
    EXPECT_EQ(Parse({"--snapshot", "a.png"}).snapshotFile, std::filesystem::current_path() / "a.png");
    EXPECT_EQ(Parse({"--snapshot", "/tmp/a.png"}).snapshotFile, "/tmp/a.png");
}

TEST(CommandLine, RefusesBadNumbers)
{
    for (const char* samples : {"0", "-1", "1.5", "two", "", "3x", " 3", "99999999999", "1000000001"})
        EXPECT_NE(Parse({"--read", "--samples", samples}).error, "") << samples;
    for (const char* interval : {"0", "-1", "nan", "inf", "1e9", "0.0001", "1s", "", "0x1"})
        EXPECT_NE(Parse({"--read", "--interval", interval}).error, "") << interval;
    for (const char* after : {"-0.1", "nan", "inf", "86401", "soon", ""})
        EXPECT_NE(Parse({"--snapshot", "a.png", "--after", after}).error, "") << after;
}

TEST(CommandLine, RefusesWhatItDoesNotKnow)
{
    EXPECT_EQ(Parse({"--bogus"}).error, "unknown option '--bogus'");
    EXPECT_EQ(Parse({"file"}).error, "unexpected argument 'file'");
    EXPECT_NE(Parse({"-h"}).error, "");
    EXPECT_NE(Parse({""}).error, "");
    EXPECT_NE(Parse({"--help", "--bogus"}).error, "");
}

TEST(CommandLine, RefusesWhatDoesNotGoTogether)
{
    EXPECT_NE(Parse({"--read", "--snapshot", "a.png"}).error, "");
    EXPECT_NE(Parse({"--json"}).error, "");
    EXPECT_NE(Parse({"--samples", "3"}).error, "");
    EXPECT_NE(Parse({"--interval", "3"}).error, "");
    EXPECT_NE(Parse({"--after", "3"}).error, "");
    EXPECT_NE(Parse({"--read", "--after", "3"}).error, "");
    EXPECT_NE(Parse({"--snapshot"}).error, "");
    EXPECT_NE(Parse({"--snapshot="}).error, "");
    EXPECT_NE(Parse({"--json=yes", "--read"}).error, "");
}

TEST(CommandLine, SaysErrorsInOneLine)
{
    const std::string error = Parse({"--bo\ngus\x1b[2J"}).error;
    EXPECT_NE(error, "");
    EXPECT_EQ(error.find('\n'), std::string::npos);
    EXPECT_EQ(error.find('\x1b'), std::string::npos);
}

TEST(CommandLine, HelpNamesEveryOption)
{
    const std::string help = HelpText();
    for (const char* option :
         {"--help", "--version", "--snapshot", "--after", "--read", "--samples", "--interval", "--json"})
        EXPECT_NE(help.find(option), std::string::npos) << option;
}
