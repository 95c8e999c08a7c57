// SPDX-License-Identifier: MIT
#pragma once

#include "kits/support/Color.h"
#include "src/support/FieldRanges.h"

/// What charts take from outside beside plain fields.

/// The most pixels of a chart's picture.
inline constexpr float kMaxPixels = 64.0f * 1024 * 1024;

/// A colour as raw bytes: red, green, blue, alpha. Any other size than four bytes is no colour.
bool FindColor(const BMessage& from, const char* key, int32 index, rgb_color* value);

/// Whether a chart can make a source of this archive.
/// @param none  the caption may have no source (target 0)
bool IsSourceArchive(const BMessage& archive, bool none);
