// SPDX-License-Identifier: MIT
#include "kits/application/delivery/ReplyWait.h"

#include "kits/application/EventLoop.h"
#include "kits/application/InterfaceLock.h"
#include "kits/application/delivery/MainThreadPrivate.h"
#include "kits/kernel/Clock.h"

#include <algorithm>

namespace kits {

void ReplyWait::Settle(std::unique_ptr<BMessage> answer)
{
    {
        WaitPoint::Guard guard = fPoint.Hold();
        fAnswer = std::move(answer);
        fIsSettled = true;
        fPoint.WakeAll(guard);
    }
    EventLoop::Wake();
}

bool ReplyWait::IsSettled()
{
    const WaitPoint::Guard guard = fPoint.Hold();
    return fIsSettled;
}

status_t ReplyWait::Await(bigtime_t timeout)
{
    status_t status;
    if (IsMainThread()) {
        status = AwaitOnMainThread(timeout);
    } else {
        WaitPoint::Guard guard = fPoint.Hold();
        status = fPoint.Wait(
            guard, [this] { return fIsSettled; }, timeout);
    }
    const WaitPoint::Guard guard = fPoint.Hold();
    return status == B_OK && fAnswer == nullptr ? B_BAD_HANDLER : status;
}

status_t ReplyWait::AwaitOnMainThread(bigtime_t timeout)
{
    const InterfaceLocker locker;
    const NestedLoop nested(nullptr);
    const bigtime_t now = system_time();
    const bigtime_t end = timeout < B_INFINITE_TIMEOUT - now ? now + timeout : B_INFINITE_TIMEOUT;
    const auto isOver = [this, &nested] { return nested.WasCanceled() || IsSettled(); };
    while (true) {
        TakeTurn(isOver);
        if (IsSettled())
            return B_OK;
        if (nested.WasCanceled())
            return B_CANCELED;
        if (system_time() >= end)
            return timeout > 0 ? B_TIMED_OUT : B_WOULD_BLOCK;
        WaitForWork(std::min(end, EventLoop::Deadline()));
    }
}

std::unique_ptr<BMessage> ReplyWait::TakeAnswer()
{
    const WaitPoint::Guard guard = fPoint.Hold();
    return std::move(fAnswer);
}

} // namespace kits
