// SPDX-License-Identifier: MIT
#pragma once

#include <QPalette>

namespace kits::Palettes {

/// The platform's grey panels and controls; all other roles are left as they are.
QPalette LightPanels();
/// All roles, for a toolkit that has taken dark colours from the desktop before.
QPalette Light();
/// All roles.
QPalette Dark();

} // namespace kits::Palettes
