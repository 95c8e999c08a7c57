// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Message.h"
#include "kits/storage/File.h"

#include <optional>
#include <string>

namespace kits {

/// The file with the desktop's settings from before a program of ours painted it. It exists as long as the desktop is
/// painted, so that the next program can restore the desktop after a kill. All programs of the user share one file,
/// and the one that has painted holds its lock. Without a settings folder there is no file.
class DesktopKept {
public:
    /// Returns true if the file exists, of a running program or of a killed one. Any thread; takes no lock.
    static bool Exists();

    /// Writes the file and holds its lock.
    /// @return B_OK if it is on the disk; B_BUSY if another program has painted the desktop; otherwise the reason why
    ///         it could not be written
    status_t Save(const BMessage& kept);
    /// Returns the settings that a killed program left, and then holds the lock. Returns nothing while another program
    /// has painted. Removes a file that is no whole message: its program was killed before it painted.
    std::optional<BMessage> TakeLeft();
    /// Removes the file and releases the lock.
    void Remove();
    /// Releases the lock and leaves the file.
    void Leave() { fFile.Unset(); }

private:
    bool Open(bool create);

    std::string fPath;
    BFile fFile;
};

} // namespace kits
