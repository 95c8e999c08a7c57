// SPDX-License-Identifier: MIT
#include "src/support/SecondStart.h"

#include "kits/application/Application.h"

#include <cstdio>

int EndSecondStart(const BApplication& application, const char* program)
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
