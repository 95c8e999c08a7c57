// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/drawing/PixelGrid.h"

#include <vector>

namespace kits {

/// The screens, according to the last report. Read it with the interface lock held; only the main thread writes it.
namespace ScreenList {

struct Screen {
    PixelRect frame;     ///< all of it, in the plane of all screens
    PixelRect available; ///< without panels

    bool operator==(const Screen&) const = default;
};

/// The main one first; never empty once the kit is set up.
const std::vector<Screen>& All();
/// Returns the screen that shows most of the rectangle; the main one if none does.
Screen Nearest(const PixelRect& rect);
/// Returns the rectangle or, if it lies outside all screens, the same moved to the middle of the main screen.
BRect PutOnScreen(const BRect& rect, const std::vector<Screen>& screens = All());

/// Returns the rectangle of a window's content, moved onto a screen if its title above it, or the upper edge of one
/// without a title, is out of the pointer's reach.
/// @param titleHeight  the height of the window manager's frame above the content
PixelRect PutInReach(const PixelRect& content, int32 titleHeight, const std::vector<Screen>& screens = All());

/// Returns the rectangle of a window's content, moved so that it lies within a room with its title above it; centred if
/// the room is too small. Pure.
PixelRect PutWithin(const PixelRect& content, int32 titleHeight, const PixelRect& room);

/// Queries the toolkit, and notifies the application (B_SCREEN_CHANGED) if something has changed.
void Read();
/// Queries the toolkit now and after every change, and then notifies the application (B_SCREEN_CHANGED).
void Watch();
/// From now on there are no screens.
void Forget();

} // namespace ScreenList

} // namespace kits
