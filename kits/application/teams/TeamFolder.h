// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Token.h"
#include "kits/kernel/FileDescriptor.h"

#include <string>
#include <vector>

namespace kits {

/// The folder in which the teams of one user have their sockets: "kits" in $XDG_RUNTIME_DIR, or "kits-" and the user's
/// id under /tmp if that variable is not set or its folder does not belong to the user alone.
///
/// It is used only if it is a folder, not a link, belongs to this user, and is closed to others. It is held open and
/// everything in it is reached through its descriptor, so that nobody can replace it afterwards.
///
/// A socket has the name "SIGNATURE@ADDRESS", the signature without "application/", the address in 16 hexadecimal
/// digits. A team that cannot be found by a signature has "@ADDRESS".
class TeamFolder {
public:
    struct Entry {
        std::string signature; ///< complete; empty for none
        team_address team = 0;
    };

    /// @param obstacle  if not null, receives the reason for a failure, worded for a user: "/run/user/1000/kits is a
    ///                  link"
    /// @return `B_OK`, `B_PERMISSION_DENIED` if the folder is not safe, or the error of creating or opening it
    status_t Open(std::string* obstacle = nullptr);
    bool IsOpen() const { return fDescriptor.IsOpen(); }
    int Descriptor() const { return fDescriptor.Get(); }
    /// Its path at the time of opening, for a user to read. To reach a file in it, use PathOf.
    const std::string& Path() const { return fPath; }
    /// Returns a path to a file in it that fits a socket's address, however long the folder's own path is.
    std::string PathOf(const std::string& name) const;

    /// Returns the teams that have a socket. Removes those of dead processes meanwhile.
    std::vector<Entry> List() const;
    /// Returns those with one signature, the oldest process first, including this one.
    std::vector<Entry> Find(const std::string& signature) const;
    /// Returns the name of a team's socket; empty if it has none.
    std::string NameOf(team_address team) const;

    static std::string MakeName(const Entry& entry);
    /// Returns false if this is no name of a socket.
    static bool ParseName(const std::string& name, Entry* entry);
    /// Returns whether an application can be listed under this signature: "application/" and up to 64 letters, digits
    /// and any of ".-_+".
    static bool IsSignature(const std::string& signature);

private:
    std::vector<std::string> Names() const;

    FileDescriptor fDescriptor;
    std::string fPath;
};

} // namespace kits
