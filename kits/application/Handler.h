// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/AppDefs.h"
#include "kits/application/Token.h"
#include "kits/kernel/Threads.h"

#include <string>

class BLooper;
class BMessage;

/// Something that messages can be sent to. It gets them once it is added to a looper, on the main thread, through
/// MessageReceived.
///
/// Other threads and processes do not reach it by its address but by its token, through a BMessenger: that finds out by
/// itself when the handler is gone. A handler that belongs to a looper is used and destroyed with that looper locked.
class BHandler {
public:
    /// @param name  copied; may be null
    explicit BHandler(const char* name = nullptr);
    /// Takes it out of its looper. What waits for it is dropped: waiting senders get B_NO_REPLY.
    virtual ~BHandler();
    BHandler(const BHandler&) = delete;
    BHandler& operator=(const BHandler&) = delete;

    /// A message has come for this handler. This one hands on what it does not know to the next handler, if there is
    /// one. The message belongs to the caller and lives until this returns (BLooper::DetachCurrentMessage keeps it).
    virtual void MessageReceived(BMessage* message);

    /// The looper that it belongs to; null for none.
    BLooper* Looper() const { return fLooper; }

    void SetName(const char* name);
    /// Never null.
    const char* Name() const { return fName.c_str(); }

    /// The handler that gets what this one does not know; null for none. Reset when either leaves the looper.
    /// Both must belong to the same looper.
    virtual void SetNextHandler(BHandler* handler);
    BHandler* NextHandler() const { return fNextHandler; }

    /// Locks the looper that this handler belongs to. The handler has to exist when this is called, and is the same and
    /// in the same looper when it returns true; where it may be gone, use BMessenger::LockTarget.
    bool LockLooper() { return LockLooperWithTimeout(B_INFINITE_TIMEOUT) == B_OK; }
    /// @return `B_BAD_HANDLER` if it has no looper, or is gone when the lock is had; `B_TIMED_OUT`; `B_WOULD_BLOCK`
    status_t LockLooperWithTimeout(bigtime_t timeout);
    void UnlockLooper();

    /// For the kits: its name in this process.
    kits::token_t Token() const { return fToken; }

private:
    friend class BLooper;

    std::string fName;
    BLooper* fLooper = nullptr;
    BHandler* fNextHandler = nullptr;
    const kits::token_t fToken;
};
