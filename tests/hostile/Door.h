// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/teams/Frame.h"
#include "kits/application/teams/TeamFolder.h"
#include "kits/kernel/FileDescriptor.h"

#include <string>
#include <string_view>

/// Where programs of this user meet, seen from outside: sockets alone, without the kit's own connections.
class Door {
public:
    /// Of the application that runs under a signature. Ends this process with 1 and a line on stderr if there is none.
    explicit Door(const std::string& signature);

    /// The process behind it.
    team_id Process() const { return kits::TeamIdOf(fTeam); }
    /// A new connection that never waits; closed if none is to be had just now.
    kits::FileDescriptor Connect() const;
    /// A socket that listens under a name in the folder, as that of a team does. Closed if that fails.
    kits::FileDescriptor Listen(kits::team_address name) const;
    /// Takes the name out of the folder.
    void Leave(kits::team_address name) const;

    /// This process, under any number of names; 0 is the true one.
    static kits::team_address Name(unsigned number);
    /// Sends as much as is taken. False if the connection is closed.
    static bool Send(const kits::FileDescriptor& socket, std::string_view* bytes);
    /// All of it; what comes meanwhile is read and thrown away. False if the connection is closed, or
    /// IsInputClosed.
    static bool SendAll(const kits::FileDescriptor& socket, std::string_view bytes);
    /// Takes what has come, into `received` if that is not null. False if the connection is closed.
    static bool Read(const kits::FileDescriptor& socket, std::string* received = nullptr);
    /// Waits until the socket can be read, or written to, for a tenth of a second at most.
    static void Wait(const kits::FileDescriptor& socket, bool forWriting);

private:
    kits::TeamFolder fFolder;
    kits::team_address fTeam = 0;
};

/// An attack that is under way. It says "ready" on stdout when it has begun, and how much it has done at its end.
class Attacker {
public:
    explicit Attacker(const Door& door)
        : fDoor(door)
    {
    }
    ~Attacker();

    const Door& TheDoor() const { return fDoor; }
    /// When stdin has closed, or the process behind the door has ended.
    bool IsOver() const;
    /// Something more has been done.
    void Count(const char* what);

private:
    const Door& fDoor;
    const char* fWhat = nullptr;
    unsigned long fCount = 0;
};

/// True when whoever has started this process wants it to end.
bool IsInputClosed();

/// A message that nobody handles and whose sender waits for an answer under a name.
std::string Question(kits::team_address name, kits::token_t token);
