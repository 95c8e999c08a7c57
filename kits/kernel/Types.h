// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <cstdint>

/// The integer types of the kits. All have the same size on every machine.

using int8 = std::int8_t;
using uint8 = std::uint8_t;
using int16 = std::int16_t;
using uint16 = std::uint16_t;
using int32 = std::int32_t;
using uint32 = std::uint32_t;
using int64 = std::int64_t;
using uint64 = std::uint64_t;

/// 0 (`B_OK`) or a negative code, see Errors.h.
using status_t = int32;
/// A moment or a span in microseconds.
using bigtime_t = int64;
/// Names a thread of this process, see Threads.h. Negative values are status codes.
using thread_id = int32;
/// Four characters that name a kind of data, see kits/support/TypeConstants.h.
using type_code = uint32;
