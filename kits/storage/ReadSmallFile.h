// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace kits {

/// Reads a regular file, even through a link. Refuses other kinds: a pipe may have no end. Any thread; waits for the
/// disk only.
/// @param most  limit in bytes
/// @return nothing if there is no such file, it cannot be read, or it has more than `most` bytes
std::optional<std::string> ReadSmallFile(const std::string& path, size_t most);

} // namespace kits
