// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Archivable.h"
#include "kits/interface/Fields.h"

/// Fields that both views and windows archive and no other code reads, besides those of Fields.h.

namespace kits {

inline const Field<int32> kFlagsField("_flags", -kMostNumber - 1.0, kMostNumber);
/// Only in deep archives; nothing reads them.
inline const Field<BMessage> kChildrenField("_views", kMostNumber);

} // namespace kits
