// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

/// An input that is a script of steps. Beyond its end everything is 0.
class Script {
public:
    explicit Script(std::string_view bytes)
        : fRest(bytes)
    {
    }

    bool IsOver() const { return fRest.empty(); }
    uint8_t Byte()
    {
        if (fRest.empty())
            return 0;
        const auto byte = static_cast<uint8_t>(fRest.front());
        fRest.remove_prefix(1);
        return byte;
    }
    /// Returns a size up to this limit; small ones are as fine as large ones.
    size_t Size(size_t most)
    {
        const uint8_t byte = Byte();
        const size_t size = (static_cast<size_t>(byte & 0x1F) << (byte >> 5) * 2) * 4;
        return size < most ? size : most;
    }
    std::string_view Bytes(size_t count)
    {
        const std::string_view bytes = fRest.substr(0, count);
        fRest.remove_prefix(bytes.size());
        return bytes;
    }

private:
    std::string_view fRest;
};
