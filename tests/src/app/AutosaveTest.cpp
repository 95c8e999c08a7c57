// SPDX-License-Identifier: MIT
#include "src/prefs/store/Autosave.h"

#include "kits/application/EventLoop.h"
#include "kits/application/InterfaceLock.h"
#include "kits/application/MainThread.h"
#include "kits/interface/Screen.h"
#include "kits/support/TypeConstants.h"
#include "src/prefs/store/Preferences.h"
#include "src/sampling/Sysinfo.h"
#include "src/support/MessageCodes.h"
#include "tests/src/app/AppTest.h"
#include "tests/src/app/AppWindows.h"
#include "tests/support/Disks.h"
#include "tests/support/GuiTest.h"

#include <QGuiApplication>

#include <atomic>
#include <cerrno>
#include <thread>

namespace {

/// An autosave of the test's own: it looks on request.
class Looks {
public:
    explicit Looks(QelApp& app)
        : fApp(app)
        , fAutosave(
              {prefs_common, prefs_user}, [&app] { return app.StoreArrangement(); }, [](const StoreWriter&) {})
    {
    }

    /// Returns whether a look now archives the arrangement; archiving restores the missing fields of the store.
    bool Archives()
    {
        prefs_user->RemoveName("MainWindow");
        fAutosave.Look();
        return prefs_user->HasData("MainWindow", B_MESSAGE_TYPE);
    }
    void Save() { fAutosave.Save(); }
    /// Returns whether it is archived after this action was handled.
    bool ArchivesAfter(const std::function<void()>& action)
    {
        fAutosave.Save();
        // Otherwise a save that comes while a write is under way would be written after it, again and again.
        EXPECT_TRUE(test::WaitFor([this] { return fAutosave.HasWrittenAll(); }));
        fAutosave.Save();
        action();
        test::Turn();
        return Archives();
    }
    /// Returns whether at some time it is not archived after this action: something else may always come in between.
    bool SparesSometimes(const std::function<void()>& action)
    {
        return test::WaitFor([&] { return !ArchivesAfter(action); });
    }
    /// Returns whether it is archived after this action, and not after none.
    bool Notices(const std::function<void()>& action)
    {
        EXPECT_TRUE(SparesSometimes([] {}));
        return ArchivesAfter(action);
    }

    void PostSample() const
    {
        BMessage sample(MSG_SYSINFO_SAMPLE);
        sample.SetNewestWins(true);
        sample.AddPointer("Sysinfo*", fApp.Sampler());
        fApp.Window()->PostMessage(&sample, FirstChart(fApp));
    }
    void PostDelay(int64 delay) const
    {
        BMessage message(MSG_SET_DELAY);
        message.SetNewestWins(true);
        message.AddInt64("Delay", delay);
        fApp.PostMessage(&message);
    }

private:
    QelApp& fApp;
    Autosave fAutosave;
};

class AutosaveTest : public AppTest {
protected:
    /// Runs the application until the test is done with it, once there are samples.
    void Try(const std::function<void(QelApp&, Looks&)>& work)
    {
        Run({[](QelApp& app) {
                 Tabs(app)->Select(1);
                 test::Show(app.Window());
                 EXPECT_TRUE(test::WaitFor([&app] { return app.Sampler()->NewestNode() != nullptr; }));
             },
             [&work](QelApp& app) {
                 Looks looks(app);
                 work(app, looks);
             }});
    }
};

/// Fails everything while it is told to.
class Switch : public kits::FailingDevice {
public:
    int Before(kits::FileAction&) override { return fFails ? EIO : 0; }
    std::atomic<bool> fFails = false;
};

} // namespace

TEST_F(AutosaveTest, TheFirstLookArchives)
{
    Try([](QelApp&, Looks& looks) { EXPECT_TRUE(looks.Archives()); });
}

TEST_F(AutosaveTest, NothingIsArchivedAfterSamplesAlone)
{
    Try([](QelApp&, Looks& looks) {
        EXPECT_TRUE(looks.SparesSometimes([&] { looks.PostSample(); }));
        EXPECT_TRUE(looks.SparesSometimes([&] {
            for (int i = 0; i < 3; i++) {
                looks.PostSample();
                kits::EventLoop::RunDue();
            }
        }));
    });
}

TEST_F(AutosaveTest, MessagesThatChangeTheSamplerAreNoticed)
{
    Try([](QelApp& app, Looks& looks) {
        EXPECT_TRUE(looks.Notices([&] { looks.PostDelay(300'000); }));
        EXPECT_TRUE(looks.Notices([&] {
            looks.PostSample();
            looks.PostDelay(400'000);
            looks.PostSample();
        }));
        EXPECT_TRUE(looks.Notices([&] {
            BMessage message(MSG_SET_NODES_TO_KEEP);
            message.AddInt16("NodesToKeep", 33);
            app.PostMessage(&message);
        }));
    });
}

TEST_F(AutosaveTest, ActionsOfTheMainThreadAreNoticed)
{
    Try([](QelApp& app, Looks& looks) {
        EXPECT_TRUE(looks.Notices([&] { kits::RunOnMainThread([&] { app.Window()->MoveTo(33, 44); }); }));
    });
}

TEST_F(AutosaveTest, WhatTheUserArrangesIsNoticed)
{
    Try([](QelApp& app, Looks& looks) {
        EXPECT_TRUE(looks.Notices([&] { Tabs(app)->Select(0); }));
        EXPECT_TRUE(looks.Notices([&] { Tabs(app)->Select(1); }));
        EXPECT_TRUE(looks.Notices([&] { app.Window()->ResizeTo(345, 234); }));
        EXPECT_TRUE(looks.Notices([&] { Charts(app).AddChartView(new ChartView); }));
        EXPECT_TRUE(looks.Notices([&] {
            ChartView* const last = Charts(app).ChartAt(Charts(app).CountCharts() - 1);
            Charts(app).RemoveChartView(last);
            delete last;
        }));
        // By the keyboard: the title is chosen, and moves.
        FirstChart(app)->MakeFocus();
        EXPECT_TRUE(looks.Notices([&] {
            test::Key(app.Window(), B_ENTER);
            test::Key(app.Window(), B_RIGHT_ARROW);
        }));
        EXPECT_TRUE(looks.Notices([&] { FirstChart(app)->SetTitle("another"); }));
    });
}

TEST_F(AutosaveTest, OtherThreadsAreNoticed)
{
    Try([](QelApp& app, Looks& looks) {
        EXPECT_TRUE(looks.Notices([&] {
            const int32 depth = kits::InterfaceLock::Get().ReleaseAll();
            std::thread([&] {
                const kits::InterfaceLocker locker;
                app.Window()->ResizeTo(300, 200);
            }).join();
            kits::InterfaceLock::Get().Restore(depth);
        }));
    });
}

TEST_F(AutosaveTest, ASampleThatBringsAnotherColourIsNoticed)
{
    if (QGuiApplication::platformName() != "offscreen")
        GTEST_SKIP() << "nobody's desktop is painted by a test";
    Try([](QelApp& app, Looks& looks) {
        ChartView& chart = *FirstChart(app);
        chart.SetLockBgColor(true);
        const rgb_color color = make_color(1, 2, 3);
        EXPECT_TRUE(looks.Notices([&] {
            BScreen().SetDesktopColor(color, false);
            looks.PostSample();
        }));
        EXPECT_EQ(chart.Picture().LowColor(), color);
    });
}

TEST_F(AutosaveTest, IsTriedAgainUntilItIsOnTheDisk)
{
    Try([](QelApp&, Looks& looks) {
        EXPECT_TRUE(looks.SparesSometimes([] {}));
        Switch disk;
        const WithDisk with(disk);
        disk.fFails = true;
        prefs_user->AddBool("Another", true);
        looks.Save();
        for (int i = 0; i < 20; i++)
            EXPECT_TRUE(looks.Archives());
        disk.fFails = false;
        EXPECT_TRUE(looks.Archives());
        EXPECT_TRUE(looks.SparesSometimes([] {}));
        const Preferences stored("application/x-vnd.kvt-Qel", false, true);
        EXPECT_TRUE(stored.HasData("Another", B_BOOL_TYPE));
    });
}
