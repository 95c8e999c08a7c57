// SPDX-License-Identifier: MIT
#pragma once

namespace kits {

/// Gives back to the system what only the start of a process needed: free memory of the heap, and the pages of the
/// executable's and the libraries' files that are mapped as they are on the disk. Of these, starting touches many once
/// (symbol tables, constructors, what is around them) that are never needed again. What is needed comes back from the
/// system's cache as it is used, a few microseconds for each 64 kilobytes, once. Nothing that was written to is
/// touched.
///
/// Any thread. Call it once, when the process has become quiet.
void GiveBackStartMemory();

} // namespace kits
