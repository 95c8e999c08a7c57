// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Field.h"
#include "kits/kernel/Bounds.h"

/// The charts, with their places, in the store of the program that shows charts on the desktop.
inline const kits::Field<BMessage> kReplicantField("Replicant", kits::bounds::kMostReplicants);

/// True if charts are stored that belong on the desktop, so that the program that shows them has work to do. Reads a
/// file; do not call this on the main thread.
bool HasDesktopCharts();
