// SPDX-License-Identifier: MIT
#pragma once

#include "kits/support/SupportDefs.h"

class BMessage;

/// Fits the default settings to this machine: the resource shows processors 1 to 8 in one chart, because it can't know
/// how many there are. A pure function; never for a store that the user has arranged.
///
/// In every chart of the main window, sources that show a processor which the machine lacks are removed. On a machine
/// with more than eight processors, a chart that shows nothing but single processors shows all of them together
/// instead, once as they are and once averaged.
/// @param defaults  the user's store as unflattened from the resource; what has another form than expected stays
/// @param cpuCount  processors of this machine, at least 1
void AdaptDefaultsToMachine(BMessage* defaults, int32 cpuCount);
