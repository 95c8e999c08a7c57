#include "kits/application/teams/Visitors.h"

#include "kits/application/MessagePrivate.h"
#include "kits/application/delivery/PostOffice.h"
#include "kits/application/messages/MessageFormat.h"
#include "kits/application/teams/TeamSocket.h"

#include <sys/socket.h>

#include <algorithm>
#include <cerrno>
#include <utility>

namespace kits {

namespace {

// What a visitor may leave unread of the few bytes that it is told.
constexpr size_t kMostOut = 256 * 1024;
constexpr size_t kMostOfAStranger = 64;
constexpr auto kPauseWithoutDescriptors = std::chrono::seconds(1);
constexpr auto kPauseBetweenTries = std::chrono::milliseconds(10);

} // namespace

void Visitors::SetListener(FileDescriptor listener)
{
    fListener = std::move(listener);
}

void Visitors::Clear()
{
    fListener.Close();
    std::list<Visitor> visitors; // what they hold is destroyed without the mutex
    std::lock_guard lock(fMutex);
    for (Visitor& visitor : fVisitors)
        RemoveFromWakeSet(&visitor);
    visitors.swap(fVisitors);
    fShift.End();
    fHasKnown = false;
}

bool Visitors::IsAccepting() const
{
    const auto isStranger = [](const Visitor& visitor) { return visitor.IsStranger(); };
    return fListener.IsOpen() && Clock::now() >= fAcceptAfter && fVisitors.size() < kMaxVisitors &&
           static_cast<size_t>(std::count_if(fVisitors.begin(), fVisitors.end(), isStranger)) < kMaxStrangers;
}

bool Visitors::IsForPort(const Visitor& visitor) const
{
    return !visitor.isInWakeSet || !fShift.IsMains();
}

void Visitors::AppendPolls(std::vector<pollfd>* polls)
{
    std::lock_guard lock(fMutex);
    // A negative descriptor is passed over.
    polls->push_back({IsAccepting() ? fListener.Get() : -1, POLLIN, 0});
    polls->push_back({fShift.Descriptor(), POLLIN, 0});
    for (const Visitor& visitor : fVisitors) {
        const int events = (IsForPort(visitor) ? POLLIN : 0) | (visitor.out.empty() ? 0 : POLLOUT);
        // Without these not even its end is of interest, which would be heard of all the time.
        const bool isPolled = events != 0 && !visitor.held;
        polls->push_back({isPolled ? visitor.socket.Get() : -1, static_cast<short>(events), 0});
    }
}

Visitors::Clock::time_point Visitors::Deadline()
{
    std::lock_guard lock(fMutex);
    Clock::time_point deadline = Clock::time_point::max();
    if (fListener.IsOpen() && fAcceptAfter > Clock::now())
        deadline = fAcceptAfter;
    for (const Visitor& visitor : fVisitors) {
        if (visitor.isGone)
            return Clock::time_point::min();
        if (visitor.IsStranger())
            deadline = std::min(deadline, visitor.deadline);
        if (visitor.held)
            deadline = std::min(deadline, Clock::now() + kPauseBetweenTries);
    }
    return deadline;
}

void Visitors::Handle(const pollfd* polls)
{
    std::list<Visitor> gone; // what they hold is destroyed without the mutex
    {
        std::lock_guard lock(fMutex);
        const Clock::time_point now = Clock::now();
        const bool isAnyoneWaiting = polls[0].revents != 0;
        if (polls[1].revents != 0)
            fShift.Check();
        polls += 2;
        for (auto i = fVisitors.begin(); i != fVisitors.end();) {
            const auto visitor = i++;
            const int found = (polls++)->revents;
            // It may be gone since a moment ago: its team has come with a new one.
            if (!visitor->isGone && visitor->held) {
                if (DeliverHeld(&*visitor))
                    HandleFrames(&*visitor);
            } else if (!visitor->isGone && IsForPort(*visitor) && (found & (POLLIN | POLLHUP | POLLERR)) != 0) {
                ReadFrom(&*visitor);
            }
            if (!visitor->isGone && (found & POLLOUT) != 0)
                Write(&*visitor);
            if (visitor->IsStranger() && now >= visitor->deadline)
                visitor->isGone = true;
        }
        for (auto i = fVisitors.begin(); i != fVisitors.end();) {
            const auto visitor = i++;
            if (visitor->isGone) {
                RemoveFromWakeSet(&*visitor);
                gone.splice(gone.end(), fVisitors, visitor);
            }
        }
        if (isAnyoneWaiting)
            Accept();
        fHasKnown = std::any_of(fVisitors.begin(), fVisitors.end(),
                                [](const Visitor& visitor) { return !visitor.IsStranger(); });
        if (!fHasKnown)
            fShift.End();
    }
    for (const Visitor& visitor : gone) {
        if (!visitor.IsStranger() && !visitor.isReplaced)
            fHooks.onGone(visitor.team);
    }
}

void Visitors::MainWaits()
{
    if (!fHasKnown)
        return;
    std::lock_guard lock(fMutex);
    bool isNew = fShift.MainWaits();
    if (!fShift.IsMains())
        return;
    for (Visitor& visitor : fVisitors) {
        if (visitor.IsStranger() || visitor.isInWakeSet || visitor.isGone || visitor.held)
            continue;
        visitor.isInWakeSet = WakeSet::Add(visitor.socket.Get(), visitor.id);
        isNew = isNew || visitor.isInWakeSet;
    }
    if (isNew)
        fHooks.wake();
}

void Visitors::MainWorks()
{
    if (!fHasKnown)
        return;
    std::lock_guard lock(fMutex);
    fShift.MainWorks();
}

void Visitors::Read(WakeSet::Number number)
{
    std::lock_guard lock(fMutex);
    for (Visitor& visitor : fVisitors) {
        if (visitor.id != number || !visitor.isInWakeSet)
            continue;
        if (!visitor.isGone && !visitor.held)
            ReadFrom(&visitor);
        if (!visitor.isGone && !visitor.held && visitor.out.empty())
            return;
        // The thread of the port has to see to this one.
        if (visitor.isGone || visitor.held)
            RemoveFromWakeSet(&visitor);
        fHooks.wake();
        return;
    }
}

void Visitors::RemoveFromWakeSet(Visitor* visitor)
{
    if (std::exchange(visitor->isInWakeSet, false))
        WakeSet::Remove(visitor->socket.Get());
}

void Visitors::Accept()
{
    while (IsAccepting()) {
        FileDescriptor socket(accept4(fListener.Get(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
        if (!socket.IsOpen()) {
            if (errno == EINTR || errno == ECONNABORTED)
                continue;
            if (errno != EAGAIN)
                fAcceptAfter = Clock::now() + kPauseWithoutDescriptors;
            return;
        }
        pid_t process;
        if (!IsOfThisUser(socket.Get(), &process))
            continue;
        Visitor& visitor = fVisitors.emplace_back();
        visitor.id = ++fLastId;
        visitor.socket = std::move(socket);
        visitor.process = process;
        visitor.deadline = Clock::now() + kTimeToSayHello;
        visitor.reader.SetLimit(kMostOfAStranger);
    }
}

void Visitors::ReadFrom(Visitor* visitor)
{
    char buffer[64 * 1024];
    const ssize_t size = recv(visitor->socket.Get(), buffer, sizeof(buffer), 0);
    if (size > 0) {
        visitor->reader.Add({buffer, static_cast<size_t>(size)});
        HandleFrames(visitor);
    } else if (size == 0 || (errno != EAGAIN && errno != EINTR)) {
        visitor->isGone = true;
    }
}

void Visitors::HandleFrames(Visitor* visitor)
{
    FrameKind kind;
    std::string_view content;
    while (!visitor->isGone && !visitor->held) {
        switch (visitor->reader.Next(&kind, &content)) {
        case FrameReader::Result::kNone:
            return;
        case FrameReader::Result::kBroken:
            visitor->isGone = true;
            break;
        case FrameReader::Result::kFrame:
            if (!HandleFrame(visitor, kind, content))
                visitor->isGone = true;
            break;
        }
    }
}

bool Visitors::HandleFrame(Visitor* visitor, FrameKind kind, std::string_view content)
{
    if (visitor->IsStranger()) {
        const std::optional<team_address> team = kind == FrameKind::kHello ? ReadHello(content) : std::nullopt;
        if (!team || TeamIdOf(*team) != visitor->process)
            return false;
        for (Visitor& other : fVisitors) {
            if (other.team == *team)
                other.isGone = other.isReplaced = true;
        }
        visitor->team = *team;
        visitor->reader.SetLimit(bounds::kMostFrame);
        fHasKnown = true;
        fHooks.onHeard(*team);
        return true;
    }
    fHooks.onHeard(visitor->team);
    if (kind == FrameKind::kMessage)
        return HandleMessage(visitor, content);
    const std::optional<uint64> number = kind == FrameKind::kPing ? ReadNumber(content) : std::nullopt;
    if (number)
        fHooks.onPing(visitor->id, *number);
    return number.has_value();
}

bool Visitors::HandleMessage(Visitor* visitor, std::string_view content)
{
    std::string_view flat;
    std::optional<MessageFrame> frame = ReadMessageFrame(content, &flat);
    BMessage message;
    if (!frame || ReadMessage(flat, &message) != B_OK)
        return false;
    message.SetNewestWins(frame->newestWins);
    visitor->held = Delivery{};
    visitor->held->frame = std::move(*frame);
    visitor->held->message = std::move(message);
    visitor->held->weight = flat.size();
    DeliverHeld(visitor);
    return true;
}

bool Visitors::DeliverHeld(Visitor* visitor)
{
    Delivery& held = *visitor->held;
    const std::vector<token_t>& targets = held.frame.targets;
    for (; held.next < targets.size(); ++held.next) {
        if (held.copy == nullptr) {
            held.copy = held.next + 1 < targets.size() ? std::make_unique<BMessage>(held.message)
                                                       : std::make_unique<BMessage>(std::move(held.message));
            MessageAccess::SetDelivered(*held.copy, held.frame.replyTo, held.frame.sourceWaits);
        }
        const token_t target = targets[held.next];
        const status_t status = PostOffice::Get().Post(target, held.copy, held.weight);
        if (status == B_WOULD_BLOCK)
            return false;
        // One that is between two loopers may be in one again before the other side has heard of it.
        if (status != B_OK && !PostOffice::Get().Exists(target))
            Tell(visitor, NumberFrame(FrameKind::kGone, static_cast<uint64>(target)));
        held.copy = nullptr; // undelivered, it answers its sender
    }
    visitor->held.reset();
    return true;
}

void Visitors::AnswerPing(uint64 id, uint64 number)
{
    std::lock_guard lock(fMutex);
    for (Visitor& visitor : fVisitors) {
        if (visitor.id != id)
            continue;
        Tell(&visitor, NumberFrame(FrameKind::kPong, number));
        if (visitor.isGone || !visitor.out.empty())
            fHooks.wake();
        return;
    }
}

void Visitors::Tell(Visitor* visitor, const std::string& frame)
{
    visitor->out += frame;
    Write(visitor);
    if (visitor->out.size() > kMostOut)
        visitor->isGone = true;
}

void Visitors::Write(Visitor* visitor)
{
    const ssize_t sent =
        send(visitor->socket.Get(), visitor->out.data(), visitor->out.size(), MSG_DONTWAIT | MSG_NOSIGNAL);
    if (sent >= 0)
        visitor->out.erase(0, static_cast<size_t>(sent));
    else if (errno != EAGAIN && errno != EINTR)
        visitor->isGone = true;
}

} // namespace kits
