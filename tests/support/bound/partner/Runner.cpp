// SPDX-License-Identifier: MIT
// A test that runs until it is killed.
//
//   bound_runner           starts each kind of process that tests start; they start others
//   bound_runner partner [MORE]
//                          a program that tests start; it starts one more of its kind for each further argument
//
// Each of these processes prints its id on stdout, in a line, when it is ready.

#include "kits/application/teams/DetachedProcess.h"
#include "kits/kernel/Errors.h"
#include "tests/support/BoundProcess.h"

#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

namespace {

[[noreturn]] void TellAndStay()
{
    std::printf("%d\n", getpid());
    std::fflush(stdout);
    for (;;)
        pause();
}

std::string ThisProgram()
{
    return std::filesystem::read_symlink("/proc/self/exe");
}

} // namespace

int main(int argc, char**)
{
    if (argc > 1) {
        test::EndWithTest();
        if (argc > 2 && kits::StartDetached({ThisProgram(), "partner"}) != B_OK)
            return 1;
        TellAndStay();
    }
    test::NameTest();
    if (test::ForkBound() == 0)
        TellAndStay();
    if (test::ForkBound() == 0) {
        const std::string program = ThisProgram();
        execl(program.c_str(), program.c_str(), "partner", nullptr);
        _exit(1);
    }
    if (kits::StartDetached({ThisProgram(), "partner", "more"}) != B_OK)
        return 1;
    TellAndStay();
}
