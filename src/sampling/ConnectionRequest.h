// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Types.h"

class BMessage;
class Sysinfo;

/// The code of the answer to a request that is not served; 0 is the code of the answer to one that is. Neither has
/// fields.
inline constexpr uint32 kConnectionRefused = 0xffffffff;

/// Serves a MSG_CONNECT or MSG_DISCONNECT of anybody, also of another process: registers its "Messenger" with the
/// sampler, or unregisters it, and answers. It is refused without a "Messenger", and connecting also without a sampler
/// and when that takes no more receivers.
/// @param sampler  may be null
void AnswerConnectionRequest(BMessage* request, Sysinfo* sampler);
