#pragma once

#include "kits/application/Message.h"
#include "kits/storage/File.h"

#include <optional>
#include <string>

namespace kits {

/// The file that keeps how the desktop was before a program of ours painted it: there as long as it is painted, so that
/// after a program was killed the next one can put it back. One for all programs of the user; the one that has painted
/// holds its lock. Without a settings folder nothing is kept on the disk.
class DesktopKept {
public:
    /// Whether there is one, of a running program or of one that was killed. Any thread, no lock.
    static bool Exists();

    /// Writes it and holds its lock. When it returns B_OK it is on the disk.
    /// @return B_BUSY when another program has painted the desktop; else why it could not be written
    status_t Save(const BMessage& kept);
    /// What a killed program left. Holds the lock when there is something; what is no whole message is removed, for it
    /// was never acted upon. Nothing too while another program has painted.
    std::optional<BMessage> LoadLeft();
    /// Removes it and gives the lock up.
    void Remove();
    /// Gives the lock up and leaves the file.
    void Release() { fFile.Unset(); }

private:
    bool Open(bool create);

    std::string fPath;
    BFile fFile;
};

} // namespace kits
