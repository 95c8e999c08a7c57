// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Types.h"

#include <string>
#include <vector>

namespace kits {

/// What a started program inherits besides its arguments.
struct Inheritance {
    std::vector<int> descriptors; ///< stay open in it, under the same numbers, though exec would otherwise close them
    std::string variable;         ///< set in its environment; empty for none
    std::string value;
};

/// Starts a program that is independent of this process: it is not its child, and leaves no zombie. It gets this
/// process's environment and standard files, and default signals. Returns when the program runs, or could not be
/// started. Any thread.
/// @param arguments  the first is the program, searched in $PATH if it has no slash
/// @return `B_ENTRY_NOT_FOUND` if there is no such program, or the reason why it could not be started
status_t StartDetached(const std::vector<std::string>& arguments, const Inheritance& inheritance = {});

} // namespace kits
