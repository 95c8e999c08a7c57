// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/teams/Frame.h"
#include "kits/application/teams/TeamFolder.h"
#include "kits/kernel/FileDescriptor.h"

#include <string>
#include <string_view>

/// The meeting place of this user's programs, seen from outside: bare sockets, without the kit's own connections.
class Door {
public:
    /// The door of the application with this signature. Ends this process with 1 and a line on stderr if there is none.
    explicit Door(const std::string& signature);

    /// Returns the process behind it.
    team_id Process() const { return kits::TeamIdOf(fTeam); }
    /// Makes a non-blocking connection; it is closed if none can be made now.
    kits::FileDescriptor Connect() const;
    /// Makes a socket that listens under a name in the folder, as a team's does. Closed if that fails.
    kits::FileDescriptor Listen(kits::team_address name) const;
    /// Takes the name out of the folder.
    void Leave(kits::team_address name) const;

    /// Returns this process under any of its invented names; number 0 is the true one.
    static kits::team_address Name(unsigned number);
    /// Sends as much as the socket takes. Returns false if the connection is closed.
    static bool Send(const kits::FileDescriptor& socket, std::string_view* bytes);
    /// Sends everything; reads and discards whatever arrives meanwhile. Returns false if the connection is closed, or
    /// IsInputClosed.
    static bool SendAll(const kits::FileDescriptor& socket, std::string_view bytes);
    /// Reads what has arrived, into `received` if that is not null. Returns false if the connection is closed.
    static bool Read(const kits::FileDescriptor& socket, std::string* received = nullptr);
    /// Waits until the socket can be read, or written, for at most a tenth of a second.
    static void Wait(const kits::FileDescriptor& socket, bool forWriting);

private:
    kits::TeamFolder fFolder;
    kits::team_address fTeam = 0;
};

/// A running attack. It prints "ready" on stdout when it has begun, and how much it has done at its end.
class Attacker {
public:
    explicit Attacker(const Door& door)
        : fDoor(door)
    {
    }
    ~Attacker();

    const Door& TheDoor() const { return fDoor; }
    /// Returns true once stdin has closed, or the process behind the door has ended.
    bool IsOver() const;
    /// Counts one more thing done.
    void Count(const char* what);

private:
    const Door& fDoor;
    const char* fWhat = nullptr;
    unsigned long fCount = 0;
};

/// Returns true if the process that has started this one wants it to end.
bool IsInputClosed();

/// Returns a message that nobody handles and whose sender waits for an answer under a name.
std::string Question(kits::team_address name, kits::token_t token);
