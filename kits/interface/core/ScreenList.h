// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/drawing/PixelGrid.h"

#include <vector>

namespace kits {

/// The screens, as last heard of. Read with the interface lock held; written in the main thread.
namespace ScreenList {

struct Screen {
    PixelRect frame;     ///< all of it, in the plane of all screens
    PixelRect available; ///< without panels

    bool operator==(const Screen&) const = default;
};

/// The main one first; never empty once the kit is set up.
const std::vector<Screen>& All();
/// The screen that shows most of the rectangle; the main one when none does.
Screen Nearest(const PixelRect& rect);
/// The rectangle, or, when it lies outside all screens, the same moved into the main one's middle.
BRect PutOnScreen(const BRect& rect);
/// The same among given screens. Pure.
BRect PutOnScreen(const BRect& rect, const std::vector<Screen>& screens);

/// The rectangle of a window's content, moved onto a screen when its title above it, or the upper edge of one without,
/// lies where the hand cannot reach it.
/// @param titleHeight  of what the window manager has put above the content
PixelRect PutInReach(const PixelRect& content, int32 titleHeight);
/// The same among given screens. Pure.
PixelRect PutInReach(const PixelRect& content, int32 titleHeight, const std::vector<Screen>& screens);

/// The rectangle of a window's content, moved so that it lies within a room with its title above it; with its middle in
/// the room's where that is too small. Pure.
PixelRect PutWithin(const PixelRect& content, int32 titleHeight, const PixelRect& room);

/// Asks the toolkit, and tells the application (B_SCREEN_CHANGED) if something is not as it was.
void Read();
/// Asks the toolkit now and whenever something changes, which the application is then told (B_SCREEN_CHANGED).
void Watch();
/// No screens any more.
void Forget();

} // namespace ScreenList

} // namespace kits
