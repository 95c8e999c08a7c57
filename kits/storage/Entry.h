// SPDX-License-Identifier: MIT
#pragma once

#include "kits/storage/StorageDefs.h"

#include <string>

class BDirectory;
class BPath;

/// A place for a file: a folder, by its absolute path, and a name in it. A plain value that can be kept and compared.
struct entry_ref {
    std::string directory; ///< absolute path of the folder
    std::string name;      ///< the name in it, without a slash

    bool operator==(const entry_ref& other) const = default;
};

/// @return B_BAD_VALUE for a null, empty or root path
status_t get_ref_for_path(const char* path, entry_ref* ref);

/// A name in an existing folder, which a file may have or not. A plain value: holds nothing open, so the folder may
/// have gone since. Links are not followed unless asked for: renaming or removing a link touches the link itself. Names
/// are at most B_FILE_NAME_LENGTH - 1 bytes, paths at most B_PATH_NAME_LENGTH - 1; longer ones are B_NAME_TOO_LONG.
class BEntry {
public:
    BEntry() = default;
    /// @param leaf      a path relative to the folder
    /// @param traverse  follow links to the place that they lead to in the end
    BEntry(const BDirectory* directory, const char* leaf, bool traverse = false);
    explicit BEntry(const char* path, bool traverse = false);
    explicit BEntry(const entry_ref* ref, bool traverse = false);

    /// Each is B_OK when the folder exists, whether or not the name does. B_ENTRY_NOT_FOUND or B_NOT_A_DIRECTORY when
    /// it does not, B_BAD_VALUE for null, empty or absolute leaves, B_LINK_LIMIT for links that go in circles.
    status_t SetTo(const BDirectory* directory, const char* leaf, bool traverse = false);
    status_t SetTo(const char* path, bool traverse = false);
    status_t SetTo(const entry_ref* ref, bool traverse = false);
    void Unset();
    /// B_NO_INIT for an entry that was never set, else the result of the last SetTo.
    status_t InitCheck() const { return fStatus; }

    /// Whether the name is taken at this moment, by a link that leads nowhere too.
    bool Exists() const;

    /// Whether the name is that of a link at this moment, wherever it leads.
    bool IsSymLink() const;

    status_t GetRef(entry_ref* ref) const;
    status_t GetPath(BPath* path) const;

    /// Gives the file another name, in one step: at every moment it has one of the two. The entry then stands for the
    /// new name. Not on disk before the folder is synced.
    /// @param path     relative to the entry's folder, or absolute
    /// @param clobber  replace what has the new name; without, B_FILE_EXISTS
    status_t Rename(const char* path, bool clobber = false);
    /// Removes the file, link or empty folder that has the name; the entry stays.
    status_t Remove();

    bool operator==(const BEntry& other) const { return fStatus == other.fStatus && fRef == other.fRef; }

private:
    status_t SetToPath(std::string path, bool traverse);
    std::string FullPath() const;

    entry_ref fRef;
    status_t fStatus = B_NO_INIT;
};
