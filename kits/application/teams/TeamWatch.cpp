// SPDX-License-Identifier: MIT
#include "kits/application/teams/TeamWatch.h"

#include "kits/application/AppDefs.h"
#include "kits/application/Message.h"
#include "kits/application/Roster.h"
#include "kits/application/delivery/Delivery.h"

#include <sys/inotify.h>

#include <algorithm>

namespace kits {

namespace {

// Time for an ending process to go: it closes its connections first of all, whereas a team that was merely given up
// stays.
constexpr auto kPauseBeforeLook = std::chrono::milliseconds(100);
// The folder reports new names by itself; only if it cannot, it is read now and then.
constexpr auto kLookInterval = std::chrono::seconds(1);

} // namespace

void TeamWatch::Add(const Address& watcher, uint32 events, const std::vector<TeamFolder::Entry>& present)
{
    {
        std::lock_guard lock(fMutex);
        const auto found = std::find_if(fWatchers.begin(), fWatchers.end(),
                                        [&watcher](const Watcher& other) { return other.address == watcher; });
        if (found != fWatchers.end()) {
            found->events = events;
            return;
        }
        Watcher added{watcher, events};
        for (const TeamFolder::Entry& entry : present)
            if (entry.team != ThisTeam())
                added.present[entry.team] = entry.signature;
        fWatchers.push_back(std::move(added));
    }
    fHooks.wake();
}

bool TeamWatch::Remove(const Address& watcher)
{
    std::lock_guard lock(fMutex);
    return std::erase_if(fWatchers, [&watcher](const Watcher& other) { return other.address == watcher; }) > 0;
}

void TeamWatch::Clear()
{
    {
        std::lock_guard lock(fMutex);
        fWatchers.clear();
    }
    ForgetTeams();
}

void TeamWatch::ForgetTeams()
{
    fNotifier.Close();
    fTeams.clear();
    fLookAt = Clock::time_point::max();
    fIsWatching = false;
}

bool TeamWatch::HasWatchers()
{
    std::lock_guard lock(fMutex);
    return !fWatchers.empty();
}

bool TeamWatch::HasNewWatchers()
{
    std::lock_guard lock(fMutex);
    return std::any_of(fWatchers.begin(), fWatchers.end(), [](const Watcher& watcher) { return watcher.isNew; });
}

void TeamWatch::AppendPolls(std::vector<pollfd>* polls) const
{
    polls->push_back({fNotifier.Get(), POLLIN, 0});
}

TeamWatch::Clock::time_point TeamWatch::Deadline()
{
    return HasNewWatchers() || HasWatchers() != fIsWatching ? Clock::time_point::min() : fLookAt;
}

void TeamWatch::Handle(const pollfd* polls, const TeamFolder& folder)
{
    if (!HasWatchers()) {
        for (const auto& [team, state] : fTeams)
            fHooks.setWatched(team, false);
        ForgetTeams();
        return;
    }
    bool isNew = HasNewWatchers() || Clock::now() >= fLookAt;
    if (!fIsWatching) {
        fNotifier = FileDescriptor(inotify_init1(IN_CLOEXEC | IN_NONBLOCK));
        if (fNotifier.IsOpen())
            inotify_add_watch(fNotifier.Get(), folder.PathOf(".").c_str(), IN_MOVED_TO | IN_DELETE | IN_MOVED_FROM);
        fIsWatching = true;
    } else if (polls->revents != 0) {
        isNew = ReadNotices() || isNew;
    }
    if (isNew)
        Look(folder);
}

bool TeamWatch::ReadNotices()
{
    bool areThere = false;
    alignas(inotify_event) char buffer[4096];
    for (;;) {
        const ssize_t size = fNotifier.IsOpen() ? read(fNotifier.Get(), buffer, sizeof(buffer)) : -1;
        if (size <= 0)
            return areThere;
        areThere = true;
        const inotify_event* notice = nullptr;
        for (ssize_t place = 0; place < size; place += static_cast<ssize_t>(sizeof(*notice) + notice->len)) {
            notice = reinterpret_cast<const inotify_event*>(buffer + place);
            TeamFolder::Entry entry;
            if ((notice->mask & IN_MOVED_TO) == 0 || notice->len == 0 || !TeamFolder::ParseName(notice->name, &entry))
                continue;
            if (const auto found = fTeams.find(entry.team); found != fTeams.end())
                found->second.hasLeft = entry.signature.empty();
        }
    }
}

void TeamWatch::Look(const TeamFolder& folder)
{
    fLookAt = fNotifier.IsOpen() ? Clock::time_point::max() : Clock::now() + kLookInterval;
    {
        // A watcher that is added from here on knows more than the list, and has to wait for the next one.
        std::lock_guard lock(fMutex);
        for (Watcher& watcher : fWatchers)
            watcher.isNew = false;
    }
    const std::vector<TeamFolder::Entry> entries = folder.List();
    for (const TeamFolder::Entry& entry : entries) {
        if (entry.signature.empty() || entry.team == ThisTeam() || fTeams.contains(entry.team) ||
            !fHooks.isReachable(entry.team))
            continue;
        fTeams[entry.team].signature = entry.signature;
        fHooks.setWatched(entry.team, true);
        TellLaunched(entry.team, entry.signature);
    }
    TellOfTheGone(entries);
}

void TeamWatch::NoteClosed(team_address team)
{
    const auto found = fTeams.find(team);
    if (found == fTeams.end())
        return;
    // A team that ends in order takes leave before its connections end.
    const bool isNew = ReadNotices();
    const Team state = found->second;
    fTeams.erase(found);
    {
        std::lock_guard lock(fMutex);
        for (Watcher& watcher : fWatchers)
            watcher.present.erase(team);
    }
    // What the notices say about other teams is not read again.
    fLookAt = isNew ? Clock::now() : Clock::now() + kPauseBeforeLook;
    if (!state.isHung)
        Tell(B_REQUEST_QUIT, team, state.signature);
    if (fNotifier.IsOpen() && !state.hasLeft)
        Tell(B_REQUEST_DIED, team, state.signature);
}

void TeamWatch::NoteHung(team_address team, bool isHung)
{
    const auto found = fTeams.find(team);
    if (found == fTeams.end() || found->second.isHung == isHung)
        return;
    found->second.isHung = isHung;
    Tell(isHung ? B_REQUEST_QUIT : B_REQUEST_LAUNCHED, team, found->second.signature);
}

void TeamWatch::TellLaunched(team_address team, const std::string& signature)
{
    std::vector<Watcher> told;
    {
        std::lock_guard lock(fMutex);
        for (Watcher& watcher : fWatchers)
            if (!watcher.isNew && watcher.present.erase(team) == 0)
                told.push_back(watcher);
    }
    Tell(told, B_REQUEST_LAUNCHED, team, signature);
}

void TeamWatch::TellOfTheGone(const std::vector<TeamFolder::Entry>& entries)
{
    Signatures gone;
    std::map<team_address, std::vector<Watcher>> told;
    {
        std::lock_guard lock(fMutex);
        for (Watcher& watcher : fWatchers) {
            if (watcher.isNew)
                continue;
            std::erase_if(watcher.present, [this](const auto& team) { return fTeams.contains(team.first); });
            for (const auto& [team, signature] : watcher.present) {
                const auto isIt = [address = team](const TeamFolder::Entry& entry) { return entry.team == address; };
                if (std::any_of(entries.begin(), entries.end(), isIt))
                    continue;
                gone[team] = signature;
                told[team].push_back(watcher);
            }
            std::erase_if(watcher.present, [&gone](const auto& team) { return gone.contains(team.first); });
        }
    }
    for (const auto& [team, watchers] : told)
        Tell(watchers, B_REQUEST_QUIT, team, gone[team]);
}

void TeamWatch::Tell(uint32 event, team_address team, const std::string& signature)
{
    std::vector<Watcher> watchers;
    {
        std::lock_guard lock(fMutex);
        watchers = fWatchers;
    }
    Tell(watchers, event, team, signature);
}

void TeamWatch::Tell(const std::vector<Watcher>& watchers, uint32 event, team_address team,
                     const std::string& signature)
{
    BMessage message(event == B_REQUEST_QUIT   ? B_SOME_APP_QUIT
                     : event == B_REQUEST_DIED ? B_SOME_APP_DIED
                                               : B_SOME_APP_LAUNCHED);
    kTeamField.Add(&message, TeamIdOf(team));
    kSignatureField.Add(&message, signature);
    for (const Watcher& watcher : watchers)
        if ((watcher.events & event) != 0 && DeliverCopy(watcher.address, message, Address(), false) == B_BAD_HANDLER)
            Remove(watcher.address);
}

} // namespace kits
