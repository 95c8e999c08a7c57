#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace kits {

/// The contents of a regular file, or of one that a link leads to. What is no regular file is not read: a pipe has no
/// end, and opening one waits for whoever writes to it. Any thread; waits for the disk only.
/// @param most  of bytes
/// @return nothing if there is no such file, it cannot be read, or it has more than `most` bytes
std::optional<std::string> ReadSmallFile(const std::string& path, size_t most);

} // namespace kits
