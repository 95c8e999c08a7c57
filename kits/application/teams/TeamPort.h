// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/delivery/OtherTeams.h"
#include "kits/application/teams/TeamFolder.h"
#include "kits/application/teams/TeamLinks.h"
#include "kits/application/teams/TeamWatch.h"
#include "kits/application/teams/Visitors.h"

#include <thread>

namespace kits {

/// The connections between this team and others: its socket in the user's folder, the connections from and to it, and
/// one thread that waits on all of them. The first use opens it; the application closes it at its end. Any thread
/// unless stated otherwise.
///
/// It trusts nothing from outside: the system, not the peer, tells which process and user the peer is. Data are held to
/// the limits of Frame.h and BMessage; a peer that exceeds them loses its connection.
class TeamPort : public OtherTeams {
public:
    static TeamPort& Get();

    /// Opens it, if it is not open.
    /// @return the error of TeamFolder::Open or of the system. The next call tries again.
    status_t Open();
    /// Opens the port and returns the reason if that fails, worded for a user: "/run/user/1000/kits is a link". Empty
    /// on success.
    /// @param signature  the signature of a single-launch application, to check its lock file, too; empty for none
    /// @param isLock     set to true if the port is open: then a reason is about the lock file
    std::string Obstacle(const std::string& signature, bool* isLock);
    /// From now on others find this team by this signature; empty: not at all. Opens the port.
    status_t SetSignature(const std::string& signature);
    /// Ends all connections, removes the socket, waits until the thread has ended, and ends all waits for answers from
    /// other teams. The port may be opened again.
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

    /// Returns the teams with this signature, including this one; the oldest first.
    std::vector<TeamFolder::Entry> Find(const std::string& signature);
    /// All teams that have a signature.
    std::vector<TeamFolder::Entry> List();
    /// From now on TeamWatch sends its messages there.
    status_t StartWatching(const Address& watcher, uint32 events);
    status_t StopWatching(const Address& watcher);

private:
    enum class State { kClosed, kOpen, kClosing, kShut };

    TeamPort();

    status_t OpenLocked(std::string* obstacle);
    void CloseAs(State state);
    void EndShut();
    void Run();
    /// Returns memory to the system that this process held for others and has released.
    void GiveBackMemory();
    void Wake();

    const FileDescriptor fWakeDescriptor;
    PeerAccounts fAccounts;
    TeamLinks fLinks;
    Visitors fVisitors;
    TeamWatch fWatch;

    std::mutex fMutex; ///< guards the members below; locked before that of the links
    TeamFolder fFolder;
    std::string fSocketName;
    std::thread fThread;
    bool fHasHeldMuch = false; ///< used by the port's thread
    State fState = State::kClosed;
};

} // namespace kits
