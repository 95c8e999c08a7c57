// SPDX-License-Identifier: MIT
#pragma once

#include "src/support/FieldRanges.h"

/// Whether a chart can make a source of this archive.
/// @param none  the caption may have no source (target 0)
bool IsSourceArchive(const BMessage& archive, bool none);
