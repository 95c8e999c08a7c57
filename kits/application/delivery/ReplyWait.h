// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Message.h"
#include "kits/kernel/WaitPoint.h"

#include <memory>

namespace kits {

/// One thread that waits for the reply to one message.
class ReplyWait {
public:
    /// Gives it the reply; null if there will be none. Any thread, once.
    void Settle(std::unique_ptr<BMessage> answer);
    /// Returns whether the outcome is known.
    bool IsSettled();
    /// Waits for the reply, on the main thread in a nested loop (see BMessenger::SendMessage).
    /// @return `B_OK` with a reply, `B_BAD_HANDLER` if there will be none, or the reason why the wait ended
    status_t Await(bigtime_t timeout);
    /// Returns the reply, or null.
    std::unique_ptr<BMessage> TakeAnswer();

private:
    status_t AwaitOnMainThread(bigtime_t timeout);

    WaitPoint fPoint{B_THREAD_RECEIVING};
    std::unique_ptr<BMessage> fAnswer; ///< guarded by fPoint, as the members below
    bool fIsSettled = false;
};

} // namespace kits
