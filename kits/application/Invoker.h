// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Messenger.h"

#include <memory>

/// Something that sends a message of its own to a target when it is invoked: base of controls and menu items.
/// Not shared between threads.
class BInvoker {
public:
    BInvoker();
    /// @param message  owned from here; may be null
    /// @param handler  belongs to a looper, or is null and then the target is `looper`
    BInvoker(BMessage* message, const BHandler* handler, const BLooper* looper = nullptr);
    BInvoker(BMessage* message, BMessenger target);
    virtual ~BInvoker();
    BInvoker(const BInvoker&) = delete;
    BInvoker& operator=(const BInvoker&) = delete;

    /// Takes the message over and deletes the one before; null leaves it without.
    virtual status_t SetMessage(BMessage* message);
    BMessage* Message() const { return fMessage.get(); }
    /// The code of the message, 0 without one.
    uint32 Command() const;

    /// @return what making a BMessenger from these gives; the target is then none
    virtual status_t SetTarget(const BHandler* handler, const BLooper* looper = nullptr);
    virtual status_t SetTarget(BMessenger target);
    /// Whether the target is in this process; false without one.
    bool IsTargetLocal() const { return fTarget.IsTargetLocal(); }
    /// See BMessenger::Target.
    BHandler* Target(BLooper** looper = nullptr) const;
    const BMessenger& Messenger() const { return fTarget; }

    /// Sends a copy of `message`, or of the own message if that is null, to the target.
    /// @return `B_BAD_VALUE` if there is none, else what sending returned
    virtual status_t Invoke(BMessage* message = nullptr);

private:
    std::unique_ptr<BMessage> fMessage;
    BMessenger fTarget;
};
