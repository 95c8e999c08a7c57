// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/FieldRanges.h"

/// What the program takes from outside: stored settings, dropped settings and sources, and what other programs send.
/// Every field has its type and its range here, in one table; those of the kits are in kits::kKitFields.
extern const kits::FieldRanges kFields;

/// The longest side of a chart or a holder, in pixels.
inline constexpr float kMaxSide = 16383;
/// The sides of the main window.
inline constexpr float kMinWindowSide = 100;
inline constexpr float kMaxWindowSide = 4000;
/// Between two samples, in microseconds.
inline constexpr bigtime_t kMinSamplingDelay = 10000;
inline constexpr bigtime_t kMaxSamplingDelay = 5000000;
/// The longest history, in samples.
inline constexpr int16 kMaxHistory = 200;
/// A thousand years, in microseconds: far from any overflow, and more than any machine has.
inline constexpr bigtime_t kLongestUptime = bigtime_t{1000} * 366 * 86'400 * 1'000'000;

inline bool InRange(const char* key, double value)
{
    return kFields.InRange(key, value);
}

/// See kits::FieldRanges::Find.
template <typename T> bool FindInRange(const BMessage& from, const char* key, T* value)
{
    return kFields.Find(from, key, value);
}
