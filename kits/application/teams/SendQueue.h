// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/delivery/PeerAccounts.h"
#include "kits/application/teams/Frame.h"

#include <deque>
#include <memory>

namespace kits {

/// The frames for one connection that the team has not read yet. A frame that was begun is sent to its end; of the
/// others, a message marked "newest wins" replaces older ones with the same code for the same handlers. So a message
/// that only reports news waits once per handler, however slow the other side is. One thread at a time.
class SendQueue {
public:
    /// @param claim  an empty claim on the receiver's account; the queue charges it for everything that waits
    explicit SendQueue(PeerClaim claim)
        : fClaim(std::move(claim))
    {
    }

    /// @param frame  ready to be sent
    /// @return `B_WOULD_BLOCK` if there is no room for it
    status_t AddControl(std::string frame);
    /// @param code     the code of the message
    /// @param message  flattened; shared by all teams to which it goes
    /// @return `B_WOULD_BLOCK` if there is no room for it
    status_t AddMessage(MessageFrame frame, uint32 code, std::shared_ptr<const std::string> message);

    /// Sends as much as the socket takes now. Returns false, with errno, if the connection is broken.
    bool Flush(int socket);
    bool IsEmpty() const { return fWaiting.empty(); }
    /// The reserved memory of everything that waits, in bytes.
    size_t Capacity() const { return fCapacity; }
    size_t CountFrames() const { return fWaiting.size(); }

private:
    struct Waiting {
        MessageFrame frame;
        uint32 code = 0;
        std::shared_ptr<const std::string> message; ///< null for a control frame
        std::string head;                           ///< empty as long as the targets may still change
        size_t sent = 0;                            ///< of head and message together

        size_t Capacity() const;
    };

    /// Returns whether a newer message with this code may replace this one.
    static bool IsReplaceable(const Waiting& waiting, uint32 code);
    /// Returns the one with the same targets, or null.
    Waiting* FindReplaceable(const MessageFrame& frame, uint32 code);
    /// Removes these targets from all of them.
    void TakeOut(std::vector<token_t> targets, uint32 code);
    bool Send(int socket);

    std::deque<Waiting> fWaiting;
    size_t fCapacity = 0;
    PeerClaim fClaim; ///< for fCapacity
};

} // namespace kits
