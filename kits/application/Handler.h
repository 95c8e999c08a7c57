// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/AppDefs.h"
#include "kits/application/Token.h"
#include "kits/kernel/Threads.h"

#include <string>

class BLooper;
class BMessage;

/// Receives messages once it has been added to a looper: MessageReceived is called on the main thread.
///
/// Other threads and processes reach it by its token, through a BMessenger, which notices when the handler is gone.
/// Lock its looper before you use or destroy a handler that belongs to one.
class BHandler {
public:
    /// @param name  copied; may be null
    explicit BHandler(const char* name = nullptr);
    /// Removes it from its looper. Drops the messages that wait for it: waiting senders get B_NO_REPLY.
    virtual ~BHandler();
    BHandler(const BHandler&) = delete;
    BHandler& operator=(const BHandler&) = delete;

    /// Handles a message. This implementation passes it to the looper. The message belongs to the caller and lives
    /// until this returns.
    virtual void MessageReceived(BMessage* message);

    /// The looper to which it belongs, or null.
    BLooper* Looper() const { return fLooper; }

    void SetName(const char* name);
    /// Never null.
    const char* Name() const { return fName.c_str(); }

    /// Locks the looper that this handler belongs to. The handler must exist when this is called; if this returns true,
    /// it still exists and is in the same looper. Where it may be gone, use BMessenger::LockTarget.
    bool LockLooper() { return LockLooperWithTimeout(B_INFINITE_TIMEOUT) == B_OK; }
    /// @return `B_BAD_HANDLER` if it has no looper, or is gone once the lock is taken; `B_TIMED_OUT`; `B_WOULD_BLOCK`
    status_t LockLooperWithTimeout(bigtime_t timeout);
    void UnlockLooper();

    /// For the kits: its name in this process.
    kits::token_t Token() const { return fToken; }

private:
    friend class BLooper;

    std::string fName;
    BLooper* fLooper = nullptr;
    const kits::token_t fToken;
};
