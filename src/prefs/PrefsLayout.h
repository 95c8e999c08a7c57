#pragma once

#include "kits/support/Color.h"

/// What preferences windows and their pages share of their looks.

/// Background of the pages and of the row of buttons.
inline constexpr rgb_color kPageColor{216, 216, 216, 255};

/// Between a page and the tab view's container, on every side; pixels.
inline constexpr float kPageMargin = 5;
