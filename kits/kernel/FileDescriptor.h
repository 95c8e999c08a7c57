// SPDX-License-Identifier: MIT
#pragma once

#include <unistd.h>

#include <utility>

namespace kits {

/// Owns an open file descriptor and closes it.
class FileDescriptor {
public:
    /// @param descriptor  owned from here; negative for none
    explicit FileDescriptor(int descriptor = -1) noexcept
        : fDescriptor(descriptor)
    {
    }
    FileDescriptor(FileDescriptor&& other) noexcept
        : fDescriptor(std::exchange(other.fDescriptor, -1))
    {
    }
    FileDescriptor& operator=(FileDescriptor&& other) noexcept
    {
        std::swap(fDescriptor, other.fDescriptor);
        return *this;
    }
    ~FileDescriptor() { Close(); }

    [[nodiscard]] bool IsOpen() const { return fDescriptor >= 0; }
    [[nodiscard]] int Get() const { return fDescriptor; }
    /// Returns false, with errno, if the system now reports an error of an earlier write. Closes it in any case.
    bool Close() noexcept { return fDescriptor < 0 || close(std::exchange(fDescriptor, -1)) == 0; }

private:
    int fDescriptor;
};

} // namespace kits
