// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Message.h"
#include "kits/application/Token.h"
#include "kits/support/Point.h"

namespace kits {

/// How a message was delivered: where its answer goes, and where it was dropped.
struct MessageDelivery {
    Address replyTo;
    bool sourceWaits = false; ///< the sender waits for an answer
    /// Answers for a message that is deleted unanswered although the sender waits.
    void (*replyNothing)(BMessage& message) = nullptr;
    bool replied = false;
    bool dropped = false;
    BPoint dropPoint;
    BPoint dropOffset;
};

/// Access to messages and messengers for the kits alone.
struct MessageAccess {
    /// Marks a message as dropped at this place of the screen.
    static void SetDropped(BMessage& message, BPoint where, BPoint offset);
    /// Marks a message as delivered. If the address is set, it gets the replies.
    static void SetDelivered(BMessage& message, const Address& replyTo, bool sourceWaits);

    static const Address& AddressOf(const BMessenger& messenger);
    static BMessenger MessengerTo(const Address& address);

    using Field = BMessage::Field;
    static const std::vector<Field>& FieldsOf(const BMessage& message) { return message.fFields; }
    static std::vector<Field>& FieldsOf(BMessage& message) { return message.fFields; }

private:
    static MessageDelivery& NeedDelivery(BMessage& message);
};

} // namespace kits
