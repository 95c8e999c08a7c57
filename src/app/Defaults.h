// SPDX-License-Identifier: MIT
#pragma once

#include "kits/support/SupportDefs.h"

class BMessage;

/// Fits the default settings to this machine: the resource shows processors 1 to 8 in one chart, because it cannot know
/// how many there are. A pure function; never for a store that the user has arranged.
///
/// Removes sources of processors that the machine lacks from every chart of the main window. On a machine with more
/// than eight processors, a chart of single processors alone shows all processors together instead, once plain and once
/// averaged.
/// @param defaults  the user's store as unflattened from the resource; anything with an unexpected form stays
/// @param cpuCount  processors of this machine, at least 1
void AdaptDefaultsToMachine(BMessage* defaults, int32 cpuCount);
