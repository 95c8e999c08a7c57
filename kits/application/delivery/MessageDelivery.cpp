// SPDX-License-Identifier: MIT
// How a message is answered, and the messengers in it.

#include "kits/application/Messenger.h"
#include "kits/application/delivery/Delivery.h"
#include "kits/application/messages/MessageField.h"
#include "kits/application/messages/MessagePrivate.h"
#include "kits/support/TypeConstants.h"

namespace kits {

void MessageAccess::SetDelivered(BMessage& message, const Address& replyTo, bool sourceWaits)
{
    message.fDelivered = true;
    if (!replyTo.IsSet())
        return;
    MessageDelivery& delivery = NeedDelivery(message);
    delivery.replyTo = replyTo;
    delivery.sourceWaits = sourceWaits;
    delivery.replyNothing = [](BMessage& unanswered) { unanswered.SendReply(B_NO_REPLY); };
}

const Address& MessageAccess::AddressOf(const BMessenger& messenger)
{
    return messenger.fAddress;
}

BMessenger MessageAccess::MessengerTo(const Address& address)
{
    BMessenger messenger;
    messenger.fAddress = address;
    return messenger;
}

} // namespace kits

BMessenger BMessage::ReturnAddress() const
{
    return kits::MessageAccess::MessengerTo(fDelivery != nullptr ? fDelivery->replyTo : kits::Address());
}

status_t BMessage::SendReply(uint32 code, BHandler* replyTo)
{
    BMessage reply(code);
    return SendReply(&reply, replyTo);
}

status_t BMessage::SendReply(BMessage* reply, BHandler* replyTo, bigtime_t)
{
    if (reply == nullptr)
        return B_BAD_VALUE;
    if (fDelivery == nullptr || !fDelivery->replyTo.IsSet())
        return B_BAD_REPLY;
    if (fDelivery->sourceWaits && fDelivery->replied)
        return B_DUPLICATE_REPLY;
    fDelivery->replied = true;
    const status_t status = kits::DeliverCopy(fDelivery->replyTo, *reply, kits::AddressOf(replyTo), false);
    return status == B_BAD_HANDLER ? B_BAD_REPLY : status;
}

// A messenger is stored as its address.

status_t BMessage::AddMessenger(const char* name, const BMessenger& value)
{
    return AddBytes(name, B_MESSENGER_TYPE, &kits::MessageAccess::AddressOf(value), sizeof(kits::Address), true);
}

status_t BMessage::FindMessenger(const char* name, BMessenger* value, int32 index) const
{
    kits::Address address;
    const status_t status =
        value == nullptr ? B_BAD_VALUE : FindBytes(name, B_MESSENGER_TYPE, index, &address, sizeof(address));
    if (status == B_OK)
        *value = kits::MessageAccess::MessengerTo(address);
    return status;
}
