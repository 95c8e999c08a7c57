// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/FileDescriptor.h"
#include "kits/storage/StorageDefs.h"

class BEntry;
struct entry_ref;

/// The file of a name, held open: its lock and its attributes. Keeps to the same file when that is renamed or removed.
/// Not copied; one thread at a time.
///
/// Attributes are named, typed values of at most 64 KiB beside the content of a file. They are stored with the file if
/// the file system can do that ("user." extended attributes); otherwise this process remembers them as long as it runs
/// and the file exists, so that on any file system one object can read what another one has written.
class BNode {
public:
    BNode() = default;
    explicit BNode(const BEntry* entry);
    virtual ~BNode() = default;
    BNode(const BNode&) = delete;
    BNode& operator=(const BNode&) = delete;

    /// Opens for reading, following links; never waits, whatever the name stands for.
    status_t SetTo(const char* path);
    status_t SetTo(const BEntry* entry);
    /// Closes the file, which releases the lock.
    virtual void Unset();
    /// B_NO_INIT for a node that was never set, otherwise the result of the last SetTo.
    status_t InitCheck() const { return fStatus; }

    /// Takes the lock of the file, which only one open node in all processes can hold; never waits. A file system
    /// without locks grants it.
    /// @return B_BUSY if it is taken, even by another node of this process
    status_t Lock();
    /// @return B_BAD_VALUE if this node does not hold it
    status_t Unlock();

    /// The size of the content, in bytes.
    status_t GetSize(off_t* size) const;
    /// Waits until content and size are on the disk.
    status_t Sync();
    /// Whether this node and the entry refer to the same file at this moment.
    bool IsAt(const BEntry* entry) const;

    /// Writes part of an attribute, creating or extending it as needed; an attribute has the type of its last write.
    /// @param offset  the position in the value; a new part before it is zero
    /// @return bytes written (all of them) or an error
    ssize_t WriteAttr(const char* name, type_code type, off_t offset, const void* buffer, size_t length);
    /// @param type  B_MISMATCHED_VALUES if the attribute has another type, unless this is B_ANY_TYPE
    /// @return bytes read, at most length; 0 beyond the end; B_ENTRY_NOT_FOUND if there is no such attribute
    ssize_t ReadAttr(const char* name, type_code type, off_t offset, void* buffer, size_t length) const;

protected:
    /// Opens with the modes of StorageDefs.h.
    status_t OpenPath(const char* path, uint32 openMode);
    /// Closes the file and sets this status.
    /// @return the status
    status_t Fail(status_t status);
    int Descriptor() const { return fFile.Get(); }

private:
    kits::FileDescriptor fFile;
    bool fLocked = false;
    status_t fStatus = B_NO_INIT;
};
