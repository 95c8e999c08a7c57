// SPDX-License-Identifier: MIT
#include "kits/application/teams/Visitors.h"

#include "kits/application/MainThread.h"
#include "kits/application/delivery/PostOffice.h"
#include "kits/application/messages/MessageField.h"
#include "kits/application/messages/MessageFormat.h"
#include "kits/application/messages/MessagePrivate.h"
#include "kits/application/teams/TeamSocket.h"

#include <sys/ioctl.h>
#include <sys/socket.h>

#include <algorithm>
#include <cerrno>
#include <utility>

namespace kits {

namespace {

constexpr auto kPauseBetweenTries = std::chrono::milliseconds(10);
/// Delay before another look at a visitor whose frame is late, but not for want of bytes.
constexpr auto kRespite = std::chrono::milliseconds(100);
constexpr size_t kMostNewcomersAtOnce = 16;
/// A smaller capacity is not worth giving back.
constexpr size_t kKeptOfAnswers = 256;

} // namespace

void Visitors::Clear()
{
    fListener.Close();
    std::list<Visitor> visitors; // their claims and messages are destroyed after the mutex is released
    std::lock_guard lock(fMutex);
    for (Visitor& visitor : fVisitors)
        RemoveFromWakeSet(&visitor);
    visitors.swap(fVisitors);
    fShift.End();
    fHasKnown = false;
}

size_t Visitors::CountWelcome() const
{
    if (!fListener.IsOpen() || fHooks.now() < fAcceptAfter)
        return 0;
    const auto isStranger = [](const Visitor& visitor) { return visitor.IsStranger(); };
    const auto countStrangers = static_cast<size_t>(std::count_if(fVisitors.begin(), fVisitors.end(), isStranger));
    return std::min({kMostNewcomersAtOnce,
                     bounds::kMostConnections - std::min(bounds::kMostConnections, fVisitors.size()),
                     bounds::kMostStrangers - std::min(bounds::kMostStrangers, countStrangers)});
}

void Visitors::AppendPolls(std::vector<pollfd>* polls)
{
    std::lock_guard lock(fMutex);
    // poll() ignores a negative descriptor.
    polls->push_back({CountWelcome() > 0 ? fListener.Get() : -1, POLLIN, 0});
    polls->push_back({fShift.Descriptor(), POLLIN, 0});
    for (const Visitor& visitor : fVisitors) {
        const int events = (IsForPort(visitor) ? POLLIN : 0) | (visitor.out.empty() ? 0 : POLLOUT);
        // Without these events not even its end matters, which poll() would otherwise report all the time.
        const bool isPolled = events != 0 && visitor.IsRead();
        polls->push_back({isPolled ? visitor.socket.Get() : -1, static_cast<short>(events), 0});
    }
}

Visitors::Clock::time_point Visitors::Deadline()
{
    std::lock_guard lock(fMutex);
    Clock::time_point deadline = Clock::time_point::max();
    if (fListener.IsOpen() && fAcceptAfter > fHooks.now())
        deadline = fAcceptAfter;
    for (const Visitor& visitor : fVisitors) {
        if (visitor.isGone)
            return Clock::time_point::min();
        deadline = std::min(deadline, visitor.deadline);
        if (visitor.obstacle == Obstacle::kFullLooper)
            deadline = std::min(deadline, fHooks.now() + kPauseBetweenTries);
    }
    return deadline;
}

void Visitors::Handle(const pollfd* polls)
{
    size_t countWelcome = 0;
    if (polls[0].revents != 0) {
        std::lock_guard lock(fMutex);
        countWelcome = CountWelcome();
    }
    std::vector<Newcomer> newcomers = Accept(countWelcome);
    std::list<Visitor> gone; // their claims and messages are destroyed after the mutex is released
    {
        std::lock_guard lock(fMutex);
        if (polls[1].revents != 0)
            fShift.Check();
        GoOnWhereThereIsRoom();
        polls += 2;
        for (auto i = fVisitors.begin(); i != fVisitors.end();) {
            const auto visitor = i++;
            const int found = (polls++)->revents;
            // It may just have gone: its team has made a new connection.
            if (!visitor->isGone && visitor->obstacle == Obstacle::kFullLooper)
                GoOn(&*visitor);
            else if (visitor->IsRead() && IsForPort(*visitor) && (found & (POLLIN | POLLHUP | POLLERR)) != 0)
                ReadFrom(&*visitor);
            if (!visitor->isGone && (found & POLLOUT) != 0)
                Write(&*visitor);
            if (!visitor->isGone)
                CheckDeadline(&*visitor);
        }
        for (auto i = fVisitors.begin(); i != fVisitors.end();) {
            const auto visitor = i++;
            if (visitor->isGone) {
                RemoveFromWakeSet(&*visitor);
                gone.splice(gone.end(), fVisitors, visitor);
            }
        }
        for (Newcomer& newcomer : newcomers)
            LetIn(std::move(newcomer));
        fHasKnown = std::any_of(fVisitors.begin(), fVisitors.end(),
                                [](const Visitor& visitor) { return !visitor.IsStranger(); });
        if (!fHasKnown)
            fShift.End();
    }
    for (const Visitor& visitor : gone)
        if (!visitor.IsStranger() && !visitor.isReplaced)
            fHooks.onGone(visitor.team);
}

void Visitors::MainWaits()
{
    if (!fHasKnown)
        return;
    std::lock_guard lock(fMutex);
    bool isNew = fShift.MainWaits();
    if (!fShift.IsMains())
        return;
    GoOnWhereThereIsRoom();
    for (Visitor& visitor : fVisitors) {
        // The port's thread removes visitors that have gone, and sends the replies that still wait.
        isNew = isNew || visitor.isGone;
        if (visitor.IsStranger() || visitor.isInWakeSet || !visitor.IsRead())
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
        const Clock::time_point deadline = visitor.deadline;
        if (visitor.IsRead())
            ReadFrom(&visitor);
        if (visitor.IsRead() && visitor.out.empty() && visitor.deadline >= deadline)
            return;
        if (!visitor.IsRead())
            RemoveFromWakeSet(&visitor);
        // This visitor needs the port's thread, unless only room is missing: that the main thread checks itself.
        if (visitor.isGone || visitor.obstacle != Obstacle::kNoRoom)
            fHooks.wake();
        return;
    }
}

void Visitors::RemoveFromWakeSet(Visitor* visitor)
{
    if (std::exchange(visitor->isInWakeSet, false))
        WakeSet::Remove(visitor->socket.Get());
}

std::vector<Visitors::Newcomer> Visitors::Accept(size_t most)
{
    std::vector<Newcomer> newcomers;
    for (; most > 0; --most) {
        if (!HasDescriptorForConnection()) {
            fAcceptAfter = fHooks.now() + bounds::kPauseWithoutDescriptors;
            break;
        }
        FileDescriptor socket(accept4(fListener.Get(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
        if (!socket.IsOpen()) {
            if (errno == EINTR || errno == ECONNABORTED)
                continue;
            if (errno != EAGAIN)
                fAcceptAfter = fHooks.now() + bounds::kPauseWithoutDescriptors;
            break;
        }
        pid_t process;
        if (!IsOfThisUser(socket.Get(), &process))
            continue;
        const team_address team = TeamOfProcess(process);
        newcomers.push_back({std::move(socket), team != 0 ? team : static_cast<team_address>(process) << 32});
    }
    return newcomers;
}

void Visitors::LetIn(Newcomer newcomer)
{
    Visitor& visitor = fVisitors.emplace_back();
    visitor.id = ++fLastId;
    visitor.socket = std::move(newcomer.socket);
    visitor.process = newcomer.process;
    visitor.connection = PeerClaim(fAccounts, visitor.process, Resource::kConnections);
    visitor.incomplete = PeerClaim(fAccounts, visitor.process, Resource::kIncomplete);
    visitor.unsent = PeerClaim(fAccounts, visitor.process, Resource::kUnsent);
    visitor.deadline = fHooks.now() + bounds::kTimeToSayHello;
    visitor.reader.SetLimit(bounds::kMostFrameOfAStranger);
    if (!visitor.connection.Resize(1))
        Close(&visitor, CloseReason::kTooManyConnections);
}

size_t Visitors::ReadSize(const Visitor& visitor) const
{
    // So little always has room: otherwise the rest of one connection could keep out the next one of the same process.
    if (visitor.IsStranger())
        return 4 * bounds::kMostFrameOfAStranger;
    const FrameReader& reader = visitor.reader;
    const size_t wanted = std::clamp(reader.Missing(), bounds::kMostReadAtOnce, bounds::kMostReadOfAFrame);
    const size_t free = reader.Capacity() - reader.Waiting();
    if (free >= wanted)
        return wanted;
    return std::min(wanted, free + fAccounts->Room(visitor.process, Resource::kIncomplete));
}

void Visitors::ReadFrom(Visitor* visitor)
{
    char buffer[bounds::kMostReadOfAFrame];
    const size_t most = ReadSize(*visitor);
    if (most == 0) {
        NoteNoRoom(visitor, Resource::kIncomplete, 1);
        SetDeadline(visitor);
        return;
    }
    const ssize_t size = recv(visitor->socket.Get(), buffer, most, 0);
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
    while (visitor->IsRead()) {
        const FrameReader::Result result = visitor->reader.Next(&kind, &content);
        if (result == FrameReader::Result::kNone)
            break;
        if (result == FrameReader::Result::kBroken)
            Close(visitor, visitor->IsStranger() ? CloseReason::kBadHello : CloseReason::kBadFrame);
        else
            HandleFrame(visitor, kind, content);
    }
    visitor->reader.Trim();
    // Its room was claimed before it was read.
    visitor->incomplete.Resize(visitor->reader.Capacity());
    SetDeadline(visitor);
}

void Visitors::HandleFrame(Visitor* visitor, FrameKind kind, std::string_view content)
{
    if (visitor->IsStranger()) {
        HandleHello(visitor, kind, content);
        return;
    }
    fHooks.onHeard(visitor->team);
    if (kind == FrameKind::kMessage) {
        HandleMessage(visitor, content);
        return;
    }
    visitor->ping = kind == FrameKind::kPing ? ReadNumber(content) : std::nullopt;
    if (!visitor->ping)
        Close(visitor, CloseReason::kBadFrame);
    else if (!std::exchange(fIsPingWaiting, true))
        fHooks.onPing();
}

void Visitors::HandleHello(Visitor* visitor, FrameKind kind, std::string_view content)
{
    const std::optional<team_address> team = kind == FrameKind::kHello ? ReadHello(content) : std::nullopt;
    // If the process has ended meanwhile, its start time cannot be read.
    const bool isKnown = (visitor->process & 0xFFFFFFFF) != 0;
    if (!team || (isKnown ? *team != visitor->process : TeamIdOf(*team) != TeamIdOf(visitor->process))) {
        Close(visitor, CloseReason::kBadHello);
        return;
    }
    for (Visitor& other : fVisitors) {
        if (other.team != *team || other.isGone)
            continue;
        Close(&other, CloseReason::kReplaced);
        other.isReplaced = true;
    }
    visitor->team = *team;
    visitor->reader.SetLimit(bounds::kMostFrame);
    fHasKnown = true;
    fHooks.onHeard(*team);
}

void Visitors::HandleMessage(Visitor* visitor, std::string_view content)
{
    std::string_view flat;
    std::optional<MessageFrame> frame = ReadMessageFrame(content, &flat);
    BMessage message;
    if (!frame || ReadMessage(flat, &message, kFrameLimits) != B_OK) {
        Close(visitor, CloseReason::kBadFrame);
        return;
    }
    const size_t size = MemoryOf(message) + frame->targets.capacity() * sizeof(token_t);
    PeerClaim bytes(fAccounts, visitor->process, Resource::kUnhandledBytes);
    if (size > bounds::kMostUnhandledBytesOfAProcess / 2) {
        Close(visitor, CloseReason::kBadFrame);
        return;
    }
    if (!bytes.Resize(size)) {
        NoteNoRoom(visitor, Resource::kUnhandledBytes, size);
        visitor->reader.PutBack();
        return;
    }
    message.SetNewestWins(frame->newestWins);
    visitor->held = Delivery{};
    visitor->held->frame = std::move(*frame);
    visitor->held->message = std::move(message);
    visitor->held->bytes = std::move(bytes);
    DeliverHeld(visitor);
}

void Visitors::NoteNoRoom(Visitor* visitor, Resource resource, size_t amount)
{
    visitor->obstacle = Obstacle::kNoRoom;
    visitor->missing = resource;
    visitor->countMissing = amount;
    // Some may have been released already.
    if (fAccounts->HasRoom(visitor->process, resource, amount))
        NoteRoom();
}

bool Visitors::DeliverHeld(Visitor* visitor)
{
    Delivery& held = *visitor->held;
    const std::vector<token_t>& targets = held.frame.targets;
    for (; held.next < targets.size(); ++held.next) {
        if (held.copy == nullptr) {
            const bool isLast = held.next + 1 == targets.size();
            auto work = std::make_unique<PeerWork>();
            work->message = PeerClaim(fAccounts, visitor->process, Resource::kUnhandled);
            work->bytes = PeerClaim(fAccounts, visitor->process, Resource::kUnhandledBytes);
            if (!work->message.Resize(1)) {
                NoteNoRoom(visitor, Resource::kUnhandled, 1);
                return false;
            }
            if (!isLast && !work->bytes.Resize(held.bytes.Amount())) {
                NoteNoRoom(visitor, Resource::kUnhandledBytes, held.bytes.Amount());
                return false;
            }
            held.work = std::move(work);
            if (isLast)
                held.work->bytes = std::move(held.bytes);
            held.copy =
                isLast ? std::make_unique<BMessage>(std::move(held.message)) : std::make_unique<BMessage>(held.message);
            MessageAccess::SetDelivered(*held.copy, held.frame.replyTo, held.frame.sourceWaits);
        }
        const token_t target = targets[held.next];
        const status_t status = PostOffice::Get().Post(target, held.copy, &held.work);
        if (status == B_WOULD_BLOCK) {
            visitor->obstacle = Obstacle::kFullLooper;
            return false;
        }
        // A handler that moves between two loopers may be in one again before the other side hears of it.
        if (status != B_OK && !PostOffice::Get().Exists(target))
            Tell(visitor, NumberFrame(FrameKind::kGone, static_cast<uint64>(target)));
        held.copy = nullptr; // undelivered, it replies to its sender
        held.work = nullptr;
    }
    visitor->held.reset();
    return true;
}

void Visitors::GoOn(Visitor* visitor)
{
    visitor->obstacle = Obstacle::kNone;
    if (!visitor->held || DeliverHeld(visitor))
        HandleFrames(visitor);
}

void Visitors::NoteRoom()
{
    fHasRoom = true;
    // The main thread sees it before it waits. If it is held up instead, its shift ends, and the other thread sees it.
    if (!IsMainThread() || !fShift.IsMains())
        fHooks.wake();
}

void Visitors::GoOnWhereThereIsRoom()
{
    if (!fHasRoom.exchange(false))
        return;
    for (Visitor& visitor : fVisitors)
        if (!visitor.isGone && visitor.obstacle == Obstacle::kNoRoom &&
            fAccounts->HasRoom(visitor.process, visitor.missing, visitor.countMissing))
            GoOn(&visitor);
}

void Visitors::SetDeadline(Visitor* visitor)
{
    if (visitor->IsStranger())
        return;
    const FrameReader& reader = visitor->reader;
    if (!visitor->IsRead() || reader.Waiting() == 0) {
        visitor->deadline = Clock::time_point::max();
    } else if (visitor->deadline == Clock::time_point::max() || visitor->countFrames != reader.CountFrames()) {
        visitor->deadline = fHooks.now() + bounds::kTimeForAFrame;
        visitor->countFrames = reader.CountFrames();
    }
}

void Visitors::CheckDeadline(Visitor* visitor)
{
    if (fHooks.now() < visitor->deadline)
        return;
    // Reads what has arrived in time first: this process may be the one that was held up.
    int waiting = 0;
    if (ioctl(visitor->socket.Get(), FIONREAD, &waiting) == 0 && waiting > 0) {
        visitor->deadline = fHooks.now() + kRespite;
        return;
    }
    Close(visitor, visitor->IsStranger() ? CloseReason::kNoHello : CloseReason::kSlowFrame);
}

void Visitors::AnswerPings()
{
    std::lock_guard lock(fMutex);
    fIsPingWaiting = false;
    for (Visitor& visitor : fVisitors) {
        if (!visitor.ping)
            continue;
        const uint64 number = *std::exchange(visitor.ping, std::nullopt);
        if (!visitor.isGone)
            Tell(&visitor, NumberFrame(FrameKind::kPong, number));
        if (visitor.isGone || !visitor.out.empty())
            fHooks.wake();
    }
}

void Visitors::Tell(Visitor* visitor, const std::string& frame)
{
    if (visitor->out.size() + frame.size() > visitor->out.capacity()) {
        const size_t capacity = std::max(2 * visitor->out.capacity(), frame.size());
        if (capacity > bounds::kMostAnswers || !visitor->unsent.Resize(capacity)) {
            Close(visitor, CloseReason::kUnreadAnswers);
            return;
        }
        visitor->out.reserve(capacity);
    }
    visitor->out += frame;
    Write(visitor);
}

void Visitors::Write(Visitor* visitor)
{
    const ssize_t sent =
        send(visitor->socket.Get(), visitor->out.data(), visitor->out.size(), MSG_DONTWAIT | MSG_NOSIGNAL);
    if (sent >= 0)
        visitor->out.erase(0, static_cast<size_t>(sent));
    else if (errno != EAGAIN && errno != EINTR)
        visitor->isGone = true;
    if (visitor->out.empty() && visitor->out.capacity() > kKeptOfAnswers) {
        visitor->out = std::string();
        visitor->unsent.Resize(0);
    }
}

void Visitors::Close(Visitor* visitor, CloseReason reason)
{
    visitor->isGone = true;
    // After an unfinished frame, it would arrive in the middle of that frame.
    if (!visitor->out.empty())
        return;
    const std::string frame = NumberFrame(FrameKind::kClosed, static_cast<uint64>(reason));
    send(visitor->socket.Get(), frame.data(), frame.size(), MSG_DONTWAIT | MSG_NOSIGNAL);
}

} // namespace kits
