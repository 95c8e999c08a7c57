#include "kits/application/Delivery.h"

#include "kits/application/Handler.h"
#include "kits/application/MessagePrivate.h"
#include "kits/application/PostOffice.h"

namespace kits {

status_t Deliver(const Address& target, std::unique_ptr<BMessage> message)
{
    if (!target.IsSet() || target.team != ThisTeam())
        return B_BAD_HANDLER;
    return PostOffice::Get().Post(target.token, std::move(message));
}

status_t DeliverCopy(const Address& target, const BMessage& message, const Address& replyTo, bool sourceWaits)
{
    auto copy = std::make_unique<BMessage>(message);
    MessageAccess::SetDelivered(*copy, replyTo, sourceWaits);
    return Deliver(target, std::move(copy));
}

bool IsReachable(const Address& target)
{
    return target.IsSet() && target.team == ThisTeam() && PostOffice::Get().IsReachable(target.token);
}

Address AddressOf(const BHandler* handler)
{
    return handler != nullptr ? Address{ThisTeam(), handler->Token()} : Address();
}

} // namespace kits
