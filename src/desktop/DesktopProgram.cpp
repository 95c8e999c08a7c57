#include "src/desktop/DesktopProgram.h"

#include <cstdio>
#include <cstring>
#include <memory>

#include "kits/interface/InterfaceKit.h"
#include "kits/kernel/Errors.h"
#include "src/desktop/DesktopApp.h"
#include "src/support/Qel.h"

namespace {

constexpr const char* kHelp =
    "qel-desktop shows the charts that were dragged out of Qel's window on the desktop. Qel and the\n"
    "session start it; it ends when there are no charts to show.\n"
    "\n"
    "    qel-desktop                  shows them\n"
    "    qel-desktop --help, --version\n";

int Run()
{
    status_t status = B_OK;
    auto app = std::make_unique<DesktopApp>(&status);
    if (status == B_ALREADY_RUNNING)
        return 0;
    app->Restore();
    app->Run();
    status = app->Drain();
    if (status != B_OK)
        std::fprintf(stderr, "qel-desktop: the charts could not be saved: %s\n", kits::StatusText(status));
    return status == B_OK ? 0 : 1;
}

} // namespace

int RunDesktopProgram(int argc, char** argv)
{
    if (argc > 1) {
        if (argc == 2 && std::strcmp(argv[1], "--help") == 0)
            return std::fputs(kHelp, stdout) == EOF ? 1 : 0;
        if (argc == 2 && std::strcmp(argv[1], "--version") == 0)
            return std::printf("qel-desktop %s\n", kVersion) < 0 ? 1 : 0;
        std::fprintf(stderr, "qel-desktop: unknown option %s (see --help)\n", argv[1]);
        return 2;
    }
    // Only there can windows stand on the desktop.
    kits::PreferX11();
    int count = 1;
    if (kits::InitInterface(count, argv) != B_OK) {
        std::fprintf(stderr, "qel-desktop: %s\n", kits::InterfaceError());
        return 1;
    }
    kits::SetDesktopEntry(kDesktopEntry);
    const int status = Run();
    kits::ExitInterface();
    return status;
}
