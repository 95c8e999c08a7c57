// SPDX-License-Identifier: MIT
// A program with the defect that its argument names, for a sanitizer to find.

#include <climits>
#include <cstdlib>
#include <string>
#include <thread>

int main(int argc, char** argv)
{
    const std::string kind = argc > 1 ? argv[1] : "";
    volatile int* number = new int(INT_MAX);
    if (kind == "overflow")
        *number = *number + argc;
    if (kind == "abort")
        abort();
    if (kind == "leak") {
        number = nullptr;
        return 0;
    }
    if (kind == "race") {
        std::thread other([number] { *number = 1; });
        *number = 2;
        other.join();
    }
    delete number;
    return kind == "freed" ? *number : 0;
}
