// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Message.h"
#include "kits/application/Token.h"

#include <vector>

namespace kits {

/// Sends a copy of a message on its way, in this process or to another one; never waits. The result is as that of
/// BMessenger::SendMessage.
/// @param replyTo      where answers go; may be unset
/// @param sourceWaits  somebody waits there for the one answer
status_t DeliverCopy(const Address& target, const BMessage& message, const Address& replyTo, bool sourceWaits);

/// The same to many. It is flattened once, and handlers of one team share one frame.
void DeliverToAll(const std::vector<Address>& targets, const BMessage& message);

/// Whether a message could be sent there now, as far as this process knows.
bool IsReachable(const Address& target);

/// The address of a handler of this process; unset for null.
Address AddressOf(const BHandler* handler);

} // namespace kits
