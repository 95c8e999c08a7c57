// SPDX-License-Identifier: MIT
#pragma once

#include "kits/storage/StorageDefs.h"

#include <string>

class BEntry;

/// An absolute path name, of something that need not exist. A plain value. A relative path is resolved against the
/// working directory at the moment when it is set. Doubled and trailing slashes and "." are removed; ".." stays,
/// because only the file system knows where it leads.
class BPath {
public:
    BPath() = default;
    explicit BPath(const char* path, const char* leaf = nullptr);
    explicit BPath(const BEntry* entry);

    /// B_NO_INIT for a path that was never set, otherwise the result of the last SetTo or Append.
    status_t InitCheck() const { return fStatus; }

    /// @param path  absolute or relative; not empty
    /// @param leaf  if not null, appended to it; relative
    /// @return B_BAD_VALUE for null or empty paths and an absolute leaf; the path is then unset
    status_t SetTo(const char* path, const char* leaf = nullptr);
    status_t SetTo(const BEntry* entry);
    void Unset();

    /// Extends the path by a relative one.
    status_t Append(const char* path);

    /// The whole path; null if unset. Valid until the object changes.
    const char* Path() const;
    /// The part after the last slash: empty for "/", null if unset. Valid until the object changes.
    const char* Leaf() const;
    /// The path without its last part; B_ENTRY_NOT_FOUND for "/".
    status_t GetParent(BPath* parent) const;

    bool operator==(const BPath& other) const { return fPath == other.fPath; }

private:
    std::string fPath;
    status_t fStatus = B_NO_INIT;
};
