// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Types.h"

#include <span>

namespace kits {

/// What the loop of the main thread wakes for: one descriptor that is readable when the main thread was woken, or when
/// something can be read that the main thread then reads itself. Any thread.
///
/// Behind it stands a set of the system (epoll), so a loop has only this one to watch, whatever is added and removed
/// while it waits.
namespace WakeSet {

/// For the whole life of the process. Never read or closed.
int Descriptor();

/// Wakes the main thread. Safe in signal handlers.
void Wake();

/// The number of an Entry that can be read: not 0.
using Number = uint64;

/// Has the main thread woken also when this descriptor can be read, for as long as it can.
/// @return false if the system has no room for it
bool Add(int descriptor, Number number);
/// Before the descriptor is closed.
void Remove(int descriptor);

/// Takes back all wakes so far: whatever they were for is seen by who looks after this.
/// @return which of those that were added can be read, in `space`; who finds no room in it is told next time
std::span<const Number> Clear(std::span<Number> space);

} // namespace WakeSet

} // namespace kits
