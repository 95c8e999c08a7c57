// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Types.h"

class BMessage;
class Sysinfo;

/// The code of the reply to a refused request; 0 is the code of the reply to a granted one. Neither has fields.
inline constexpr uint32 kConnectionRefused = 0xffffffff;

/// Serves a MSG_CONNECT or MSG_DISCONNECT from anybody, even from another process: registers its "Messenger" with the
/// sampler, or unregisters it, and replies. Refuses a request without a "Messenger", and refuses to connect without a
/// sampler, or if the sampler takes no more receivers.
/// @param sampler  may be null
void AnswerConnectionRequest(BMessage* request, Sysinfo* sampler);
