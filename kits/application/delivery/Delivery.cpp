// SPDX-License-Identifier: MIT
#include "kits/application/delivery/Delivery.h"

#include "kits/application/Handler.h"
#include "kits/application/delivery/PostOffice.h"
#include "kits/application/messages/MessageFormat.h"
#include "kits/application/messages/MessagePrivate.h"
#include "kits/application/teams/TeamPort.h"

#include <map>

namespace kits {

namespace {

status_t DeliverHere(token_t target, const BMessage& message, const Address& replyTo, bool sourceWaits)
{
    auto copy = std::make_unique<BMessage>(message);
    MessageAccess::SetDelivered(*copy, replyTo, sourceWaits);
    return PostOffice::Get().Post(target, copy);
}

MessageFrame FrameFor(const BMessage& message, std::vector<token_t> targets)
{
    MessageFrame frame;
    frame.newestWins = message.IsNewestWins();
    frame.targets = std::move(targets);
    return frame;
}

} // namespace

status_t DeliverCopy(const Address& target, const BMessage& message, const Address& replyTo, bool sourceWaits)
{
    if (!target.IsSet())
        return B_BAD_HANDLER;
    if (target.team == ThisTeam())
        return DeliverHere(target.token, message, replyTo, sourceWaits);
    const auto flat = std::make_shared<std::string>();
    const status_t status = WriteMessage(message, flat.get(), false, kFrameLimits);
    if (status != B_OK)
        return status;
    if (!FitsFrame(1, flat->size()))
        return B_BAD_VALUE;
    MessageFrame frame = FrameFor(message, {target.token});
    frame.replyTo = replyTo;
    frame.sourceWaits = sourceWaits;
    return TeamPort::Get().Send(target.team, std::move(frame), message.what, flat);
}

void DeliverToAll(const std::vector<Address>& targets, const BMessage& message)
{
    std::map<team_address, std::vector<token_t>> others;
    for (const Address& target : targets)
        if (target.IsSet() && target.team == ThisTeam())
            DeliverHere(target.token, message, Address(), false);
        else if (target.IsSet())
            others[target.team].push_back(target.token);
    if (others.empty())
        return;
    const auto flat = std::make_shared<std::string>();
    if (WriteMessage(message, flat.get(), false, kFrameLimits) != B_OK || !FitsFrame(1, flat->size()))
        return;
    const size_t most = flat->size() <= bounds::kMostShared ? bounds::kMostTargets : 1;
    for (const auto& [team, tokens] : others) {
        for (size_t begin = 0; begin < tokens.size(); begin += most) {
            const auto first = tokens.begin() + static_cast<ptrdiff_t>(begin);
            const auto last = tokens.begin() + static_cast<ptrdiff_t>(std::min(begin + most, tokens.size()));
            TeamPort::Get().Send(team, FrameFor(message, {first, last}), message.what, flat);
        }
    }
}

bool IsReachable(const Address& target)
{
    if (!target.IsSet())
        return false;
    return target.team == ThisTeam() ? PostOffice::Get().IsReachable(target.token)
                                     : TeamPort::Get().IsReachable(target);
}

Address AddressOf(const BHandler* handler)
{
    return handler != nullptr ? Address{ThisTeam(), handler->Token()} : Address();
}

} // namespace kits
