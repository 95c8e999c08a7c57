// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Message.h"
#include "kits/kernel/WaitPoint.h"

#include <memory>

namespace kits {

/// One thread that waits for the answer to one message.
class ReplyWait {
public:
    /// Takes the answer. Any thread, once.
    void Answer(std::unique_ptr<BMessage> answer);
    /// There will be no answer. Any thread.
    void Fail();
    /// Whether it is known what becomes of it.
    bool IsSettled();
    /// Waits for the answer, on the main thread in a nested loop (see BMessenger::SendMessage).
    /// @return `B_OK` with an answer, `B_BAD_HANDLER` if there will be none, or what ended the wait
    status_t Await(bigtime_t timeout);
    /// What came; null if nothing has.
    std::unique_ptr<BMessage> TakeAnswer();

private:
    status_t AwaitOnMainThread(bigtime_t timeout);
    void Settle(std::unique_ptr<BMessage> answer);

    WaitPoint fPoint{B_THREAD_RECEIVING};
    std::unique_ptr<BMessage> fAnswer; ///< guarded by fPoint, as what follows
    bool fIsSettled = false;
};

} // namespace kits
