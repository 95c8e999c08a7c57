// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/View.h"

/// Layout shared by preferences windows and their pages.

/// The gap between a page and the tab view's container, on every side; pixels.
inline constexpr float kPageMargin = 5;

/// Returns a view's preferred size: x is the width, y the height.
inline BPoint PreferredSizeOf(BView* view)
{
    BPoint size;
    view->GetPreferredSize(&size.x, &size.y);
    return size;
}
