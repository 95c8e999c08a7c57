// SPDX-License-Identifier: MIT
#include "kits/application/delivery/Delivery.h"

#include "kits/application/Handler.h"
#include "kits/application/delivery/OtherTeams.h"
#include "kits/application/delivery/PostOffice.h"
#include "kits/application/messages/MessagePrivate.h"

namespace kits {

namespace {

status_t DeliverHere(token_t target, const BMessage& message, const Address& replyTo, bool sourceWaits)
{
    auto copy = std::make_unique<BMessage>(message);
    MessageAccess::SetDelivered(*copy, replyTo, sourceWaits);
    return PostOffice::Get().Post(target, copy);
}

} // namespace

status_t DeliverCopy(const Address& target, const BMessage& message, const Address& replyTo, bool sourceWaits)
{
    if (!target.IsSet())
        return B_BAD_HANDLER;
    if (target.team == ThisTeam())
        return DeliverHere(target.token, message, replyTo, sourceWaits);
    OtherTeams* const others = OtherTeams::Get();
    return others != nullptr ? others->Send({target}, message, replyTo, sourceWaits) : B_BAD_HANDLER;
}

void DeliverToAll(const std::vector<Address>& targets, const BMessage& message)
{
    std::vector<Address> elsewhere;
    for (const Address& target : targets)
        if (target.IsSet() && target.team == ThisTeam())
            DeliverHere(target.token, message, Address(), false);
        else if (target.IsSet())
            elsewhere.push_back(target);
    if (OtherTeams* const others = OtherTeams::Get(); others != nullptr && !elsewhere.empty())
        others->Send(elsewhere, message, Address(), false);
}

bool IsReachable(const Address& target)
{
    if (!target.IsSet())
        return false;
    if (target.team == ThisTeam())
        return PostOffice::Get().IsReachable(target.token);
    OtherTeams* const others = OtherTeams::Get();
    return others != nullptr && others->IsReachable(target);
}

Address AddressOf(const BHandler* handler)
{
    return handler != nullptr ? Address{ThisTeam(), handler->Token()} : Address();
}

} // namespace kits
