// SPDX-License-Identifier: MIT
#include "kits/application/Messenger.h"

#include "kits/application/InterfaceLock.h"
#include "kits/application/Looper.h"
#include "kits/application/MainThread.h"
#include "kits/application/Message.h"
#include "kits/application/delivery/Delivery.h"
#include "kits/application/delivery/PostOffice.h"
#include "kits/application/delivery/ReplyWait.h"

using kits::Address;
using kits::InterfaceLock;
using kits::PostOffice;

namespace {

/// Marks a message whose sender waits for a reply, for the life of the object.
class WaitingSource {
public:
    explicit WaitingSource(kits::team_address asked)
        : fWait(std::make_shared<kits::ReplyWait>())
        , fAddress{kits::ThisTeam(), PostOffice::Get().AddReplyWait(fWait, asked)}
    {
    }
    ~WaitingSource() { PostOffice::Get().Remove(fAddress.token); }
    WaitingSource(const WaitingSource&) = delete;
    WaitingSource& operator=(const WaitingSource&) = delete;

    const Address& Where() const { return fAddress; }
    kits::ReplyWait& Wait() { return *fWait; }

private:
    const std::shared_ptr<kits::ReplyWait> fWait;
    const Address fAddress;
};

} // namespace

BMessenger::BMessenger(const BHandler* handler, const BLooper* looper, status_t* result)
{
    status_t status = B_OK;
    if (handler == nullptr)
        handler = looper;
    if (handler == nullptr)
        status = B_BAD_VALUE;
    else {
        const kits::token_t owner = PostOffice::Get().LooperOf(handler->Token());
        if (owner == 0)
            status = B_BAD_HANDLER;
        else if (looper != nullptr && looper->Token() != owner)
            status = B_MISMATCHED_VALUES;
        else
            fAddress = kits::AddressOf(handler);
    }
    if (result != nullptr)
        *result = status;
}

void BMessenger::SendToAll(const std::vector<BMessenger>& targets, const BMessage* message)
{
    if (message == nullptr)
        return;
    std::vector<Address> addresses;
    addresses.reserve(targets.size());
    for (const BMessenger& target : targets)
        addresses.push_back(target.fAddress);
    kits::DeliverToAll(addresses, *message);
}

status_t BMessenger::SendMessage(uint32 code, BHandler* replyTo) const
{
    const BMessage message(code);
    return SendMessage(&message, replyTo);
}

status_t BMessenger::SendMessage(const BMessage* message, BHandler* replyTo, bigtime_t) const
{
    return message == nullptr ? B_BAD_VALUE : kits::DeliverCopy(fAddress, *message, kits::AddressOf(replyTo), false);
}

status_t BMessenger::SendMessage(const BMessage* message, const BMessenger& replyTo, bigtime_t) const
{
    return message == nullptr ? B_BAD_VALUE : kits::DeliverCopy(fAddress, *message, replyTo.fAddress, false);
}

status_t BMessenger::SendMessage(const BMessage* message, BMessage* reply, bigtime_t, bigtime_t replyTimeout) const
{
    if (message == nullptr || reply == nullptr)
        return B_BAD_VALUE;
    if (!kits::IsMainThread() && InterfaceLock::Get().IsHeld())
        return B_NOT_ALLOWED;
    WaitingSource source(fAddress.team);
    status_t status = kits::DeliverCopy(fAddress, *message, source.Where(), true);
    if (status == B_OK)
        status = source.Wait().Await(replyTimeout);
    if (status == B_OK)
        *reply = std::move(*source.Wait().TakeAnswer());
    return status;
}

bool BMessenger::IsValid() const
{
    return kits::IsReachable(fAddress);
}

bool BMessenger::IsTargetLocal() const
{
    return fAddress.IsSet() && fAddress.team == kits::ThisTeam();
}

BHandler* BMessenger::Target(BLooper** looper) const
{
    if (IsTargetLocal())
        return PostOffice::Get().HandlerAt(fAddress.token, looper);
    if (looper != nullptr)
        *looper = nullptr;
    return nullptr;
}

status_t BMessenger::LockTargetWithTimeout(bigtime_t timeout) const
{
    const auto hasTarget = [this] { return Target(nullptr) != nullptr; };
    return hasTarget() ? InterfaceLock::Get().LockIf(hasTarget, timeout) : B_BAD_HANDLER;
}

team_id BMessenger::Team() const
{
    return fAddress.IsSet() ? kits::TeamIdOf(fAddress.team) : -1;
}
