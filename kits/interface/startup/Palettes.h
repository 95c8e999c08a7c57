// SPDX-License-Identifier: MIT
#pragma once

#include <QPalette>

namespace kits::Palettes {

/// The platform's grey panels and controls; leaves all other roles unset.
QPalette LightPanels();
/// Sets all roles, for a toolkit that has taken dark colours from the desktop before.
QPalette Light();
/// Sets all roles.
QPalette Dark();

} // namespace kits::Palettes
