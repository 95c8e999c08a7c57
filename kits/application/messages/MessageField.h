// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Message.h"

#include <string>
#include <string_view>

namespace kits {

/// Returns the size of every value of this type, in bytes; 0 if sizes may differ.
size_t FixedSizeOf(type_code type);

/// Returns whether a field may have this name.
bool IsFieldName(const char* name);

/// Returns the memory of a message with everything that it holds; in bytes, rounded up a little.
size_t MemoryOf(const BMessage& message);

/// Returns whether values of this type are addresses, which mean nothing to another process.
bool IsAddressType(type_code type);

} // namespace kits

/// One field of a message: its name, its type and its values, without rules about them. Kept small: a field of one
/// number allocates nothing beyond itself.
class BMessage::Field {
public:
    /// @param itemSize  the size of every value; 0 if sizes differ
    Field(std::string_view name, type_code type, bool fixedSize, size_t itemSize);
    Field(const Field& other);
    Field(Field&& other) noexcept = default;
    Field& operator=(Field&& other) noexcept = default;

    const std::string& Name() const { return fName; }
    type_code Type() const { return fType; }
    int32 Count() const { return static_cast<int32>(fCount); }
    bool IsFixedSize() const { return fFixedSize; }
    /// The size of a value in a field of fixed size.
    size_t ItemSize() const { return fItemSize; }

    /// Returns the bytes of a value; not for messages. The index must be in range.
    std::string_view ItemAt(int32 index) const;
    /// Returns a value in a field of messages. The index must be in range.
    const BMessage& MessageAt(int32 index) const { return fMore->messages[static_cast<size_t>(index)]; }
    BMessage& MessageAt(int32 index) { return fMore->messages[static_cast<size_t>(index)]; }

    /// Returns the memory that it uses beyond itself; in bytes, rounded up a little.
    size_t Memory() const;

    void Reserve(size_t count);
    void Add(const void* data, size_t size);
    void AddMessage(BMessage message);
    void Replace(int32 index, const void* data, size_t size);
    /// Replaces a value in a field of fixed size by one of another size: if it is the only value, the field takes the
    /// new size, otherwise its sizes may differ from now on.
    void ReplaceByOtherSize(int32 index, const void* data, size_t size);
    void Remove(int32 index);

    /// Returns whether both have the same name, type and values.
    bool HasSameData(const Field& other) const;

private:
    struct More {
        std::vector<size_t> ends; ///< for values of different sizes, once there is more than one
        std::vector<BMessage> messages;
    };

    size_t EndOf(int32 index) const;
    More& NeedMore();

    std::string fName;
    std::string fBytes;
    std::unique_ptr<More> fMore;
    type_code fType;
    uint32 fCount = 0;
    size_t fItemSize;
    bool fFixedSize;
};
