// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Field.h"

#include <cstddef>

class BMessage;

namespace kits {

/// The type and range of one field, both ends belonging to it.
struct FieldRange {
    const char* key;
    type_code type;
    double low;
    /// Of text and raw data: bytes; of a font: its size; of a rectangle: its width and height; of a message, a
    /// messenger, a pointer or a repeated field: how many are taken.
    double high;
    Outside outside = Outside::kLeftOut;
};

/// A table of what is read from archives and messages that may come from anywhere: from an older or newer version, a
/// damaged file, another program. A field of another type is treated as absent everywhere. Does not own the rows, which
/// have to stay; any thread.
class FieldRanges {
public:
    template <std::size_t kCount>
    explicit constexpr FieldRanges(const FieldRange (&rows)[kCount])
        : fBegin(rows)
        , fEnd(rows + kCount)
    {
    }

    const FieldRange* begin() const { return fBegin; }
    const FieldRange* end() const { return fEnd; }

    /// Null for a key that the table does not have.
    const FieldRange* RangeOf(const char* key) const;
    /// False for what is not a number, and for a key that the table does not have.
    bool InRange(const char* key, double value) const;

    /// Each takes the field only if it is there with this type and in its range, or is a number to be held to it; else
    /// the value stays and the result is false. Both coordinates of a point have to be in the range, and a rectangle's
    /// width and height.
    bool Find(const BMessage& from, const char* key, int16* value, int32 index = 0) const;
    bool Find(const BMessage& from, const char* key, int32* value, int32 index = 0) const;
    bool Find(const BMessage& from, const char* key, int64* value, int32 index = 0) const;
    bool Find(const BMessage& from, const char* key, float* value, int32 index = 0) const;
    bool Find(const BMessage& from, const char* key, BPoint* value, int32 index = 0) const;
    bool Find(const BMessage& from, const char* key, BRect* value, int32 index = 0) const;
    /// The text stays the message's.
    bool Find(const BMessage& from, const char* key, const char** value, int32 index = 0) const;

private:
    template <typename T> bool Take(const char* key, T candidate, T* value) const;

    const FieldRange* fBegin;
    const FieldRange* fEnd;
};

/// What the kits themselves read and write.
extern const FieldRanges kKitFields;

} // namespace kits
