// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Token.h"
#include "kits/kernel/FileDescriptor.h"

#include <string>
#include <vector>

namespace kits {

/// The folder in which the teams of one user have their sockets: "kits" in $XDG_RUNTIME_DIR, or "kits-" and the user's
/// number under /tmp where there is no such variable or what it names does not belong to the user alone.
///
/// It is used only if it is a folder, not a link to one, of this user, that nobody else may look into. It is held open
/// and everything in it reached through that, so that nothing can be put in its place afterwards.
///
/// A socket has the name "SIGNATURE@ADDRESS", the signature without "application/", the address in 16 hexadecimal
/// digits. A team that is not to be found by a signature has "@ADDRESS".
class TeamFolder {
public:
    struct Entry {
        std::string signature; ///< whole; empty for none
        team_address team = 0;
    };

    /// @param obstacle  if not null, receives the reason for a failure, worded for a user:
    ///                  "/run/user/1000/kits is a link"
    /// @return `B_OK`, `B_PERMISSION_DENIED` if what is there is not safe, or what making or opening it gave
    status_t Open(std::string* obstacle = nullptr);
    bool IsOpen() const { return fDescriptor.IsOpen(); }
    int Descriptor() const { return fDescriptor.Get(); }
    /// Where it was when it was opened, for a user to read. To reach a file in it there is PathOf.
    const std::string& Path() const { return fPath; }
    /// A path to a file in it that fits the address of a socket, however long the folder's own is.
    std::string PathOf(const std::string& name) const;

    /// The teams that have a socket. Those of dead processes are removed meanwhile.
    std::vector<Entry> List() const;
    /// Those of one signature, the oldest process first, this one too.
    std::vector<Entry> Find(const std::string& signature) const;
    /// The name of a team's socket, empty if it has none.
    std::string NameOf(team_address team) const;

    static std::string MakeName(const Entry& entry);
    /// False if this is no name of a socket.
    static bool ParseName(const std::string& name, Entry* entry);
    /// Whether an application can be listed under this signature: "application/" and up to 64 letters, digits and any
    /// of ".-_+".
    static bool IsSignature(const std::string& signature);

private:
    std::vector<std::string> Names() const;

    FileDescriptor fDescriptor;
    std::string fPath;
};

} // namespace kits
