#include "kits/application/teams/TeamWatch.h"

#include "kits/application/AppDefs.h"
#include "kits/application/Message.h"
#include "kits/application/delivery/Delivery.h"

#include <sys/inotify.h>

namespace kits {

namespace {

// A team that ends closes its connections first of all, one that was given up only those.
constexpr auto kPauseBeforeLook = std::chrono::milliseconds(100);
// The folder tells of what is new by itself; only where it cannot it is looked at now and then.
constexpr auto kLookInterval = std::chrono::seconds(1);

} // namespace

void TeamWatch::Add(const Address& watcher, uint32 events)
{
    {
        std::lock_guard lock(fMutex);
        std::erase_if(fWatchers, [&watcher](const Watcher& other) { return other.address == watcher; });
        fWatchers.push_back({watcher, events});
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
    fKnowsTeams = false;
}

bool TeamWatch::HasWatchers()
{
    std::lock_guard lock(fMutex);
    return !fWatchers.empty();
}

void TeamWatch::AppendPolls(std::vector<pollfd>* polls) const
{
    polls->push_back({fNotifier.Get(), POLLIN, 0});
}

TeamWatch::Clock::time_point TeamWatch::Deadline()
{
    return HasWatchers() != fKnowsTeams ? Clock::time_point::min() : fLookAt;
}

void TeamWatch::Handle(const pollfd* polls, const TeamFolder& folder)
{
    if (!HasWatchers()) {
        for (const auto& [team, state] : fTeams)
            fHooks.setWatched(team, false);
        ForgetTeams();
        return;
    }
    if (!fKnowsTeams) {
        fNotifier = FileDescriptor(inotify_init1(IN_CLOEXEC | IN_NONBLOCK));
        if (fNotifier.IsOpen())
            inotify_add_watch(fNotifier.Get(), folder.PathOf(".").c_str(), IN_MOVED_TO | IN_DELETE | IN_MOVED_FROM);
        Look(folder);
        fKnowsTeams = true;
        return;
    }
    bool isNew = Clock::now() >= fLookAt;
    if (polls->revents != 0) {
        char buffer[4096];
        while (read(fNotifier.Get(), buffer, sizeof(buffer)) > 0)
            isNew = true;
    }
    if (isNew)
        Look(folder);
}

void TeamWatch::Look(const TeamFolder& folder)
{
    fLookAt = fNotifier.IsOpen() ? Clock::time_point::max() : Clock::now() + kLookInterval;
    for (const TeamFolder::Entry& entry : folder.List()) {
        if (entry.signature.empty() || entry.team == ThisTeam() || fTeams.contains(entry.team) ||
            !fHooks.isReachable(entry.team))
            continue;
        fTeams[entry.team].signature = entry.signature;
        fHooks.setWatched(entry.team, true);
        if (fKnowsTeams)
            Tell(kTeamLaunched, entry.team, entry.signature);
    }
}

void TeamWatch::NoteClosed(team_address team)
{
    const auto found = fTeams.find(team);
    if (found == fTeams.end())
        return;
    const Team state = found->second;
    fTeams.erase(found);
    fLookAt = Clock::now() + kPauseBeforeLook;
    if (!state.isHung)
        Tell(kTeamQuit, team, state.signature);
}

void TeamWatch::NoteHung(team_address team, bool isHung)
{
    const auto found = fTeams.find(team);
    if (found == fTeams.end() || found->second.isHung == isHung)
        return;
    found->second.isHung = isHung;
    Tell(isHung ? kTeamQuit : kTeamLaunched, team, found->second.signature);
}

void TeamWatch::Tell(uint32 event, team_address team, const std::string& signature)
{
    BMessage message(event == kTeamQuit ? B_SOME_APP_QUIT : B_SOME_APP_LAUNCHED);
    message.AddInt32("team", TeamIdOf(team));
    message.AddString("signature", signature);
    std::vector<Watcher> watchers;
    {
        std::lock_guard lock(fMutex);
        watchers = fWatchers;
    }
    for (const Watcher& watcher : watchers) {
        if ((watcher.events & event) != 0 && DeliverCopy(watcher.address, message, Address(), false) == B_BAD_HANDLER)
            Remove(watcher.address);
    }
}

} // namespace kits
