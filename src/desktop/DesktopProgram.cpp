// SPDX-License-Identifier: MIT
#include "src/desktop/DesktopProgram.h"

#include "kits/interface/InterfaceKit.h"
#include "kits/interface/Shortcuts.h"
#include "kits/kernel/Errors.h"
#include "src/desktop/DesktopApp.h"
#include "src/prefs/StoreAlerts.h"
#include "src/support/MachineCheck.h"
#include "src/support/OneLine.h"
#include "src/support/PrintText.h"
#include "src/support/Qel.h"
#include "src/support/ReachCheck.h"
#include "src/support/SecondStart.h"

#include <cstdio>
#include <cstring>
#include <memory>
#include <string>

namespace {

constexpr const char* kHelp = "Usage: qel-desktop [OPTION]\n"
                              "Shows the charts that were dragged out of Qel's window on the desktop. Qel and the\n"
                              "session start it; it ends when there are no charts to show.\n"
                              "\n"
                              "  --help               print this and quit\n"
                              "  --version            print the version and quit\n"
                              "\n"
                              "Exit status: 0 when all went well, 1 when something failed (no display, charts that\n"
                              "cannot be saved), 2 when an option is wrong.\n";

int Run()
{
    status_t status = B_OK;
    auto app = std::make_unique<DesktopApp>(&status);
    if (status == B_ALREADY_RUNNING || status == B_TIMED_OUT)
        return EndSecondStart(*app, "qel-desktop");
    CanReachOthers("qel-desktop", kDesktopSignature);
    if (!AskAboutUnreadStores({app->Store()}))
        return 0;
    app->Restore();
    app->Run();
    return app->Drain() == B_OK ? 0 : 1;
}

} // namespace

int RunDesktopProgram(int argc, char** argv)
{
    if (argc > 1) {
        if (argc == 2 && std::strcmp(argv[1], "--help") == 0)
            return PrintText("qel-desktop", kHelp);
        if (argc == 2 && std::strcmp(argv[1], "--version") == 0)
            return PrintText("qel-desktop", ("qel-desktop " + std::string(kVersion) + "\n").c_str());
        std::fprintf(stderr, "qel-desktop: unknown option '%s' (see --help)\n", OneLine(argv[1]).c_str());
        return 2;
    }
    // The list of sources names the processors of this machine.
    if (!HasMachineToRead("qel-desktop"))
        return 1;
    // Only there windows can stand on the desktop.
    kits::PreferX11();
    int count = 1;
    if (kits::InitInterface(count, argv) != B_OK) {
        std::fprintf(stderr, "qel-desktop: %s\n", OneLine(kits::InterfaceError()).c_str());
        return 1;
    }
    kits::UseShortcuts();
    kits::SetDesktopEntry(kDesktopEntry, kProgramName);
    const int status = Run();
    kits::ExitInterface();
    return status;
}
