// SPDX-License-Identifier: MIT
#include "kits/application/teams/TeamPort.h"

#include "kits/application/MainThread.h"
#include "kits/application/delivery/MainThreadPrivate.h"
#include "kits/application/delivery/PostOffice.h"
#include "kits/application/messages/MessageFormat.h"
#include "kits/application/teams/Launch.h"
#include "kits/application/teams/TeamSocket.h"
#include "kits/kernel/Errors.h"

#include <malloc.h>
#include <pthread.h>
#include <sys/eventfd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <csignal>
#include <map>

namespace kits {

namespace {

using Clock = std::chrono::steady_clock;

/// Blocks of this size or more get a mapping of their own, as by the allocator's initial setting.
constexpr int kOwnMapping = 128 * 1024;

int PollTimeout(Clock::time_point deadline)
{
    if (deadline == Clock::time_point::max())
        return -1;
    const auto now = Clock::now();
    if (deadline <= now)
        return 0;
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - now).count();
    return static_cast<int>(std::min<decltype(left)>(left, INT_MAX));
}

} // namespace

TeamPort& TeamPort::Get()
{
    // Never destroyed: its thread may run while the process ends.
    static TeamPort& port = *new TeamPort;
    return port;
}

TeamPort::TeamPort()
    : fWakeDescriptor(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
    , fAccounts([this] { fVisitors.NoteRoom(); })
    , fLinks(&fAccounts, {[this] { Wake(); },
                          [this](team_address team) {
                              PostOffice::Get().FailReplyWaits([team](team_address asked) { return asked == team; });
                              fWatch.NoteClosed(team);
                          },
                          [this](team_address team, bool isHung) { fWatch.NoteHung(team, isHung); }})
    , fVisitors(&fAccounts, {[this] { Wake(); }, [this](team_address team) { fLinks.Forgive(team); },
                             [] {
                                 // The answer must prove that the main loop runs.
                                 RunOnMainThread([] { TeamPort::Get().fVisitors.AnswerPings(); });
                             },
                             [this](team_address team) { fWatch.NoteClosed(team); }})
    , fWatch({[this] { Wake(); }, [this](team_address team, bool isWatched) { fLinks.SetWatched(team, isWatched); },
              [this](team_address team) {
                  return fLinks.IsReachable({team, kApplicationToken});
              }})
{
    LoopGuest::Set(&fVisitors);
    OtherTeams::Set(this);
    // Once a larger block has been freed, the allocator places blocks of that size among the small ones, and does not
    // return a peer's frames to the system.
    mallopt(M_MMAP_THRESHOLD, kOwnMapping);
}

void TeamPort::Wake()
{
    eventfd_write(fWakeDescriptor.Get(), 1);
}

status_t TeamPort::Open()
{
    std::lock_guard lock(fMutex);
    std::string ignored;
    return OpenLocked(&ignored);
}

/// Called with the mutex held.
status_t TeamPort::OpenLocked(std::string* obstacle)
{
    if (fState == State::kOpen)
        return B_OK;
    if (fState != State::kClosed)
        return B_NO_INIT;
    status_t status = fFolder.IsOpen() ? B_OK : fFolder.Open(obstacle);
    if (status != B_OK)
        return status;
    const TeamFolder::Entry entry{"", ThisTeam()};
    FileDescriptor listener;
    status = Listen(fFolder, entry, &listener);
    if (status != B_OK) {
        *obstacle = fFolder.Path() + " takes no socket (" + StatusText(status) + ")";
        return status;
    }
    fSocketName = TeamFolder::MakeName(entry);
    fFolder.List(); // removes the files of dead teams
    fVisitors.SetListener(std::move(listener));
    fLinks.SetFolder(&fFolder);
    fState = State::kOpen;

    // Leaves signals to the other threads.
    sigset_t all, before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    fThread = std::thread([this] { Run(); });
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    return B_OK;
}

std::string TeamPort::Obstacle(const std::string& signature, bool* isLock)
{
    std::lock_guard lock(fMutex);
    std::string obstacle;
    const status_t status = OpenLocked(&obstacle);
    *isLock = status == B_OK;
    return status == B_OK && !signature.empty() ? LaunchLock::ObstacleTo(fFolder, signature) : obstacle;
}

status_t TeamPort::SetSignature(const std::string& signature)
{
    if (!signature.empty() && !TeamFolder::IsSignature(signature))
        return B_BAD_VALUE;
    const status_t status = Open();
    if (status != B_OK)
        return status;
    std::lock_guard lock(fMutex);
    if (fState != State::kOpen)
        return B_NO_INIT;
    const std::string name = TeamFolder::MakeName({signature, ThisTeam()});
    if (!signature.empty())
        LeaveAtQuitSignal(fFolder.Descriptor(), name, TeamFolder::MakeName({"", ThisTeam()}));
    if (renameat(fFolder.Descriptor(), fSocketName.c_str(), fFolder.Descriptor(), name.c_str()) != 0)
        return StatusFromErrno(errno);
    fSocketName = name;
    return B_OK;
}

void TeamPort::CloseAs(State state)
{
    std::thread thread;
    {
        std::lock_guard lock(fMutex);
        if (fState != State::kOpen) {
            if (fState == State::kClosed)
                fState = state;
            return;
        }
        // From now on nobody finds it.
        unlinkat(fFolder.Descriptor(), fSocketName.c_str(), 0);
        fState = State::kClosing;
        thread = std::move(fThread);
    }
    Wake();
    thread.join();
    fWatch.Clear();
    fVisitors.Clear();
    fLinks.SetFolder(nullptr);
    {
        std::lock_guard lock(fMutex);
        fFolder = TeamFolder();
        fState = state;
    }
    PostOffice::Get().FailReplyWaits([](team_address asked) { return asked != ThisTeam(); });
}

void TeamPort::EndShut()
{
    std::lock_guard lock(fMutex);
    if (fState == State::kShut)
        fState = State::kClosed;
}

status_t TeamPort::Send(const std::vector<Address>& targets, const BMessage& message, const Address& replyTo,
                        bool sourceWaits)
{
    const auto flat = std::make_shared<std::string>();
    status_t status = WriteMessage(message, flat.get(), false, kFrameLimits);
    if (status != B_OK)
        return status;
    if (!FitsFrame(1, flat->size()))
        return B_BAD_VALUE;
    status = Open();
    if (status != B_OK)
        return status;
    MessageFrame frame{message.IsNewestWins(), sourceWaits, replyTo, {}};
    const size_t most = flat->size() <= bounds::kMostShared ? bounds::kMostTargets : 1;
    std::map<team_address, std::vector<token_t>> teams;
    for (const Address& target : targets)
        teams[target.team].push_back(target.token);
    for (const auto& [team, tokens] : teams)
        for (auto first = tokens.begin(); first != tokens.end(); first += frame.targets.size()) {
            frame.targets.assign(first, first + std::min<ptrdiff_t>(most, tokens.end() - first));
            status = fLinks.Send(team, frame, message.what, flat);
        }
    return status;
}

bool TeamPort::IsReachable(const Address& address)
{
    return Open() == B_OK && fLinks.IsReachable(address);
}

std::vector<TeamFolder::Entry> TeamPort::Find(const std::string& signature)
{
    if (Open() != B_OK)
        return {};
    std::lock_guard lock(fMutex);
    return fState == State::kOpen ? fFolder.Find(signature) : std::vector<TeamFolder::Entry>();
}

std::vector<TeamFolder::Entry> TeamPort::List()
{
    if (Open() != B_OK)
        return {};
    std::lock_guard lock(fMutex);
    if (fState != State::kOpen)
        return {};
    std::vector<TeamFolder::Entry> entries = fFolder.List();
    std::erase_if(entries, [](const TeamFolder::Entry& entry) { return entry.signature.empty(); });
    return entries;
}

status_t TeamPort::StartWatching(const Address& watcher, uint32 events)
{
    const status_t status = Open();
    if (status == B_OK)
        fWatch.Add(watcher, events, List());
    return status;
}

status_t TeamPort::StopWatching(const Address& watcher)
{
    return fWatch.Remove(watcher) ? B_OK : B_BAD_VALUE;
}

void TeamPort::Run()
{
    pthread_setname_np(pthread_self(), "team port");
    std::vector<pollfd> polls;
    while (true) {
        polls.assign(1, {fWakeDescriptor.Get(), POLLIN, 0});
        fWatch.AppendPolls(&polls);
        const size_t firstVisitor = polls.size();
        fVisitors.AppendPolls(&polls);
        const size_t firstLink = polls.size();
        fLinks.AppendPolls(&polls);
        const Clock::time_point deadline = std::min({fVisitors.Deadline(), fLinks.Deadline(), fWatch.Deadline()});
        if (poll(polls.data(), polls.size(), PollTimeout(deadline)) < 0) {
            if (errno != EINTR)
                std::this_thread::sleep_for(std::chrono::milliseconds(10)); // no memory for it at the moment
            continue;
        }
        if (polls[0].revents != 0) {
            eventfd_t count;
            eventfd_read(fWakeDescriptor.Get(), &count);
            std::lock_guard lock(fMutex);
            if (fState == State::kClosing)
                return;
        }
        fVisitors.Handle(&polls[firstVisitor]);
        fLinks.Handle(polls.data() + firstLink, polls.size() - firstLink);
        fWatch.Handle(&polls[1], fFolder);
        GiveBackMemory();
    }
}

void TeamPort::GiveBackMemory()
{
    constexpr size_t kMuch = bounds::kMiB;
    constexpr size_t kLittle = 64 * bounds::kKiB;
    size_t held = 0;
    for (const Resource resource : {Resource::kIncomplete, Resource::kUnsent, Resource::kUnhandledBytes})
        held += fAccounts.UsedByAll(resource);
    if (held > kMuch) {
        fHasHeldMuch = true;
    } else if (held < kLittle && fHasHeldMuch) {
        fHasHeldMuch = false;
        // The allocator keeps freed memory that lies below memory in use.
        malloc_trim(0);
    }
}

} // namespace kits
