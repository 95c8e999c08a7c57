// SPDX-License-Identifier: MIT
#include "kits/application/Handler.h"

#include "kits/application/InterfaceLock.h"
#include "kits/application/Looper.h"
#include "kits/application/delivery/PostOffice.h"

using kits::InterfaceLock;
using kits::PostOffice;

BHandler::BHandler(const char* name)
    : fName(name != nullptr ? name : "")
    , fToken(PostOffice::Get().AddHandler(this))
{
}

BHandler::~BHandler()
{
    const kits::KillShield shield;
    if (fLooper != nullptr && fLooper != this) {
        const kits::InterfaceLocker locker;
        fLooper->RemoveHandler(this);
    }
    PostOffice::Get().Remove(fToken);
}

void BHandler::MessageReceived(BMessage* message)
{
    if (fLooper != nullptr && fLooper != this)
        fLooper->MessageReceived(message);
}

void BHandler::SetName(const char* name)
{
    fName = name != nullptr ? name : "";
}

status_t BHandler::LockLooperWithTimeout(bigtime_t timeout)
{
    // Uses only the token: by the time the lock is held, this object may be gone.
    const kits::token_t token = fToken;
    const kits::token_t looper = PostOffice::Get().LooperOf(token);
    if (!PostOffice::Get().IsOpen(looper))
        return B_BAD_HANDLER;
    const auto belongsToOpenLooper = [token, looper] {
        return PostOffice::Get().LooperOf(token) == looper && PostOffice::Get().IsOpen(looper);
    };
    return InterfaceLock::Get().LockIf(belongsToOpenLooper, timeout);
}

void BHandler::UnlockLooper()
{
    InterfaceLock::Get().Unlock();
}
