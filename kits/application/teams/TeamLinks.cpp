// SPDX-License-Identifier: MIT
#include "kits/application/teams/TeamLinks.h"

#include "kits/application/teams/TeamSocket.h"
#include "kits/kernel/Errors.h"

#include <sys/socket.h>

#include <algorithm>
#include <cerrno>

namespace kits {

namespace {

// The maximum of bytes that may come back on a connection; all answers are short.
constexpr size_t kMostOfAnAnswer = 64;

} // namespace

void TeamLinks::SetFolder(const TeamFolder* folder)
{
    std::lock_guard lock(fMutex);
    fFolder = folder;
    if (folder == nullptr) {
        fLinks.clear();
        fGivenUp.clear();
        fHasGivenUp = false;
    }
}

TeamLinks::Link* TeamLinks::LinkTo(team_address team, status_t* status)
{
    *status = B_BAD_HANDLER;
    const auto found = fLinks.find(team);
    if (found != fLinks.end()) {
        if (found->second->isBroken)
            return nullptr;
        *status = B_OK;
        return found->second.get();
    }
    if (fFolder == nullptr || std::find(fGivenUp.begin(), fGivenUp.end(), team) != fGivenUp.end())
        return nullptr;
    auto link = std::make_unique<Link>(fAccounts, team);
    if (!link->claim.Resize(1)) {
        *status = B_NO_MORE_FDS;
        return nullptr;
    }
    *status = Connect(*fFolder, team, &link->socket);
    if (*status != B_OK)
        return nullptr;
    link->reader.SetLimit(kMostOfAnAnswer);
    link->queue.AddControl(HelloFrame(ThisTeam()));
    Flush(link.get());
    fHooks.wake();
    return (fLinks[team] = std::move(link)).get();
}

void TeamLinks::Flush(Link* link)
{
    if (!link->queue.Flush(link->socket.Get()))
        link->isBroken = true;
    if (link->queue.Capacity() < bounds::kMostUnsentOfAProcess / 2)
        link->fullSince = Clock::time_point::max();
}

status_t TeamLinks::Send(team_address team, MessageFrame frame, uint32 code, std::shared_ptr<const std::string> message)
{
    std::lock_guard lock(fMutex);
    status_t status;
    Link* link = LinkTo(team, &status);
    if (link == nullptr)
        return status;
    std::erase_if(frame.targets, [link](token_t target) { return link->goneHandlers.contains(target); });
    if (frame.targets.empty())
        return B_BAD_HANDLER;
    const bool wasEmpty = link->queue.IsEmpty();
    status = link->queue.AddMessage(std::move(frame), code, std::move(message));
    // A team that has taken everything so far is not to blame if others leave no room for it.
    if (status == B_WOULD_BLOCK && !wasEmpty && link->fullSince == Clock::time_point::max()) {
        link->fullSince = fHooks.now();
        fHooks.wake();
    }
    if (wasEmpty) {
        Flush(link);
        if (!link->queue.IsEmpty() || link->isBroken)
            fHooks.wake();
    }
    return link->isBroken ? B_BAD_HANDLER : status;
}

bool TeamLinks::IsReachable(const Address& address)
{
    std::lock_guard lock(fMutex);
    status_t status;
    const Link* link = LinkTo(address.team, &status);
    return link != nullptr ? !link->goneHandlers.contains(address.token) : status == B_WOULD_BLOCK;
}

void TeamLinks::Forgive(team_address team)
{
    if (!fHasGivenUp)
        return;
    std::lock_guard lock(fMutex);
    std::erase(fGivenUp, team);
    fHasGivenUp = !fGivenUp.empty();
}

void TeamLinks::AppendPolls(std::vector<pollfd>* polls)
{
    std::lock_guard lock(fMutex);
    fPolled.clear();
    for (const auto& [team, link] : fLinks) {
        fPolled.push_back(team);
        const int events = link->queue.IsEmpty() ? POLLIN : POLLIN | POLLOUT;
        polls->push_back({link->socket.Get(), static_cast<short>(events), 0});
    }
}

TeamLinks::Clock::time_point TeamLinks::Deadline()
{
    std::lock_guard lock(fMutex);
    Clock::time_point deadline = Clock::time_point::max();
    for (const auto& [team, link] : fLinks) {
        if (link->isBroken)
            return Clock::time_point::min();
        deadline = std::min(deadline, link->nextPing);
        if (link->fullSince != Clock::time_point::max())
            deadline = std::min(deadline, link->fullSince + bounds::kLongestFull);
    }
    return deadline;
}

void TeamLinks::Handle(const pollfd* polls, size_t count)
{
    std::vector<team_address> closed;
    std::vector<std::pair<team_address, bool>> hung;
    {
        std::lock_guard lock(fMutex);
        const Clock::time_point now = fHooks.now();
        for (size_t i = 0; i < count && i < fPolled.size(); ++i) {
            const auto found = fLinks.find(fPolled[i]);
            if (found == fLinks.end())
                continue;
            Link* link = found->second.get();
            bool hasAnswered = false;
            if ((polls[i].revents & (POLLIN | POLLHUP | POLLERR)) != 0)
                Read(link, &hasAnswered);
            if ((polls[i].revents & POLLOUT) != 0)
                Flush(link);
            if (hasAnswered && link->isHung)
                hung.emplace_back(found->first, false);
            link->isHung = link->isHung && !hasAnswered;
        }
        for (auto& [team, link] : fLinks) {
            if (link->fullSince != Clock::time_point::max() && now >= link->fullSince + bounds::kLongestFull) {
                link->isBroken = true;
                if (fGivenUp.size() >= bounds::kMostGivenUp)
                    fGivenUp.erase(fGivenUp.begin());
                fGivenUp.push_back(team);
                fHasGivenUp = true;
            }
            if (now < link->nextPing)
                continue;
            link->nextPing = now + kPingInterval;
            if (link->countUnanswered < 2) {
                ++link->countUnanswered;
                // A ping for which there is no room counts as unanswered.
                link->queue.AddControl(NumberFrame(FrameKind::kPing, ++link->lastPing));
                Flush(link.get());
            } else if (!link->isHung) {
                link->isHung = true;
                hung.emplace_back(team, true);
            }
        }
        std::erase_if(fLinks, [&closed](const auto& entry) {
            if (entry.second->isBroken)
                closed.push_back(entry.first);
            return entry.second->isBroken;
        });
    }
    for (const auto& [team, isHung] : hung)
        fHooks.onHung(team, isHung);
    for (const team_address team : closed)
        fHooks.onClosed(team);
}

void TeamLinks::Read(Link* link, bool* hasAnswered)
{
    char buffer[4096];
    const ssize_t size = recv(link->socket.Get(), buffer, sizeof(buffer), 0);
    if (size < 0 && (errno == EAGAIN || errno == EINTR))
        return;
    if (size <= 0) {
        link->isBroken = true;
        return;
    }
    link->reader.Add({buffer, static_cast<size_t>(size)});
    FrameKind kind;
    std::string_view content;
    FrameReader::Result result;
    while ((result = link->reader.Next(&kind, &content)) == FrameReader::Result::kFrame)
        if (!HandleFrame(link, kind, content, hasAnswered))
            link->isBroken = true;
    if (result == FrameReader::Result::kBroken)
        link->isBroken = true;
}

bool TeamLinks::HandleFrame(Link* link, FrameKind kind, std::string_view content, bool* hasAnswered)
{
    const std::optional<uint64> number = ReadNumber(content);
    // kClosed ends the link, and so does any unexpected frame.
    if (!number || (kind != FrameKind::kPong && kind != FrameKind::kGone))
        return false;
    if (kind == FrameKind::kGone) {
        if (link->goneHandlers.size() < bounds::kMostGone)
            link->goneHandlers.insert(static_cast<token_t>(*number));
    } else if (*number == link->lastPing) {
        link->countUnanswered = 0;
        *hasAnswered = true;
    }
    return true;
}

void TeamLinks::SetWatched(team_address team, bool isWatched)
{
    std::lock_guard lock(fMutex);
    status_t status;
    Link* link = isWatched || fLinks.contains(team) ? LinkTo(team, &status) : nullptr;
    if (link == nullptr)
        return;
    const bool wasWatched = link->nextPing != Clock::time_point::max();
    if (isWatched && !wasWatched)
        link->nextPing = fHooks.now();
    if (!isWatched)
        link->nextPing = Clock::time_point::max();
}

} // namespace kits
