// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/delivery/PeerAccounts.h"
#include "kits/application/teams/Frame.h"

#include <deque>
#include <memory>

namespace kits {

/// The frames that one team has not taken yet, for one connection. What was begun is sent to its end; of the others a
/// message marked "newest wins" takes the place of older ones with the same code for the same handlers. So one that
/// tells only that something is new waits once per handler, however slow the other side is.
/// One thread at a time.
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
    /// @param code     of the message
    /// @param message  flattened; shared by all teams that it goes to
    /// @return `B_WOULD_BLOCK` if there is no room for it
    status_t AddMessage(MessageFrame frame, uint32 code, std::shared_ptr<const std::string> message);

    /// Sends as much as the socket takes now. False, with errno, if the connection is broken.
    bool Flush(int socket);
    bool IsEmpty() const { return fWaiting.empty(); }
    /// The memory of what waits, in bytes, used or not.
    size_t Capacity() const { return fCapacity; }
    size_t CountFrames() const { return fWaiting.size(); }

private:
    struct Waiting {
        MessageFrame frame;
        uint32 code = 0;
        std::shared_ptr<const std::string> message; ///< null for a control frame
        std::string head;                           ///< empty as long as the targets may still change
        size_t sent = 0;                            ///< of head and message

        size_t Capacity() const;
    };

    /// Whether this one waits for its targets only until there is a newer one with this code.
    static bool IsReplaceable(const Waiting& waiting, uint32 code);
    /// The one that goes to the same targets, or null.
    Waiting* FindReplaceable(const MessageFrame& frame, uint32 code);
    /// Takes these targets out of all of them.
    void TakeOut(std::vector<token_t> targets, uint32 code);
    bool Send(int socket);

    std::deque<Waiting> fWaiting;
    size_t fCapacity = 0;
    PeerClaim fClaim; ///< of that
};

} // namespace kits
