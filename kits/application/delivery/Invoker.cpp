// SPDX-License-Identifier: MIT
#include "kits/application/Invoker.h"

#include "kits/application/Message.h"

BInvoker::BInvoker(BMessage* message, const BHandler* handler, const BLooper* looper)
    : fMessage(message)
    , fTarget(handler, looper)
{
}

BInvoker::~BInvoker() = default;

status_t BInvoker::SetMessage(BMessage* message)
{
    if (message != fMessage.get())
        fMessage.reset(message);
    return B_OK;
}

uint32 BInvoker::Command() const
{
    return fMessage != nullptr ? fMessage->what : 0;
}

status_t BInvoker::SetTarget(const BHandler* handler, const BLooper* looper)
{
    status_t status;
    fTarget = BMessenger(handler, looper, &status);
    return status;
}

status_t BInvoker::SetTarget(BMessenger target)
{
    fTarget = target;
    return B_OK;
}

status_t BInvoker::Invoke(BMessage* message)
{
    if (message == nullptr)
        message = fMessage.get();
    return message == nullptr ? B_BAD_VALUE : fTarget.SendMessage(message);
}
