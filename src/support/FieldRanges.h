#pragma once

#include "kits/support/Point.h"
#include "kits/support/Rect.h"
#include "kits/support/TypeConstants.h"

class BMessage;

/// What the program takes from outside: stored settings, dropped settings and sources, and what other programs send.
/// Whatever stands in a message may come from an older or newer version, a damaged file or another program, so every
/// field has its type and its range here, in one table. A field of another type is treated as absent everywhere; what
/// becomes of a value outside its range is told for each.
enum class Outside {
    kLeftOut, ///< treated as absent too, and so is what is not a number
    kHeld     ///< the nearest value of the range is taken
};

/// The type and range of one field, both ends belonging to it.
struct FieldRange {
    const char* key;
    type_code type;
    double low;
    /// Of text and raw data: bytes; of a font: its size; of a rectangle: its width and height; of a message, a
    /// messenger or a repeated field: how many are taken.
    double high;
    Outside outside = Outside::kLeftOut;
};

/// Longer titles are cut, at a character.
inline constexpr int32 kMaxTitleLength = 1024;
/// Caption fonts larger or smaller than this are left out; logical pixels.
inline constexpr float kMinFontSize = 4;
inline constexpr float kMaxFontSize = 200;
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

/// The range of a field; null for one that nothing reads.
const FieldRange* RangeOf(const char* key);
/// All of them, ended by a null key.
const FieldRange* AllRanges();

/// False for what is not a number, and for a key that has no range.
bool InRange(const char* key, double value);

/// Each takes the field only if it is there with this type and in its range, or is a number to be held to it; else the
/// value stays and the result is false. Both coordinates of a point have to be in the range, and a rectangle's width
/// and height.
bool FindInRange(const BMessage& from, const char* key, int16* value);
bool FindInRange(const BMessage& from, const char* key, int32* value);
bool FindInRange(const BMessage& from, const char* key, int64* value);
bool FindInRange(const BMessage& from, const char* key, float* value);
bool FindInRange(const BMessage& from, const char* key, BPoint* value);
bool FindInRange(const BMessage& from, const char* key, BRect* value);
