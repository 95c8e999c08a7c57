// SPDX-License-Identifier: MIT
#pragma once

/// What preferences windows and their pages share of their looks.

/// Between a page and the tab view's container, on every side; pixels.
inline constexpr float kPageMargin = 5;
