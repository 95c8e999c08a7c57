// SPDX-License-Identifier: MIT
#pragma once

#include "kits/support/SupportDefs.h"

#include <sys/types.h>

#include <vector>

/// Where bytes are read from and written to, in order. Not for two threads at once.
class BDataIO {
public:
    BDataIO() = default;
    virtual ~BDataIO() = default;
    BDataIO(const BDataIO&) = delete;
    BDataIO& operator=(const BDataIO&) = delete;

    /// @return how many bytes were read, fewer than asked for at the end, 0 there, or a status code
    virtual ssize_t Read(void* buffer, size_t size) = 0;
    /// @return how many bytes were written, or a status code
    virtual ssize_t Write(const void* buffer, size_t size) = 0;
};

/// What a position is counted from.
enum : uint32 {
    B_SEEK_BEGIN = 0,   ///< the beginning
    B_SEEK_CURRENT = 1, ///< the current position
    B_SEEK_END = 2      ///< the end
};

/// Bytes with a position: `Read` and `Write` go on from it and advance it.
class BPositionIO : public BDataIO {
public:
    ssize_t Read(void* buffer, size_t size) override;
    ssize_t Write(const void* buffer, size_t size) override;

    /// Like `Read` and `Write`, at a place of their own; the position stays.
    virtual ssize_t ReadAt(off_t position, void* buffer, size_t size) = 0;
    virtual ssize_t WriteAt(off_t position, const void* buffer, size_t size) = 0;

    /// @param from  B_SEEK_BEGIN, B_SEEK_CURRENT or B_SEEK_END
    /// @return the new position, `B_BAD_VALUE` if it would be negative (the position then stays)
    virtual off_t Seek(off_t offset, uint32 from) = 0;
    [[nodiscard]] virtual off_t Position() const = 0;
    /// Cuts, or fills up with zeros.
    virtual status_t SetSize(off_t size) = 0;
    virtual status_t GetSize(off_t* size) const = 0;
};

/// Bytes in memory, which grow as they are written, up to kLargestSize.
class BMallocIO : public BPositionIO {
public:
    /// More than any stream of the kits is allowed to hold; beyond it there is `B_NO_MEMORY`.
    static constexpr off_t kLargestSize = INT32_MAX;

    ssize_t ReadAt(off_t position, void* buffer, size_t size) override;
    /// A gap between the end and `position` is filled with zeros. `B_NO_MEMORY` changes nothing.
    ssize_t WriteAt(off_t position, const void* buffer, size_t size) override;
    off_t Seek(off_t offset, uint32 from) override;
    [[nodiscard]] off_t Position() const override { return fPosition; }
    status_t SetSize(off_t size) override;
    status_t GetSize(off_t* size) const override;

    /// The bytes, owned by this object and valid until it is changed. May be null while there are none.
    [[nodiscard]] const void* Buffer() const { return fBytes.data(); }
    [[nodiscard]] size_t BufferLength() const { return fBytes.size(); }

private:
    std::vector<uint8> fBytes;
    off_t fPosition = 0;
};
