// SPDX-License-Identifier: MIT
#pragma once

#include "kits/support/SupportDefs.h"

/// An object that can be written as a run of bytes of one type, and read from such a run: a field of a message.
class BFlattenable {
public:
    virtual ~BFlattenable() = default;

    /// True if every object of the class has the same flattened size.
    [[nodiscard]] virtual bool IsFixedSize() const = 0;
    /// The type of the bytes that `Flatten` writes.
    [[nodiscard]] virtual type_code TypeCode() const = 0;
    /// The number of bytes that `Flatten` writes now.
    [[nodiscard]] virtual ssize_t FlattenedSize() const = 0;
    /// @param buffer  not owned
    /// @param size    room in it; `B_BAD_VALUE` or another error if it is less than `FlattenedSize`
    virtual status_t Flatten(void* buffer, ssize_t size) const = 0;
    /// True if `Unflatten` accepts bytes of this type. By default, only `TypeCode()`.
    [[nodiscard]] virtual bool AllowsTypeCode(type_code code) const { return code == TypeCode(); }
    /// Sets the object from bytes that may contain anything. An error leaves it unchanged.
    /// @param buffer  not owned
    virtual status_t Unflatten(type_code code, const void* buffer, ssize_t size) = 0;
};
