// SPDX-License-Identifier: MIT
#include "src/app/CommandLine.h"
#include "src/app/QelApp.h"
#include "src/app/ReadCommand.h"
#include "src/app/Snapshot.h"
#include "src/app/Startup.h"
#include "src/app/Stores.h"
#include "src/app/TellCommand.h"
#include "src/prefs/StoreAlerts.h"
#include "src/support/Qel.h"
#include "src/support/ui/ProgramStart.h"

#include <cstdio>
#include <memory>
#include <string>

namespace {

int RunSession()
{
    auto app = std::make_unique<QelApp>();
    if (app->InitCheck() == B_ALREADY_RUNNING || app->InitCheck() == B_TIMED_OUT) {
        // This start has done its job once the other program has come to the front.
        return EndSecondStart("qel", *app);
    }
    CanReachOthers("qel", signature);
    Stores stores(Stores::Mode::kSession);
    if (!AskAboutUnreadStores(stores.All()) || !AskAboutVersion(prefs_user))
        return 0;
    LoadDefaults(prefs_user);
    app->Run();
    app.reset();
    return stores.Save() == B_OK ? 0 : 1;
}

int RunSnapshot(const CommandLine& line)
{
    SnapshotApp app(line.snapshotFile, line.snapshotAfter);
    Stores stores(Stores::Mode::kReadOnly);
    LoadDefaults(prefs_user);
    app.Run();
    return app.ExitStatus();
}

} // namespace

int main(int argc, char** argv)
{
    const CommandLine line = ParseCommandLine(argc, argv);
    if (!line.error.empty()) {
        std::fprintf(stderr, "qel: %s (see --help)\n", line.error.c_str());
        return 2;
    }
    switch (line.action) {
    case CommandLine::Action::kHelp:
        return PrintText("qel", HelpText());
    case CommandLine::Action::kVersion:
        return PrintText("qel", ("qel " + std::string(kVersion) + "\n").c_str());
    case CommandLine::Action::kRead:
        return HasMachineToRead("qel") ? RunReadCommand(line) : 1;
    case CommandLine::Action::kTell:
        return RunTellCommand(line);
    case CommandLine::Action::kSnapshot:
        return RunWithDisplay("qel", argv, [&line] { return RunSnapshot(line); });
    case CommandLine::Action::kOpenWindow:
        break;
    }
    return RunWithDisplay("qel", argv, RunSession);
}
