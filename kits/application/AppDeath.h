// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Types.h"

/// An event for BRoster::StartWatching: an application was killed or crashed. When the connection to it ends,
/// the target gets B_SOME_APP_DIED with "team" (int32) and "signature"; the process may still exist for a
/// moment.
inline constexpr uint32 B_REQUEST_DIED = 4;
inline constexpr uint32 B_SOME_APP_DIED = 'BRAD';
