// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/Font.h"
#include "kits/interface/drawing/Canvas.h"

#include <memory>
#include <string_view>

namespace kits {

/// Measures texts and rasters them, and remembers the last ones: charts draw the same captions again and again. Any
/// thread; it has a lock of its own, the innermost of all. Before the interface kit is set up there are no fonts to
/// raster: measures come from the size alone and there are no masks.
namespace TextCache {

/// Texts and masks that are kept at most, in number and in bytes.
inline constexpr size_t kMaxTexts = 512;
inline constexpr size_t kMaxBytes = 1024 * 1024;

font_height Height(const BFont& font);
/// Whole logical pixels.
float Width(const BFont& font, std::string_view text);
/// The text at a scale; null when there is nothing to draw, or more than 4 million pixels. Coverage is 0 or 255 with
/// B_DISABLE_ANTIALIASING.
std::shared_ptr<const CoverageMask> Mask(const BFont& font, std::string_view text, double scale);

/// From here on fonts are there. Main thread.
void Enable();
/// Forgets everything; fonts are gone. Main thread.
void Disable();

} // namespace TextCache

} // namespace kits
