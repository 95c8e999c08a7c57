// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Archivable.h"
#include "kits/interface/Fields.h"

/// The fields that views and windows both archive and nobody else reads, besides those of Fields.h.

namespace kits {

inline const Field<int32> kFlagsField("_flags", -kMostNumber - 1.0, kMostNumber);
/// Deep archives only; nothing reads them.
inline const Field<BMessage> kChildrenField("_views", kMostNumber);

} // namespace kits
