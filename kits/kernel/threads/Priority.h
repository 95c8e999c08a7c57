// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Types.h"

namespace kits {

/// Gives the calling thread the nice level of a priority, added to the level of the process, or as close to it as the
/// user may get. A new thread of the kit calls it before its entry function.
void ApplyPriority(int32 priority) noexcept;

} // namespace kits
