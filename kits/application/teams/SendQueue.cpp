// SPDX-License-Identifier: MIT
#include "kits/application/teams/SendQueue.h"

#include "kits/kernel/Errors.h"

#include <sys/socket.h>

#include <algorithm>
#include <cerrno>

namespace kits {

namespace {

/// The memory of a shared text beyond its characters.
constexpr size_t kSizeOfShared = sizeof(std::string) + 32;
/// A text with more unused capacity than this is copied before it waits.
constexpr size_t kMostWasted = 256;

} // namespace

size_t SendQueue::Waiting::Capacity() const
{
    return sizeof(Waiting) + head.capacity() + frame.targets.capacity() * sizeof(token_t) +
           (message != nullptr ? kSizeOfShared + message->capacity() : 0);
}

status_t SendQueue::AddControl(std::string frame)
{
    Waiting waiting;
    waiting.head = std::move(frame);
    const size_t capacity = fCapacity + waiting.Capacity();
    if (!fClaim.Resize(capacity))
        return B_WOULD_BLOCK;
    fCapacity = capacity;
    fWaiting.push_back(std::move(waiting));
    return B_OK;
}

status_t SendQueue::AddMessage(MessageFrame frame, uint32 code, std::shared_ptr<const std::string> message)
{
    // A message whose sender waits for an answer is not dropped without one.
    const bool replaces = frame.newestWins && !frame.sourceWaits;
    Waiting* place = replaces ? FindReplaceable(frame, code) : nullptr;
    Waiting waiting;
    waiting.frame = std::move(frame);
    waiting.code = code;
    if (!fWaiting.empty() && message->capacity() > message->size() + kMostWasted)
        message = std::make_shared<const std::string>(*message);
    waiting.message = std::move(message);
    const size_t capacity = fCapacity - (place != nullptr ? place->Capacity() : 0) + waiting.Capacity();
    if (!fClaim.Resize(capacity))
        return B_WOULD_BLOCK;
    fCapacity = capacity;
    if (place != nullptr) {
        *place = std::move(waiting);
        return B_OK;
    }
    // Only once there is room: older messages are better than none.
    if (replaces)
        TakeOut(waiting.frame.targets, code);
    fWaiting.push_back(std::move(waiting));
    return B_OK;
}

bool SendQueue::IsReplaceable(const Waiting& waiting, uint32 code)
{
    return waiting.message != nullptr && waiting.head.empty() && waiting.frame.newestWins &&
           !waiting.frame.sourceWaits && waiting.code == code;
}

SendQueue::Waiting* SendQueue::FindReplaceable(const MessageFrame& frame, uint32 code)
{
    // Nearly always the next message has the same handlers.
    const auto found = std::find_if(fWaiting.begin(), fWaiting.end(), [&](const Waiting& waiting) {
        return IsReplaceable(waiting, code) && waiting.frame.targets == frame.targets;
    });
    return found != fWaiting.end() ? &*found : nullptr;
}

void SendQueue::TakeOut(std::vector<token_t> targets, uint32 code)
{
    std::sort(targets.begin(), targets.end());
    for (Waiting& waiting : fWaiting) {
        if (!IsReplaceable(waiting, code))
            continue;
        std::erase_if(waiting.frame.targets, [&targets](token_t target) {
            return std::binary_search(targets.begin(), targets.end(), target);
        });
    }
    std::erase_if(fWaiting, [&](const Waiting& waiting) {
        const bool isErased = IsReplaceable(waiting, code) && waiting.frame.targets.empty();
        fCapacity -= isErased ? waiting.Capacity() : 0;
        return isErased;
    });
    fClaim.Resize(fCapacity);
}

bool SendQueue::Flush(int socket)
{
    const bool isSound = Send(socket);
    fClaim.Resize(fCapacity);
    return isSound;
}

bool SendQueue::Send(int socket)
{
    while (!fWaiting.empty()) {
        Waiting& first = fWaiting.front();
        if (first.head.empty()) {
            const size_t before = first.Capacity();
            first.head = MessageFrameHead(first.frame, first.message->size());
            first.frame.targets = {};
            // A few bytes more than the targets took, for which there may be no room; they are released with the frame.
            fCapacity = fCapacity - before + first.Capacity();
        }
        iovec parts[2] = {{first.head.data(), first.head.size()}, {nullptr, 0}};
        if (first.message != nullptr)
            parts[1] = {const_cast<char*>(first.message->data()), first.message->size()};
        const size_t whole = parts[0].iov_len + parts[1].iov_len;
        size_t skipped = first.sent;
        for (iovec& part : parts) {
            const size_t skip = std::min(skipped, part.iov_len);
            part.iov_base = static_cast<char*>(part.iov_base) + skip;
            part.iov_len -= skip;
            skipped -= skip;
        }
        msghdr message = {};
        message.msg_iov = parts;
        message.msg_iovlen = 2;
        const ssize_t sent = sendmsg(socket, &message, MSG_DONTWAIT | MSG_NOSIGNAL);
        if (sent < 0)
            return errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR;
        first.sent += static_cast<size_t>(sent);
        if (first.sent < whole)
            continue;
        fCapacity -= first.Capacity();
        fWaiting.pop_front();
    }
    return true;
}

} // namespace kits
