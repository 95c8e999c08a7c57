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

/// A name in an existing folder, whether or not a file has it. A plain value: it holds nothing open, so the folder may
/// have gone since. Links are not followed unless requested: renaming or removing a link affects the link itself. Names
/// are at most B_FILE_NAME_LENGTH - 1 bytes, paths at most B_PATH_NAME_LENGTH - 1; longer ones are B_NAME_TOO_LONG.
class BEntry {
public:
    BEntry() = default;
    /// @param leaf      a path relative to the folder
    /// @param traverse  follow links to their final target
    BEntry(const BDirectory* directory, const char* leaf, bool traverse = false);
    explicit BEntry(const char* path, bool traverse = false);
    explicit BEntry(const entry_ref* ref, bool traverse = false);

    /// Each returns B_OK if the folder exists, whether or not the name does. B_ENTRY_NOT_FOUND or B_NOT_A_DIRECTORY if
    /// it does not, B_BAD_VALUE for null, empty or absolute leaves, B_LINK_LIMIT for circular links.
    status_t SetTo(const BDirectory* directory, const char* leaf, bool traverse = false);
    status_t SetTo(const char* path, bool traverse = false);
    status_t SetTo(const entry_ref* ref, bool traverse = false);
    void Unset();
    /// B_NO_INIT for an entry that was never set, otherwise the result of the last SetTo.
    status_t InitCheck() const { return fStatus; }

    /// True if the name is taken at this moment, even by a link that leads nowhere.
    bool Exists() const;

    /// True if the name belongs to a link at this moment, wherever it leads.
    bool IsSymLink() const;

    status_t GetRef(entry_ref* ref) const;
    status_t GetPath(BPath* path) const;

    /// Renames the file in one step: at every moment it has one of the two names. The entry then stands for the new
    /// name. Not on disk before the folder is synced.
    /// @param path     relative to the entry's folder, or absolute
    /// @param clobber  replace a file with the new name; without it, B_FILE_EXISTS
    status_t Rename(const char* path, bool clobber = false);
    /// Removes the file, link or empty folder with this name; the entry stays.
    status_t Remove();

    bool operator==(const BEntry& other) const { return fStatus == other.fStatus && fRef == other.fRef; }

private:
    /// Does not set fStatus.
    status_t SetToPath(const BPath& whole, bool traverse);

    entry_ref fRef;
    status_t fStatus = B_NO_INIT;
};
