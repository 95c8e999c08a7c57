// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Types.h"

/// Status codes: 0 is success, everything negative is an error. No call of the kits throws; it returns one of these.

inline constexpr status_t B_OK = 0;
inline constexpr status_t B_ERROR = -1;

// Where the codes of each kit begin.
inline constexpr status_t B_GENERAL_ERROR_BASE = INT32_MIN;
inline constexpr status_t B_OS_ERROR_BASE = B_GENERAL_ERROR_BASE + 0x1000;
inline constexpr status_t B_APP_ERROR_BASE = B_GENERAL_ERROR_BASE + 0x2000;
inline constexpr status_t B_STORAGE_ERROR_BASE = B_GENERAL_ERROR_BASE + 0x6000;

// General.
inline constexpr status_t B_NO_MEMORY = B_GENERAL_ERROR_BASE + 0;
inline constexpr status_t B_IO_ERROR = B_GENERAL_ERROR_BASE + 1;
inline constexpr status_t B_PERMISSION_DENIED = B_GENERAL_ERROR_BASE + 2;
inline constexpr status_t B_BAD_INDEX = B_GENERAL_ERROR_BASE + 3;
inline constexpr status_t B_BAD_TYPE = B_GENERAL_ERROR_BASE + 4;
inline constexpr status_t B_BAD_VALUE = B_GENERAL_ERROR_BASE + 5;
inline constexpr status_t B_MISMATCHED_VALUES = B_GENERAL_ERROR_BASE + 6;
inline constexpr status_t B_NAME_NOT_FOUND = B_GENERAL_ERROR_BASE + 7;
inline constexpr status_t B_TIMED_OUT = B_GENERAL_ERROR_BASE + 9;
inline constexpr status_t B_INTERRUPTED = B_GENERAL_ERROR_BASE + 10;
inline constexpr status_t B_WOULD_BLOCK = B_GENERAL_ERROR_BASE + 11;
inline constexpr status_t B_CANCELED = B_GENERAL_ERROR_BASE + 12;
inline constexpr status_t B_NO_INIT = B_GENERAL_ERROR_BASE + 13;
inline constexpr status_t B_BUSY = B_GENERAL_ERROR_BASE + 14;
inline constexpr status_t B_NOT_ALLOWED = B_GENERAL_ERROR_BASE + 15;

// Kernel kit.
inline constexpr status_t B_BAD_THREAD_ID = B_OS_ERROR_BASE + 0x100;
inline constexpr status_t B_BAD_THREAD_STATE = B_OS_ERROR_BASE + 0x101;
inline constexpr status_t B_NO_MORE_THREADS = B_OS_ERROR_BASE + 0x102;

// Application kit.
inline constexpr status_t B_BAD_REPLY = B_APP_ERROR_BASE + 0;
inline constexpr status_t B_DUPLICATE_REPLY = B_APP_ERROR_BASE + 1;
inline constexpr status_t B_BAD_HANDLER = B_APP_ERROR_BASE + 3;
inline constexpr status_t B_ALREADY_RUNNING = B_APP_ERROR_BASE + 4;
inline constexpr status_t B_LAUNCH_FAILED = B_APP_ERROR_BASE + 5;

// Storage kit.
inline constexpr status_t B_FILE_ERROR = B_STORAGE_ERROR_BASE + 0;
inline constexpr status_t B_FILE_NOT_FOUND = B_STORAGE_ERROR_BASE + 1;
inline constexpr status_t B_FILE_EXISTS = B_STORAGE_ERROR_BASE + 2;
inline constexpr status_t B_ENTRY_NOT_FOUND = B_STORAGE_ERROR_BASE + 3;
inline constexpr status_t B_NAME_TOO_LONG = B_STORAGE_ERROR_BASE + 4;
inline constexpr status_t B_NOT_A_DIRECTORY = B_STORAGE_ERROR_BASE + 5;
inline constexpr status_t B_DIRECTORY_NOT_EMPTY = B_STORAGE_ERROR_BASE + 6;
inline constexpr status_t B_DEVICE_FULL = B_STORAGE_ERROR_BASE + 7;
inline constexpr status_t B_READ_ONLY_DEVICE = B_STORAGE_ERROR_BASE + 8;
inline constexpr status_t B_IS_A_DIRECTORY = B_STORAGE_ERROR_BASE + 9;
inline constexpr status_t B_NO_MORE_FDS = B_STORAGE_ERROR_BASE + 10;
inline constexpr status_t B_CROSS_DEVICE_LINK = B_STORAGE_ERROR_BASE + 11;
inline constexpr status_t B_LINK_LIMIT = B_STORAGE_ERROR_BASE + 12;
inline constexpr status_t B_UNSUPPORTED = B_STORAGE_ERROR_BASE + 13;

namespace kits {

/// The status for an `errno` value: `B_OK` for 0, `B_ERROR` for one without a code of its own.
[[nodiscard]] status_t StatusFromErrno(int error) noexcept;

/// A short English text for a status, for lines on stderr and in alerts. Never null; valid for good.
[[nodiscard]] const char* StatusText(status_t status) noexcept;

} // namespace kits
