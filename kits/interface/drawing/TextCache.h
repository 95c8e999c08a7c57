// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/Font.h"
#include "kits/interface/drawing/Canvas.h"

#include <memory>
#include <string_view>

namespace kits {

/// Measures and rasterises texts, and remembers the last ones: charts draw the same captions again and again. Any
/// thread; it has a lock of its own, the innermost of all. Before the interface kit is set up there are no fonts:
/// measures come from the size alone, and there are no masks.
namespace TextCache {

/// The most texts and masks that are kept, in number and in bytes.
inline constexpr size_t kMaxTexts = 512;
inline constexpr size_t kMaxBytes = 1024 * 1024;

font_height Height(const BFont& font);
/// In whole logical pixels.
float Width(const BFont& font, std::string_view text);
/// Returns the text's mask at a scale; null if there is nothing to draw, or more than 4 million pixels. With
/// B_DISABLE_ANTIALIASING, coverage is 0 or 255.
std::shared_ptr<const CoverageMask> Mask(const BFont& font, std::string_view text, double scale);

/// From now on there are fonts. Main thread.
void Enable();
/// Forgets everything; the fonts are gone. Main thread.
void Disable();

} // namespace TextCache

} // namespace kits
