// SPDX-License-Identifier: MIT
#pragma once

/// Layout constants shared by preferences windows and their pages.

/// The gap between a page and the tab view's container, on every side; pixels.
inline constexpr float kPageMargin = 5;
