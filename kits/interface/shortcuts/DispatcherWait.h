// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/startup/QtEventLoop.h"

namespace kits::DispatcherWait {

/// Waits in the place of the toolkit's dispatcher and handles samples until anything else has come; for
/// QtEventLoop::SetWaitInPlace. From the end of its wait to the first event, and from the last event to the next wait,
/// the dispatcher asks all its sources what they have: cold code, which after a pause costs as much as drawing a chart.
///
/// Program and X server together take 0.91 of the processor time that they take without it, at 5 samples a second.
/// Without it the dispatcher waits, and samples are handled as its events.
///
/// It works where the dispatcher is GLib's, whose contexts tell what they wait for. Main thread.
void Run(QtEventLoop& loop);

/// Waits once for what the dispatcher waits for, for as long as it would.
/// @param ours  the descriptor that the program wakes for; the dispatcher watches it, too
/// @return true if it can be read and nothing else is to be done; false: it is the dispatcher's turn, as always where
///         it is not GLib's, is about to go, or does not watch the descriptor
bool Await(int ours);

} // namespace kits::DispatcherWait
