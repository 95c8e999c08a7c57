// SPDX-License-Identifier: MIT
#pragma once

#include "kits/storage/Node.h"
#include "kits/support/DataIO.h"

/// An open file: bytes with a position. Reading and writing continue after an interruption and after a partial write; a
/// success is final as far as the system knows (Sync makes it lasting). One thread at a time.
class BFile : public BNode, public BDataIO {
public:
    BFile() = default;
    BFile(const char* path, uint32 openMode);
    BFile(const BEntry* entry, uint32 openMode);

    /// Opens with the modes of StorageDefs.h; a folder is B_IS_A_DIRECTORY. The position is 0.
    status_t SetTo(const char* path, uint32 openMode);
    status_t SetTo(const BEntry* entry, uint32 openMode);
    void Unset() override;

    bool IsReadable() const;
    bool IsWritable() const;

    /// @return bytes read, fewer than requested only at the end of the file, or an error
    ssize_t Read(void* buffer, size_t size) override;
    /// @return size, or the error that stopped it; a part may then have been written, and the position shows how much
    ssize_t Write(const void* buffer, size_t size) override;

    /// Where the next Read or Write begins.
    [[nodiscard]] off_t Position() const { return fPosition; }
    /// Cuts, or fills up with zeros; the position stays.
    status_t SetSize(off_t size);

private:
    uint32 fOpenMode = 0;
    off_t fPosition = 0;
};
