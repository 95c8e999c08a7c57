// SPDX-License-Identifier: MIT
#include "src/support/PrintText.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

int PrintText(const char* program, const char* text)
{
    if (std::fputs(text, stdout) != EOF && std::fflush(stdout) != EOF)
        return 0;
    std::fprintf(stderr, "%s: cannot write: %s\n", program, std::strerror(errno));
    return 1;
}
