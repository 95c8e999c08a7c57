// SPDX-License-Identifier: MIT
#include "src/support/ui/ProgramStart.h"

#include "kits/application/Application.h"
#include "kits/application/Roster.h"
#include "kits/interface/InterfaceKit.h"
#include "kits/interface/Shortcuts.h"
#include "kits/kernel/SystemInfo.h"
#include "src/support/OneLine.h"
#include "src/support/Qel.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

bool HasMachineToRead(const char* program)
{
    std::string missing;
    const status_t status = kits::CheckSystem(&missing);
    if (status == B_OK)
        return true;
    std::fprintf(stderr, "%s: cannot read the machine in KITS_ROOT: %s: %s\n", program, OneLine(missing).c_str(),
                 kits::StatusText(status));
    return false;
}

int RunWithDisplay(const char* program, char** argv, const std::function<int()>& run)
{
    if (!HasMachineToRead(program))
        return 1;
    // The toolkit takes arguments of its own from those it is given; ours are not for it.
    int count = 1;
    if (kits::InitInterface(count, argv) != B_OK) {
        std::fprintf(stderr, "%s: %s\n", program, OneLine(kits::InterfaceError()).c_str());
        return 1;
    }
    kits::UseShortcuts();
    kits::SetDesktopEntry(kDesktopEntry, kProgramName);
    const int status = run();
    kits::ExitInterface();
    return status;
}

bool CanReachOthers(const char* program, const char* started)
{
    const app_obstacle obstacle = be_roster->FindObstacle(started);
    if (obstacle.text.empty())
        return true;
    std::fprintf(stderr, "%s: %s, so %s\n", program, OneLine(obstacle.text).c_str(),
                 obstacle.isToStartsOnly ? "no other program can start this one, and two starts at once may both run"
                                         : "charts on the desktop show nothing, and commands like qel --quit find no "
                                           "running program");
    return obstacle.isToStartsOnly;
}

int EndSecondStart(const char* program, const BApplication& application)
{
    if (application.InitCheck() == B_TIMED_OUT) {
        std::fprintf(stderr, "%s: the running program does not answer\n", program);
        return 1;
    }
    if (!application.OtherDisplay().empty()) {
        std::fprintf(stderr, "%s: it runs already, on display %s: there is one for each user\n", program,
                     application.OtherDisplay().c_str());
        return 1;
    }
    return 0;
}

int PrintText(const char* program, const char* text)
{
    if (std::fputs(text, stdout) != EOF && std::fflush(stdout) != EOF)
        return 0;
    std::fprintf(stderr, "%s: cannot write: %s\n", program, std::strerror(errno));
    return 1;
}
