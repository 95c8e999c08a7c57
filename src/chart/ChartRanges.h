// SPDX-License-Identifier: MIT
#pragma once

#include "src/support/FieldRanges.h"

/// True if a chart can make a source of this archive.
/// @param none  accepts a caption without a source (target 0), too
bool IsSourceArchive(const BMessage& archive, bool none);
