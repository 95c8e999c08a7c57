// SPDX-License-Identifier: MIT
#pragma once

class BHandler;
class BMenu;

/// Sets the target of every item of a menu, of its submenus and of theirs.
/// @param menu    null does nothing
/// @param target  belongs to a looper; not owned
void SetTargetForItemsRecursive(BMenu* menu, BHandler* target);
