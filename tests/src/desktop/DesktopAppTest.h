// SPDX-License-Identifier: MIT
#pragma once

#include "src/chart/ChartView.h"
#include "src/desktop/DesktopApp.h"
#include "src/support/MessageCodes.h"
#include "tests/support/GuiTest.h"
#include "tests/support/TempFolder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>

/// The program, with stores of the test's own, and with no application that could be found or started.
class DesktopAppTest : public testing::Test {
protected:
    DesktopAppTest()
    {
        setenv("XDG_CONFIG_HOME", fConfig.Path().c_str(), 1);
        setenv("XDG_RUNTIME_DIR", fRuntime.Path().c_str(), 1);
        setenv("PATH", fRuntime.Path().c_str(), 1);
    }

    static BMessage Archive(float width = 200, float height = 80)
    {
        ChartView chart;
        chart.SetTitle("stands there");
        chart.ResizeTo(width, height);
        BMessage archive;
        chart.Archive(&archive, false);
        return archive;
    }

    static BMessage Request(const BMessage& archive, BPoint where = BPoint(100, 120))
    {
        BMessage request(MSG_SHOW_ON_DESKTOP);
        request.AddMessage("Archive", &archive);
        request.AddPoint("Where", where);
        return request;
    }

    /// Starts the program, calls this function once it is ready, and, when the condition holds (or else at once), ends
    /// it as the end of a session does.
    void Run(const std::function<void(DesktopApp&)>& act, const std::vector<BMessage>& dropped = {},
             const std::function<bool(DesktopApp&)>& until = nullptr)
    {
        status_t status = B_ERROR;
        auto app = std::make_unique<DesktopApp>(&status);
        ASSERT_EQ(status, B_OK);
        app->Restore();
        for (const BMessage& request : dropped)
            app->AddLaunchMessage(std::make_unique<BMessage>(request));
        constexpr int kMostTurns = 2000;
        int turn = 0;
        bool isOver = false;
        kits::Timer timer([&] {
            // A turn may still come while the request to quit waits, or while windows are being destroyed.
            if (isOver)
                return;
            if (turn++ == 0 && act) {
                act(*app);
                return;
            }
            isOver = !until || until(*app) || turn == kMostTurns;
            if (isOver)
                app->PostMessage(B_QUIT_REQUESTED);
        });
        timer.Start(5000);
        app->Run();
        timer.Stop();
        EXPECT_EQ(app->Drain(), B_OK);
    }

    size_t Shown(const std::vector<BMessage>& dropped)
    {
        size_t count = 0;
        Run([&](DesktopApp& app) { count = app.CountReplicants(); }, dropped);
        return count;
    }

    TempFolder fConfig;
    TempFolder fRuntime;
};
