#include "kits/application/teams/SendQueue.h"

#include "kits/kernel/Errors.h"

#include <sys/socket.h>

#include <algorithm>
#include <cerrno>

namespace kits {

size_t SendQueue::Waiting::Size() const
{
    return head.size() + frame.targets.size() * sizeof(token_t) + (message != nullptr ? message->size() : 0);
}

void SendQueue::AddControl(std::string frame)
{
    Waiting& waiting = fWaiting.emplace_back();
    waiting.head = std::move(frame);
    fSize += waiting.Size();
}

status_t SendQueue::AddMessage(MessageFrame frame, uint32 code, std::shared_ptr<const std::string> message)
{
    // One that somebody waits for an answer to is not lost without one.
    Waiting* place = frame.newestWins && !frame.sourceWaits ? Supersede(frame, code) : nullptr;
    if (place != nullptr) {
        fSize = fSize - place->Size();
    } else {
        if (!fWaiting.empty() && fSize + message->size() > kCapacity)
            return B_WOULD_BLOCK;
        place = &fWaiting.emplace_back();
    }
    place->frame = std::move(frame);
    place->code = code;
    place->message = std::move(message);
    fSize += place->Size();
    return B_OK;
}

SendQueue::Waiting* SendQueue::Supersede(const MessageFrame& frame, uint32 code)
{
    const auto isReplaced = [&](const Waiting& waiting) {
        return waiting.message != nullptr && waiting.head.empty() && waiting.frame.newestWins &&
               !waiting.frame.sourceWaits && waiting.code == code;
    };
    // Nearly always the same handlers get the next one.
    for (Waiting& waiting : fWaiting) {
        if (isReplaced(waiting) && waiting.frame.targets == frame.targets)
            return &waiting;
    }
    std::vector<token_t> targets = frame.targets;
    std::sort(targets.begin(), targets.end());
    for (Waiting& waiting : fWaiting) {
        if (!isReplaced(waiting))
            continue;
        fSize -= waiting.Size();
        std::erase_if(waiting.frame.targets, [&targets](token_t target) {
            return std::binary_search(targets.begin(), targets.end(), target);
        });
        fSize += waiting.frame.targets.empty() ? 0 : waiting.Size();
    }
    std::erase_if(fWaiting,
                  [&](const Waiting& waiting) { return isReplaced(waiting) && waiting.frame.targets.empty(); });
    return nullptr;
}

bool SendQueue::Flush(int socket)
{
    while (!fWaiting.empty()) {
        Waiting& first = fWaiting.front();
        const size_t before = first.Size();
        if (first.head.empty()) {
            first.head = MessageFrameHead(first.frame, first.message->size());
            first.frame.targets.clear();
            fSize += first.Size() - before;
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
        fSize -= first.Size();
        fWaiting.pop_front();
    }
    return true;
}

} // namespace kits
