// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Message.h"
#include "kits/application/Token.h"

#include <vector>

namespace kits {

/// Sends a copy of a message, within this process or to another one; never waits. The result is that of
/// BMessenger::SendMessage.
/// @param replyTo      the address for replies; may be unset
/// @param sourceWaits  the sender waits there for a single reply
status_t DeliverCopy(const Address& target, const BMessage& message, const Address& replyTo, bool sourceWaits);

/// Sends a copy to each of many targets. The message is flattened once, and the handlers of a team share one frame.
void DeliverToAll(const std::vector<Address>& targets, const BMessage& message);

/// Returns whether a message could be sent there now, as far as this process knows.
bool IsReachable(const Address& target);

/// Returns the address of a handler of this process; unset for null.
Address AddressOf(const BHandler* handler);

} // namespace kits
