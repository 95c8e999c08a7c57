// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Types.h"

#include <span>

namespace kits {

/// What the main thread's loop waits for: one descriptor that is readable when the main thread was woken, or when a
/// descriptor can be read that the main thread then reads itself. Any thread.
///
/// It is an epoll set, so a loop has only this one to watch, whatever is added and removed while it waits.
namespace WakeSet {

/// The same for the whole life of the process. Never read or close it.
int Descriptor();

/// Wakes the main thread. Safe in signal handlers.
void Wake();

/// The number of an added descriptor: not 0.
using Number = uint64;

/// Wakes the main thread also while this descriptor can be read.
/// @return false if the system has no room for it
bool Add(int descriptor, Number number);
/// Call it before the descriptor is closed.
void Remove(int descriptor);

/// Takes back all wakes so far; the caller then handles whatever they were for.
/// @return the numbers of the added descriptors that can be read, stored in `space`; those for which it has no room are
///         reported next time
std::span<const Number> Clear(std::span<Number> space);

} // namespace WakeSet

} // namespace kits
