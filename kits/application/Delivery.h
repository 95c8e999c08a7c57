#pragma once

#include "kits/application/Message.h"
#include "kits/application/Token.h"

#include <memory>

namespace kits {

/// Sends a message on its way, in this process or to another one; never waits. The result is as that of
/// BMessenger::SendMessage.
status_t Deliver(const Address& target, std::unique_ptr<BMessage> message);

/// Sends a copy.
/// @param replyTo      where answers go; may be unset
/// @param sourceWaits  somebody waits there for the one answer
status_t DeliverCopy(const Address& target, const BMessage& message, const Address& replyTo, bool sourceWaits);

/// Whether a message could be sent there now, as far as this process knows.
bool IsReachable(const Address& target);

/// The address of a handler of this process; unset for null.
Address AddressOf(const BHandler* handler);

} // namespace kits
