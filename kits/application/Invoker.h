// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Messenger.h"

#include <memory>

/// Sends its message to its target when it is invoked: base of controls and menu items.
/// Not shared between threads.
class BInvoker {
public:
    /// @param message  owned from here; may be null
    /// @param handler  belongs to a looper; if it is null, the target is `looper`
    BInvoker(BMessage* message, const BHandler* handler, const BLooper* looper = nullptr);
    virtual ~BInvoker();
    BInvoker(const BInvoker&) = delete;
    BInvoker& operator=(const BInvoker&) = delete;

    /// Takes ownership of the message and deletes the previous one; null for no message.
    virtual status_t SetMessage(BMessage* message);
    BMessage* Message() const { return fMessage.get(); }
    /// The code of the message, 0 without one.
    uint32 Command() const;

    /// @return the result of making a BMessenger from these; after an error there is no target
    virtual status_t SetTarget(const BHandler* handler, const BLooper* looper = nullptr);
    virtual status_t SetTarget(BMessenger target);
    /// True if there is a target and it is in this process.
    bool IsTargetLocal() const { return fTarget.IsTargetLocal(); }
    const BMessenger& Messenger() const { return fTarget; }

    /// Sends a copy of `message`, or of the invoker's own message if that is null, to the target.
    /// @return `B_BAD_VALUE` if there is no message, else the result of sending
    virtual status_t Invoke(BMessage* message = nullptr);

private:
    std::unique_ptr<BMessage> fMessage;
    BMessenger fTarget;
};
