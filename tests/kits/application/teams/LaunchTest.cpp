// SPDX-License-Identifier: MIT
#include "kits/application/teams/Launch.h"

#include "kits/application/Application.h"
#include "kits/application/Roster.h"
#include "kits/application/teams/TeamPort.h"
#include "kits/kernel/Errors.h"
#include "tests/support/TeamFixture.h"

#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>

using test::KitThread;
using test::Partner;

namespace {

constexpr const char* kSignature = test::kPartnerSignature;

/// Applications that the roster starts are no children of this process, so a message ends them.
class LaunchTest : public test::TeamTest {
protected:
    ~LaunchTest() override
    {
        for (team_id team; (team = be_roster->TeamFor(kSignature)) >= 0;) {
            kill(team, SIGKILL);
            test::Await([team] { return be_roster->TeamFor(kSignature) != team; });
        }
    }

    static std::string LogOf(const BMessenger& application)
    {
        std::string log;
        EXPECT_EQ(Ask(application, 'log?').FindString("log", &log), B_OK);
        return log;
    }
};

} // namespace

TEST(Launch, KnowsTheProgramOfASignature)
{
    EXPECT_EQ(kits::ProgramOfSignature("application/x-vnd.kvt-Qel"), "qel");
    EXPECT_EQ(kits::ProgramOfSignature("application/x-vnd.kvt-Qel-desktop"), "qel-desktop");
    EXPECT_EQ(kits::ProgramOfSignature(kSignature), test::PartnerProgram());
    for (const char* signature : {"", "application/x-vnd.kvt", "application/x-vnd.kvt-", "text/plain-a"})
        EXPECT_EQ(kits::ProgramOfSignature(signature), "");
}

TEST(Launch, SaysWhyThereIsNoLock)
{
    const test::RuntimeFolder runtime;
    kits::TeamFolder folder;
    ASSERT_EQ(folder.Open(), B_OK);
    EXPECT_EQ(kits::LaunchLock::ObstacleTo(folder, kSignature), "");
    const std::string file = runtime.Path() + "/kits/" + std::string(kSignature).substr(12) + ".lock";
    ASSERT_TRUE(std::filesystem::remove(file));
    std::filesystem::create_symlink("elsewhere", file);
    EXPECT_EQ(kits::LaunchLock::ObstacleTo(folder, kSignature), file + " is a link");
    EXPECT_FALSE(std::filesystem::exists(runtime.Path() + "/kits/elsewhere"));
    std::filesystem::remove(file);
    std::filesystem::create_directory(file);
    EXPECT_EQ(kits::LaunchLock::ObstacleTo(folder, kSignature), file + " cannot be opened (Is a folder)");
}

TEST_F(LaunchTest, FindsNoObstacle)
{
    const app_obstacle obstacle = be_roster->FindObstacle(kSignature);
    EXPECT_EQ(obstacle.text, "");
}

TEST_F(LaunchTest, StartsAnApplicationWithAMessage)
{
    const BMessage message('lnch');
    team_id team = -1;
    EXPECT_EQ(be_roster->Launch(kSignature, &message, &team), B_OK);
    EXPECT_EQ(team, be_roster->TeamFor(kSignature));
    const BMessenger application(kSignature);
    EXPECT_EQ(LogOf(application), "launched ready ");
    // The second time, it gets the message as any other.
    team = -1;
    EXPECT_EQ(be_roster->Launch(kSignature, &message, &team), B_ALREADY_RUNNING);
    EXPECT_EQ(team, application.Team());
    EXPECT_EQ(LogOf(application), "launched ready launched ");
}

TEST_F(LaunchTest, StartsItOnceHoweverManyAsk)
{
    std::atomic<int> countStarted = 0, countRunning = 0;
    {
        std::vector<std::unique_ptr<KitThread>> threads;
        for (int i = 0; i < 6; ++i)
            threads.push_back(std::make_unique<KitThread>([&] {
                const status_t status = be_roster->Launch(kSignature);
                countStarted += status == B_OK ? 1 : 0;
                countRunning += status == B_ALREADY_RUNNING ? 1 : 0;
            }));
    }
    EXPECT_EQ(countStarted, 1);
    EXPECT_EQ(countRunning, 5);
    EXPECT_EQ(kits::TeamPort::Get().Find(kSignature).size(), 1u);
}

TEST_F(LaunchTest, LeavesOneOfASingleApplication)
{
    Partner first(kSignature, "single");
    const BMessenger application = first.Application();
    EXPECT_EQ(Partner(kSignature, "single").Await(), 0);
    EXPECT_EQ(LogOf(application), "ready again ");
    // A dead application does not prevent the next start.
    first.Signal(SIGKILL);
    first.Await();
    Partner second(kSignature, "single");
    EXPECT_EQ(LogOf(second.Application()), "ready ");
    // All at once.
    std::vector<std::unique_ptr<Partner>> many;
    for (int i = 0; i < 5; ++i)
        many.push_back(std::make_unique<Partner>("application/x-vnd.test-other", "single"));
    EXPECT_TRUE(test::Await([&] { return be_roster->IsRunning("application/x-vnd.test-other"); }));
    const team_id winner = be_roster->TeamFor("application/x-vnd.test-other");
    for (const auto& partner : many)
        if (partner->Process() != winner)
            EXPECT_EQ(partner->Await(), 0);
}

TEST_F(LaunchTest, OfASingleApplicationStartsWhenTheOneBeforeIsAskedToQuitAndHasNotNoticed)
{
    // Other starts wait until it looks at its messages again.
    BMessage nap('nap!');
    nap.AddInt64("time", 700000);
    for (const bool bySignal : {true, false}) {
        const std::string signature = kSignature + std::string(bySignal ? "-s" : "-m");
        Partner before(signature, "single");
        const BMessenger ending = before.Application();
        Ask(ending, nap);
        if (bySignal)
            before.Signal(SIGTERM);
        else
            ASSERT_EQ(ending.SendMessage(B_QUIT_REQUESTED), B_OK);
        Partner next(signature, "single");
        EXPECT_EQ(LogOf(next.Application()), "ready ");
        EXPECT_EQ(before.Await(), 0);
    }
}

TEST_F(LaunchTest, OfASingleApplicationStartsWhenTheOneBeforeTakesLongToQuit)
{
    Partner first(kSignature, "single");
    BMessage slow('slow');
    slow.AddInt64("time", 700000);
    Ask(first.Application(), slow);
    first.Signal(SIGTERM);
    Partner next(kSignature, "single");
    EXPECT_EQ(LogOf(next.Application()), "ready ");
    EXPECT_EQ(first.Await(), 0);
}

TEST_F(LaunchTest, OfASingleApplicationTellsWhenTheUserSeesNothingOfTheFirst)
{
    const auto startOn = [](const char* wayland, const char* display) {
        setenv("WAYLAND_DISPLAY", wayland, 1);
        setenv("DISPLAY", display, 1);
        return std::make_unique<Partner>(kSignature, "single");
    };
    const auto first = startOn("", ":71");
    const BMessenger application = first->Application();
    constexpr int kHere = 0, kElsewhere = 4;
    EXPECT_EQ(startOn("", ":71")->Await(), kHere);
    EXPECT_EQ(startOn("wayland-0", ":71.0")->Await(), kHere);
    EXPECT_EQ(startOn("", ":72")->Await(), kElsewhere);
    EXPECT_EQ(startOn("wayland-0", "")->Await(), kElsewhere);
    EXPECT_EQ(LogOf(application), "ready again again again again ");
    unsetenv("WAYLAND_DISPLAY");
    unsetenv("DISPLAY");
}

TEST(Launch, OfASingleApplicationWaitsForTheEndOfTheProcessBefore)
{
    const test::RuntimeFolder runtime;
    constexpr const char* kOwn = "application/x-vnd.test-own";
    kits::TeamFolder folder;
    ASSERT_EQ(folder.Open(), B_OK);
    kits::LaunchLock lock;
    {
        BApplication application(kOwn, nullptr, kits::Presence::kSingle);
        EXPECT_EQ(application.InitCheck(), B_OK);
        EXPECT_TRUE(be_roster->IsRunning(kOwn));
        EXPECT_EQ(lock.Take(folder, kOwn, 0), B_OK);
        lock = kits::LaunchLock();
        application.Quit();
        EXPECT_FALSE(be_roster->IsRunning(kOwn));
        EXPECT_EQ(lock.Take(folder, kOwn, 0), B_TIMED_OUT);
    }
    // At its end, a program still writes files without its application object.
    EXPECT_EQ(lock.Take(folder, kOwn, 0), B_TIMED_OUT);
    // Within the same process nobody waits for its end.
    BApplication next(kOwn, nullptr, kits::Presence::kSingle);
    EXPECT_EQ(next.InitCheck(), B_OK);
    EXPECT_TRUE(be_roster->IsRunning(kOwn));
}

TEST_F(LaunchTest, SaysWhenItCannotBe)
{
    EXPECT_EQ(be_roster->Launch(static_cast<const char*>(nullptr)), B_BAD_VALUE);
    EXPECT_EQ(be_roster->Launch("no signature"), B_BAD_VALUE);
    EXPECT_EQ(be_roster->Launch("application/nothing"), B_LAUNCH_FAILED);
    EXPECT_EQ(be_roster->Launch("application/x-vnd.test-nowhere_to_be_found"), B_LAUNCH_FAILED);
    // A program that ends before it can be found.
    EXPECT_EQ(be_roster->Launch("application/x-vnd.test-true"), B_LAUNCH_FAILED);
}

TEST_F(LaunchTest, CanBeKilledWhileItWaits)
{
    // A program that neither ends nor can be found.
    const std::string folder = fRuntime.Path();
    std::ofstream(folder + "/sleeper") << "#!/bin/sh\necho $$ > " + folder +
                                              "/pid\nexec tail -f /dev/null --pid=${TEST_PROCESS% *}\n";
    chmod((folder + "/sleeper").c_str(), 0700);
    const std::string path = getenv("PATH");
    setenv("PATH", (folder + ":" + path).c_str(), 1);
    {
        KitThread thread([] {
            be_roster->Launch("application/x-vnd.test-sleeper");
            ADD_FAILURE() << "went on";
        });
        EXPECT_TRUE(test::Await([&folder] { return std::filesystem::exists(folder + "/pid"); }));
        KitThread second([] { be_roster->Launch("application/x-vnd.test-sleeper"); });
        EXPECT_TRUE(test::AwaitState(second.Id(), B_THREAD_ASLEEP));
        EXPECT_EQ(kill_thread(thread.Id()), B_OK);
        EXPECT_EQ(kill_thread(second.Id()), B_OK);
    }
    setenv("PATH", path.c_str(), 1);
    pid_t process = 0;
    EXPECT_TRUE(test::Await([&] { return (std::ifstream(folder + "/pid") >> process) && process > 0; }));
    kill(process, SIGKILL);
}

TEST_F(LaunchTest, TakesNoGrantThatIsNone)
{
    // The number of another file of this process, and nonsense.
    for (const char* text : {"0,1", "-1,-1", "1,0", "x", "", "99999,99998"}) {
        setenv("KITS_LAUNCH", text, 1);
        Partner partner(kSignature, "single");
        EXPECT_EQ(LogOf(partner.Application()), "ready ") << text;
        partner.Application().SendMessage(B_QUIT_REQUESTED);
        EXPECT_EQ(partner.Await(), 0);
    }
    unsetenv("KITS_LAUNCH");
}
