// SPDX-License-Identifier: MIT
#include "kits/interface/InterfaceKit.h"
#include "src/desktop/DesktopApp.h"
#include "src/prefs/StoreAlerts.h"
#include "src/support/OneLine.h"
#include "src/support/Qel.h"
#include "src/support/ui/ProgramStart.h"

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
        return EndSecondStart("qel-desktop", *app);
    CanReachOthers("qel-desktop", kDesktopSignature);
    if (!AskAboutUnreadStores({app->Store()}))
        return 0;
    app->Restore();
    app->Run();
    return app->Drain() == B_OK ? 0 : 1;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc > 1) {
        if (argc == 2 && std::strcmp(argv[1], "--help") == 0)
            return PrintText("qel-desktop", kHelp);
        if (argc == 2 && std::strcmp(argv[1], "--version") == 0)
            return PrintText("qel-desktop", ("qel-desktop " + std::string(kVersion) + "\n").c_str());
        std::fprintf(stderr, "qel-desktop: unknown option '%s' (see --help)\n", OneLine(argv[1]).c_str());
        return 2;
    }
    // Only an X server lets windows stand on the desktop.
    kits::PreferX11();
    // This checks the machine too: the list of sources names its processors.
    return RunWithDisplay("qel-desktop", argv, Run);
}
