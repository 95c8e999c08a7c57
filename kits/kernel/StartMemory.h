// SPDX-License-Identifier: MIT
#pragma once

namespace kits {

/// Gives back to the system what only the start of a process needed: free memory of the heap, and unchanged pages of
/// the executable and the libraries. A start touches many of these pages once (symbol tables, constructors and their
/// neighbours). A page that is used again comes back from the system's cache, a few microseconds for each 64 kilobytes.
/// Pages that the process has written to stay.
///
/// Any thread. Call it once, when the process has become quiet.
void GiveBackStartMemory();

} // namespace kits
