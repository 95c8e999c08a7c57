// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/delivery/OtherTeams.h"
#include "kits/application/teams/TeamFolder.h"
#include "kits/application/teams/TeamLinks.h"
#include "kits/application/teams/TeamWatch.h"
#include "kits/application/teams/Visitors.h"

#include <thread>

namespace kits {

/// Where this team meets others: its socket in the user's folder, the connections to and from it, and one thread that
/// waits on all of them. Opened by the first who needs it, closed by the application at its end. Any thread, but where
/// it says more.
///
/// What comes from outside is believed nothing: the other end is a process of this user, known by the system and not by
/// what it says; what it sends is held to the limits of Frame.h and of BMessage, and is dropped with its connection
/// when it breaks them.
class TeamPort : public OtherTeams {
public:
    static TeamPort& Get();

    /// Opens it; nothing if it is open.
    /// @return why not, if not: TeamFolder::Open or the system. Then it is tried again by the next call.
    status_t Open();
    /// Opens the port and returns the reason if that fails, worded for a user: "/run/user/1000/kits is a link". Empty
    /// on success.
    /// @param signature  the signature of a single-launch application, to check its lock file, too; empty for none
    /// @param isLock     set to whether the port is open, so that a reason can only be about the lock file
    std::string Obstacle(const std::string& signature, bool* isLock);
    /// Lets this team be found by a signature from now on, or no longer (empty). Opens it.
    status_t SetSignature(const std::string& signature);
    /// Ends all connections and removes the socket; waits for what is under way, and ends all waits for answers of
    /// other teams. It may be opened again.
    void Close() { CloseAs(State::kClosed); }

    /// Closes the port and keeps it closed for as long as this object lives: nothing is sent to other teams, and they
    /// can queue no work.
    class Shutter {
    public:
        Shutter() { Get().CloseAs(State::kShut); }
        ~Shutter() { Get().EndShut(); }
        Shutter(const Shutter&) = delete;
        Shutter& operator=(const Shutter&) = delete;
    };

    status_t Send(const std::vector<Address>& targets, const BMessage& message, const Address& replyTo,
                  bool sourceWaits) override;
    bool IsReachable(const Address& address) override;

    /// The teams that can be found by this signature, this one too; the oldest first.
    std::vector<TeamFolder::Entry> Find(const std::string& signature);
    /// All that have a signature.
    std::vector<TeamFolder::Entry> List();
    /// Messages of TeamWatch go there from now on.
    status_t StartWatching(const Address& watcher, uint32 events);
    status_t StopWatching(const Address& watcher);

private:
    enum class State { kClosed, kOpen, kClosing, kShut };

    TeamPort();

    status_t OpenLocked(std::string* obstacle);
    void CloseAs(State state);
    void EndShut();
    void Run();
    /// After others have made this process hold much, and it has gone again: gives the memory back to the system.
    void GiveBackMemory();
    void Wake();
    void ClearWake();

    const FileDescriptor fWakeDescriptor;
    PeerAccounts fAccounts;
    TeamLinks fLinks;
    Visitors fVisitors;
    TeamWatch fWatch;

    std::mutex fMutex; ///< guards what follows; taken before that of the links
    TeamFolder fFolder;
    std::string fSocketName;
    std::thread fThread;
    bool fHasHeldMuch = false; ///< of the thread
    State fState = State::kClosed;
};

} // namespace kits
