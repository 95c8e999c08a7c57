// SPDX-License-Identifier: MIT
// The functions of BMessage about its delivery and its reply.

#include "kits/application/delivery/Delivery.h"
#include "kits/application/messages/MessageField.h"
#include "kits/application/messages/MessagePrivate.h"

namespace kits {

MessageDelivery& MessageAccess::NeedDelivery(BMessage& message)
{
    if (message.fDelivery == nullptr)
        message.fDelivery = std::make_unique<MessageDelivery>();
    return *message.fDelivery;
}

void MessageAccess::SetDropped(BMessage& message, BPoint where, BPoint offset)
{
    MessageDelivery& delivery = NeedDelivery(message);
    delivery.dropped = true;
    delivery.dropPoint = where;
    delivery.dropOffset = offset;
}

void MessageAccess::SetDelivered(BMessage& message, const Address& replyTo, bool sourceWaits)
{
    message.fDelivered = true;
    if (!replyTo.IsSet())
        return;
    MessageDelivery& delivery = NeedDelivery(message);
    delivery.replyTo = replyTo;
    delivery.sourceWaits = sourceWaits;
}

BMessenger MessageAccess::MessengerTo(const Address& address)
{
    BMessenger messenger;
    messenger.fAddress = address;
    return messenger;
}

} // namespace kits

BMessage::~BMessage()
{
    if (IsSourceWaiting())
        SendReply(B_NO_REPLY);
}

bool BMessage::WasDropped() const
{
    return fDelivery != nullptr && fDelivery->dropped;
}

BPoint BMessage::DropPoint(BPoint* offset) const
{
    if (offset != nullptr)
        *offset = WasDropped() ? fDelivery->dropOffset : BPoint();
    return WasDropped() ? fDelivery->dropPoint : BPoint();
}

bool BMessage::IsSourceWaiting() const
{
    return fDelivery != nullptr && fDelivery->sourceWaits && !fDelivery->replied;
}

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
