#pragma once

#include "kits/support/Color.h"
#include "kits/support/Point.h"
#include "kits/support/Rect.h"

class BMessage;

/// What a chart and its holder take from outside: archives, dropped settings and sources, commands. Whatever stands in
/// a message may come from an older or newer version, a damaged file or another program, so every field has a range
/// here. A value outside it, one that is not a number, and a field of another type are treated as absent.

/// The range of one field, both ends belonging to it.
struct FieldRange {
    const char* key;
    double low;
    double high; ///< of text: bytes; of a font: its size; of a message or a repeated field: how many are taken
};

/// Longer titles are cut, at a character.
inline constexpr int32 kMaxTitleLength = 1024;
/// Caption fonts larger or smaller than this are left out; logical pixels.
inline constexpr float kMinFontSize = 4;
inline constexpr float kMaxFontSize = 200;
/// The longest side of a chart or a holder, in pixels, and the most pixels of a chart's picture.
inline constexpr float kMaxSide = 16383;
inline constexpr float kMaxPixels = 64.0f * 1024 * 1024;

/// The range of a field; null for one that a chart does not read.
const FieldRange* RangeOf(const char* key);
/// All of them, ended by a null key.
const FieldRange* AllRanges();

/// False for what is not a number, and for a key that has no range.
bool InRange(const char* key, double value);

/// Each takes the field only if it is there with this type and in its range; else the value stays and the result is
/// false. Both coordinates of a point have to be in the range, and a rectangle's width and height.
bool FindInRange(const BMessage& from, const char* key, int16* value);
bool FindInRange(const BMessage& from, const char* key, int32* value);
bool FindInRange(const BMessage& from, const char* key, float* value);
bool FindInRange(const BMessage& from, const char* key, BPoint* value);
bool FindInRange(const BMessage& from, const char* key, BRect* value);

/// A colour as raw bytes: red, green, blue, alpha. Any other size than four bytes is no colour.
bool FindColor(const BMessage& from, const char* key, int32 index, rgb_color* value);

/// Whether a chart can make a source of this archive.
/// @param none  the caption may have no source (target 0)
bool IsSourceArchive(const BMessage& archive, bool none);
