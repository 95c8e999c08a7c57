// SPDX-License-Identifier: MIT
#include "src/desktop/DesktopProgram.h"

int main(int argc, char** argv)
{
    return RunDesktopProgram(argc, argv);
}
