// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Types.h"

#include <string>
#include <vector>

namespace kits {

/// What a program is given beside its arguments.
struct Inheritance {
    std::vector<int> descriptors; ///< stay open in it, under the same numbers, though they are closed by exec else
    std::string variable;         ///< set in its environment; empty for none
    std::string value;
};

/// Starts a program that this process has nothing more to do with: it is not its child, and leaves no zombie. It gets
/// this process's environment and standard files, and default signals. Returns when the program runs, or could not be
/// started. Any thread.
/// @param arguments  the first is the program, looked for in $PATH if it has no slash
/// @return `B_ENTRY_NOT_FOUND` if there is no such program, or why it could not be started
status_t StartDetached(const std::vector<std::string>& arguments, const Inheritance& inheritance = {});

} // namespace kits
