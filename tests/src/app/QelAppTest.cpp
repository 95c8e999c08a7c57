// SPDX-License-Identifier: MIT
#include "src/app/QelApp.h"

#include "kits/application/Message.h"
#include "kits/application/Messenger.h"
#include "kits/application/Roster.h"
#include "kits/interface/TabView.h"
#include "kits/support/TypeConstants.h"
#include "src/app/MainWindow.h"
#include "src/prefs/store/Preferences.h"
#include "src/sampling/Sysinfo.h"
#include "src/support/MessageCodes.h"
#include "src/support/Qel.h"
#include "tests/src/app/AppTest.h"
#include "tests/support/GuiTest.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <thread>

namespace {

class QelAppTest : public AppTest {};

BMessage WithNodes(int16 nodes)
{
    BMessage message(MSG_SET_NODES_TO_KEEP);
    message.AddInt16("NodesToKeep", nodes);
    return message;
}

BMessage WithDelay(int64 delay)
{
    BMessage message(MSG_SET_DELAY);
    message.AddInt64("Delay", delay);
    return message;
}

int32 CountPages(const BWindow& window)
{
    for (int32 i = 0; i < window.CountChildren(); ++i)
        if (const auto* tabs = dynamic_cast<BTabView*>(window.ChildAt(i)))
            return tabs->CountTabs();
    return 0;
}

BRect StoredFrame()
{
    BMessage window;
    BRect frame;
    EXPECT_EQ(prefs_user->FindMessage("MainWindow", &window), B_OK);
    EXPECT_EQ(window.FindRect("_frame", &frame), B_OK);
    return frame;
}

} // namespace

TEST_F(QelAppTest, WorksInTheFolderOfTheExecutable)
{
    Make();
    EXPECT_EQ(std::filesystem::current_path(), std::filesystem::canonical("/proc/self/exe").parent_path());
}

TEST_F(QelAppTest, OpensTheFirstWindow)
{
    Run({[](QelApp& app) {
        ASSERT_NE(app.Window(), nullptr);
        EXPECT_EQ(app.Window()->Frame(), BRect(50, 50, 400, 200));
        EXPECT_FALSE(app.Window()->IsHidden());
        EXPECT_FALSE(app.Window()->IsMinimized());
        EXPECT_NE(application_sampler, nullptr);
        EXPECT_EQ(app.Sampler(), application_sampler);
        EXPECT_EQ(app.Sampler()->NodesToKeep(), 10);
        EXPECT_EQ(app.PulseRate(), 600'000'000);
    }});
    EXPECT_EQ(application_sampler, nullptr);
}

TEST_F(QelAppTest, StartsMinimisedForAReplicant)
{
    QelApp& made = Make();
    made.AddLaunchMessage(std::make_unique<BMessage>(MSG_LAUNCHED_BY_REPLICANT));
    prefs_user->Set(kWindowOpenField, true);
    Run({[](QelApp& app) { EXPECT_TRUE(app.Window()->IsMinimized()); }});
    EXPECT_EQ(std::count(fReceived.begin(), fReceived.end(), MSG_CW_OPEN), 0);
}

TEST_F(QelAppTest, ComesToTheFrontWhenItIsStartedAgain)
{
    QelApp& made = Make();
    EXPECT_EQ(made.InitCheck(), B_OK);
    made.AddLaunchMessage(std::make_unique<BMessage>(MSG_LAUNCHED_BY_REPLICANT));
    Run({[this](QelApp& app) {
             ASSERT_TRUE(app.Window()->IsMinimized());
             app.PostMessage(B_SILENT_RELAUNCH);
             Await([&app] { return !app.Window()->IsMinimized(); });
         },
         [](QelApp& app) { EXPECT_TRUE(app.Window()->IsActive()); }});
}

TEST_F(QelAppTest, IsFoundByOthersWhileItIsASession)
{
    Make();
    EXPECT_TRUE(be_roster->IsRunning(signature));
    Finish();
    EXPECT_FALSE(be_roster->IsRunning(signature));
    Make(QelApp::Mode::kPicture);
    EXPECT_FALSE(be_roster->IsRunning(signature));
}

TEST_F(QelAppTest, RunsWhereOthersCannotReachIt)
{
    // The program does not use a folder that somebody else could have put there.
    std::filesystem::create_symlink("/tmp", fRuntime.Path("kits"));
    Run({[](QelApp& app) {
        EXPECT_EQ(app.InitCheck(), B_OK);
        EXPECT_FALSE(be_roster->IsRunning(signature));
        EXPECT_NE(app.Window(), nullptr);
    }});
}

TEST_F(QelAppTest, SendsItselfTheStoredWishAndDoesNothingWithIt)
{
    for (const bool stored : {true, false}) {
        Make();
        prefs_user->Set(kWindowOpenField, stored);
        Run({[](QelApp& app) { EXPECT_FALSE(app.Window()->IsMinimized()); }});
        EXPECT_EQ(std::count(fReceived.begin(), fReceived.end(), MSG_CW_OPEN), stored ? 1 : 0);
        fReceived.clear();
        Finish();
    }
}

TEST_F(QelAppTest, ChangesTheDelay)
{
    Run({[](QelApp& app) {
        BMessage message = WithDelay(50'000);
        app.MessageReceived(&message);
        EXPECT_EQ(app.Sampler()->SamplingDelay(), 50'000);
        BMessage empty(MSG_SET_DELAY);
        app.MessageReceived(&empty);
        EXPECT_EQ(app.Sampler()->SamplingDelay(), 50'000);
        for (int64 delay : {int64{0}, int64{-5}, INT64_MAX, INT64_MIN}) {
            message = WithDelay(delay);
            app.MessageReceived(&message);
            EXPECT_GE(app.Sampler()->SamplingDelay(), Sysinfo::kMinDelay);
            EXPECT_LE(app.Sampler()->SamplingDelay(), Sysinfo::kMaxDelay);
        }
    }});
}

TEST_F(QelAppTest, ChangesTheHistoryToAtLeastTwo)
{
    Run({[](QelApp& app) {
        for (int16 nodes : {0, 1, -1, INT16_MIN}) {
            BMessage message = WithNodes(nodes);
            app.MessageReceived(&message);
            EXPECT_EQ(app.Sampler()->NodesToKeep(), 10) << nodes;
        }
        BMessage empty(MSG_SET_NODES_TO_KEEP);
        app.MessageReceived(&empty);
        EXPECT_EQ(app.Sampler()->NodesToKeep(), 10);
        BMessage message = WithNodes(2);
        app.MessageReceived(&message);
        EXPECT_EQ(app.Sampler()->NodesToKeep(), 2);
        message = WithNodes(32767);
        app.MessageReceived(&message);
        EXPECT_EQ(app.Sampler()->NodesToKeep(), Sysinfo::kMaxNodesToKeep);
    }});
}

TEST_F(QelAppTest, AnswersRequestsForSamples)
{
    Run({[](QelApp& app) {
        Sysinfo* const sampler = app.Sampler();
        const BMessenger me(&app);
        const int32 before = sampler->CountMessengers();
        std::atomic<bool> done = false;
        std::thread asker([&] {
            BMessage reply;
            BMessage request(MSG_CONNECT);
            EXPECT_EQ(me.SendMessage(&request, &reply), B_OK);
            EXPECT_EQ(reply.what, 0xffffffffu);
            EXPECT_EQ(sampler->CountMessengers(), before);

            request.AddMessenger("Messenger", me);
            EXPECT_EQ(me.SendMessage(&request, &reply), B_OK);
            EXPECT_EQ(reply.what, 0u);
            EXPECT_TRUE(reply.IsEmpty());
            EXPECT_EQ(sampler->CountMessengers(), before + 1);

            request.what = MSG_DISCONNECT;
            EXPECT_EQ(me.SendMessage(&request, &reply), B_OK);
            EXPECT_EQ(reply.what, 0u);
            EXPECT_EQ(sampler->CountMessengers(), before);
            done = true;
        });
        EXPECT_TRUE(test::WaitFor([&] { return done.load(); }));
        asker.join();
    }});
}

TEST_F(QelAppTest, IgnoresOtherMessages)
{
    Run({[](QelApp& app) {
        BMessage before;
        EXPECT_EQ(app.Sampler()->SavePrefsTo(&before), B_OK);
        const int32 receivers = app.Sampler()->CountMessengers();
        for (uint32 what = MSG_SYSINFO_SAMPLE; what <= MSG_REMOVE_SOURCE + 1; ++what) {
            if (what != MSG_LAUNCHED_BY_REPLICANT) {
                BMessage message(what);
                app.MessageReceived(&message);
            }
        }
        BMessage closed(MSG_WINDOW_CLOSED);
        closed.AddPointer("Container", &app);
        app.MessageReceived(&closed);
        EXPECT_EQ(app.Sampler()->CountMessengers(), receivers);
        BMessage after;
        EXPECT_EQ(app.Sampler()->SavePrefsTo(&after), B_OK);
        EXPECT_TRUE(after.HasSameData(before));
        EXPECT_NE(app.Window(), nullptr);
    }});
}

TEST_F(QelAppTest, QuitsWithItsWindowAndRemembersIt)
{
    Run({[this](QelApp& app) {
        app.Window()->MoveTo(70, 80);
        app.Window()->PostMessage(B_QUIT_REQUESTED);
        Await([] { return false; }); // it quits without being asked to
    }});
    Finish();
    Make();
    EXPECT_EQ(StoredFrame(), BRect(70, 80, 420, 230));
    Run({[](QelApp& app) { EXPECT_EQ(app.Window()->Frame().LeftTop(), BPoint(70, 80)); }});
}

TEST_F(QelAppTest, RemembersAWindowThatClosesWhileItQuits)
{
    Run({[](QelApp& app) {
        app.Window()->MoveTo(70, 80);
        app.Window()->PostMessage(B_QUIT_REQUESTED);
        app.PostMessage(B_QUIT_REQUESTED);
    }});
    Finish();
    Make();
    EXPECT_EQ(StoredFrame(), BRect(70, 80, 420, 230));
}

TEST_F(QelAppTest, RemembersAWindowThatClosesWhileItIsAskedToQuitAgainAndAgain)
{
    Run({[](QelApp& app) {
        app.Window()->MoveTo(70, 80);
        app.Window()->PostMessage(B_QUIT_REQUESTED);
        for (int i = 0; i < 3; i++)
            app.PostMessage(B_QUIT_REQUESTED);
    }});
    Finish();
    Make();
    EXPECT_EQ(StoredFrame(), BRect(70, 80, 420, 230));
}

TEST_F(QelAppTest, OpensItsPreferencesOnce)
{
    Run({[this](QelApp& app) {
             app.PostMessage(MSG_OPEN_GLOBAL_PREFS);
             Await([&] { return app.PreferencesWindow() != nullptr; });
         },
         [](QelApp& app) {
             const SmartWindow* const window = app.PreferencesWindow();
             EXPECT_STREQ(window->Title(), "Global preferences");
             EXPECT_EQ(window->Frame().LeftTop(), BPoint(50, 50));
             EXPECT_FALSE(window->IsHidden());
             EXPECT_EQ(CountPages(*window), 1);
             BMessage open(MSG_OPEN_GLOBAL_PREFS);
             app.MessageReceived(&open);
             EXPECT_EQ(app.PreferencesWindow(), window);
             EXPECT_EQ(CountPages(*window), 1);
         }});
}

TEST_F(QelAppTest, GoesOnWithoutItsPreferencesAndRemembersThem)
{
    auto open = [this](QelApp& app) {
        app.PostMessage(MSG_OPEN_GLOBAL_PREFS);
        Await([&] { return app.PreferencesWindow() != nullptr; });
    };
    auto close = [this](QelApp& app) {
        app.PreferencesWindow()->MoveTo(123, 99);
        app.PreferencesWindow()->PostMessage(B_QUIT_REQUESTED);
        Await([&] { return app.PreferencesWindow() == nullptr && app.CountMessages() == 0; });
    };
    auto check = [](QelApp& app) {
        EXPECT_NE(app.Window(), nullptr);
        ASSERT_NE(app.PreferencesWindow(), nullptr);
        EXPECT_EQ(app.PreferencesWindow()->Frame().LeftTop(), BPoint(123, 99));
    };
    Run({open, close, open, check, close});
    Finish();
    Make();
    EXPECT_TRUE(prefs_user->HasData("GlobalPrefsWindow", B_MESSAGE_TYPE));
    Run({open, check});
}

TEST_F(QelAppTest, RemembersAnOpenWindowWhenItQuits)
{
    Run({[](QelApp& app) { app.Window()->MoveTo(90, 60); }});
    Finish();
    Make();
    EXPECT_EQ(StoredFrame().LeftTop(), BPoint(90, 60));
    const char* version = nullptr;
    EXPECT_EQ(prefs_user->FindString("Version", &version), B_OK);
    EXPECT_STREQ(version, "0.3.0");
    EXPECT_TRUE(prefs_user->HasData("Sysinfo", B_MESSAGE_TYPE));
    EXPECT_FALSE(prefs_user->HasData("GlobalPrefsWindow", B_MESSAGE_TYPE));
}

TEST_F(QelAppTest, ReplacesWhatItRememberedOfItsWindow)
{
    Run({});
    Finish();
    Run({[](QelApp& app) { app.Window()->MoveTo(10, 20); }});
    Finish();
    Make();
    BMessage window;
    ASSERT_EQ(prefs_user->FindMessage("MainWindow", &window), B_OK);
    type_code type = 0;
    int32 count = 0;
    for (const char* name : {"_frame", "ChartViewHolder", "WindowFrame", "Selection"}) {
        EXPECT_EQ(window.GetInfo(name, &type, &count), B_OK) << name;
        EXPECT_EQ(count, 1) << name;
    }
}

TEST_F(QelAppTest, StoresWhatWasArrangedWhileItRuns)
{
    Run({[](QelApp& app) {
             app.Window()->MoveTo(33, 44);
             app.Pulse();
         },
         [this](QelApp&) {
             // A worker writes it; a second reader sees it once it is there.
             EXPECT_TRUE(test::WaitFor([] {
                 const Preferences stored("application/x-vnd.kvt-Qel", false, true);
                 BMessage window;
                 BRect frame;
                 return stored.FindMessage("MainWindow", &window) == B_OK &&
                        window.FindRect("_frame", &frame) == B_OK && frame.LeftTop() == BPoint(33, 44) &&
                        stored.HasData("Version", B_STRING_TYPE) && stored.HasData("Sysinfo", B_MESSAGE_TYPE);
             }));
         }});
}

TEST_F(QelAppTest, ForAPictureWritesNothing)
{
    Make(QelApp::Mode::kPicture);
    Run({[](QelApp& app) { app.Pulse(); }});
    Finish();
    EXPECT_TRUE(fConfig.Names().empty());
}
