// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Message.h"
#include "kits/application/Token.h"

#include <atomic>
#include <vector>

namespace kits {

/// Sends messages to other processes. The team port, which belongs to a higher room, implements it and installs itself
/// in its constructor. Any thread.
class OtherTeams {
public:
    virtual ~OtherTeams() = default;

    /// Null before the port is made; no other team can be reached then. Once set, it never changes.
    static OtherTeams* Get() { return sTeams; }
    static void Set(OtherTeams* teams) { sTeams = teams; }

    /// Sends the message, flattened once. Handlers of one team share one frame.
    /// @param replyTo      gets replies; may be unset
    /// @param sourceWaits  true if a thread waits there for the one reply
    /// @return the result for the last team: see BMessenger::SendMessage
    virtual status_t Send(const std::vector<Address>& targets, const BMessage& message, const Address& replyTo,
                          bool sourceWaits) = 0;
    /// True if a message could be sent there now, as far as this process knows.
    virtual bool IsReachable(const Address& target) = 0;

private:
    static inline std::atomic<OtherTeams*> sTeams = nullptr;
};

} // namespace kits
