// SPDX-License-Identifier: MIT
#include "src/app/Program.h"

int main(int argc, char** argv)
{
    return RunProgram(argc, argv);
}
