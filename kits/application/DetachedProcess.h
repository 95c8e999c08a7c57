#pragma once

#include "kits/kernel/Types.h"

#include <string>
#include <vector>

namespace kits {

/// Starts a program that this process has nothing more to do with: it is not its child, and leaves no zombie. It gets
/// this process's environment and standard files, default signals, and nothing else that is open here is closed on it
/// unless it is marked so. Returns when the program runs, or could not be started. Any thread.
/// @param arguments  the first is the program, looked for in $PATH if it has no slash
/// @return `B_ENTRY_NOT_FOUND` if there is no such program, or why it could not be started
status_t StartDetached(const std::vector<std::string>& arguments);

} // namespace kits
