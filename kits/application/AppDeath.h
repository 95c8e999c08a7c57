// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Types.h"

/// What can be watched by BRoster::StartWatching besides that applications come and go: that one ends which had not
/// taken leave, because it was killed or crashed. The target gets B_SOME_APP_DIED with "team" (int32) and "signature"
/// when the connection to it ends; its process may still be there for a moment.
inline constexpr uint32 B_REQUEST_DIED = 4;
inline constexpr uint32 B_SOME_APP_DIED = 'BRAD';
