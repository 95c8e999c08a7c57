// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/InterfaceDefs.h"

#include <qnamespace.h>

class QKeyEvent;

namespace kits {

class ViewImpl;

/// Keyboard input in the platform's terms.
namespace KeyInput {

uint32 ModifiersOf(Qt::KeyboardModifiers modifiers);
/// Passes a pressed key to the view. Returns false if the key has no meaning for views, or the view did not use it.
bool Deliver(ViewImpl& view, const QKeyEvent& event);

} // namespace KeyInput

} // namespace kits
