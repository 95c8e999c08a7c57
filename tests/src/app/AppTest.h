// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Message.h"
#include "kits/application/Timer.h"
#include "src/app/QelApp.h"
#include "src/app/Stores.h"
#include "tests/support/TempFolder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <memory>
#include <vector>

/// A whole application with stores of the test's own.
class AppTest : public testing::Test {
protected:
    using Step = std::function<void(QelApp&)>;

    void SetUp() override
    {
        setenv("XDG_CONFIG_HOME", fConfig.Path().c_str(), 1);
        // The test finds no other running application, and none finds the test's.
        setenv("XDG_RUNTIME_DIR", fRuntime.Path().c_str(), 1);
        fFolder = std::filesystem::current_path();
    }

    void TearDown() override { std::filesystem::current_path(fFolder); }

    /// Makes the application and the stores, but does not run it.
    QelApp& Make(QelApp::Mode mode = QelApp::Mode::kSession)
    {
        fMode = mode;
        fApp = std::make_unique<RunningApp>(mode, this);
        fStores =
            std::make_unique<Stores>(mode == QelApp::Mode::kSession ? Stores::Mode::kSession : Stores::Mode::kReadOnly);
        return *fApp;
    }

    /// Runs the application. Once it is ready, calls each step in a turn of the loop of its own; then quits.
    void Run(std::vector<Step> steps)
    {
        if (fApp == nullptr)
            Make();
        fSteps = std::move(steps);
        fNextStep = 0;
        fAwaited = nullptr;
        fApp->Run();
        fTimer.Stop();
    }

    /// Called by a step: the next step waits until this holds. It waits in the outermost loop, so windows can go.
    void Await(std::function<bool()> condition)
    {
        fAwaited = std::move(condition);
        fAwaitedUntil = std::chrono::steady_clock::now() + std::chrono::minutes(1);
    }

    /// Does what `main` does after the run.
    /// @return the error of saving
    status_t Finish()
    {
        fApp.reset();
        const status_t status = fMode == QelApp::Mode::kSession && fStores ? fStores->Save() : B_OK;
        fStores.reset();
        return status;
    }

    TempFolder fConfig;
    TempFolder fRuntime;
    std::unique_ptr<Stores> fStores;
    std::vector<uint32> fReceived; // the codes of the application's messages

private:
    class RunningApp : public QelApp {
    public:
        RunningApp(Mode mode, AppTest* test)
            : QelApp(mode)
            , fTest(test)
        {
        }
        void ReadyToRun() override
        {
            QelApp::ReadyToRun();
            fTest->fTimer.Start(2000);
        }
        void MessageReceived(BMessage* message) override
        {
            fTest->fReceived.push_back(message->what);
            QelApp::MessageReceived(message);
        }

    private:
        AppTest* fTest;
    };

    void NextStep()
    {
        const bool isLate = fAwaited && std::chrono::steady_clock::now() > fAwaitedUntil;
        EXPECT_FALSE(isLate) << "what step " << fNextStep << " awaits has not come within a minute";
        if (fAwaited && !isLate && !fAwaited())
            return;
        fAwaited = nullptr;
        if (fNextStep < fSteps.size() && !isLate) {
            fSteps[fNextStep++](*fApp);
        } else {
            fTimer.Stop();
            fApp->PostMessage(B_QUIT_REQUESTED);
        }
    }

    QelApp::Mode fMode = QelApp::Mode::kSession;
    std::filesystem::path fFolder;
    std::unique_ptr<RunningApp> fApp;
    std::vector<Step> fSteps;
    size_t fNextStep = 0;
    std::function<bool()> fAwaited;
    std::chrono::steady_clock::time_point fAwaitedUntil;
    kits::Timer fTimer{[this] { NextStep(); }};
};
