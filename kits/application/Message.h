// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/AppDefs.h"
#include "kits/kernel/Threads.h"

#include <memory>
#include <string>
#include <vector>

class BDataIO;
class BFlattenable;
class BHandler;
class BMessenger;
class BPoint;
class BRect;

namespace kits {
struct MessageAccess;
struct MessageDelivery;
} // namespace kits

/// A 32-bit code and named, typed fields of one or more values each: messages are posted, stored in files, dragged and
/// kept as archives. A plain value; one thread at a time.
///
/// A field has one type. Its values are numbered from 0 in the order in which they were added. Names are case
/// sensitive, not empty, at most kMaxNameLength bytes. The order of fields is that of their first Add.
///
/// Results of the calls, unless stated otherwise:
///   Add      `B_BAD_VALUE` for a null, empty or too long name, or null data; `B_BAD_TYPE` if the field has another
///            type: a field never changes its type
///   Find     `B_NAME_NOT_FOUND`, `B_BAD_TYPE`, `B_BAD_INDEX`; `B_BAD_VALUE` for null arguments. The result is stored
///            only with `B_OK`.
///   Replace  as Find; the field must have that value already
///   Remove   as Find
/// A call that fails changes nothing.
///
/// Flattened, a message is CBOR (RFC 8949) that any CBOR tool can show; MessageFormat.h describes the layout. Every
/// value comes back unchanged, floating-point numbers bit by bit. Pointers are valid in one process only: they are not
/// written, and are dropped from what is read.
class BMessage {
public:
    /// The limits of messages that can be flattened or read. A message beyond them can exist in memory, but cannot be
    /// flattened (`B_BAD_VALUE`): every written message can be read.
    static constexpr size_t kMaxFlattenedSize = 16 * 1024 * 1024;
    static constexpr int32 kMaxDepth = 16;          ///< messages in messages; one without any has depth 1
    static constexpr int32 kMaxFields = 64 * 1024;  ///< including those of all messages in it
    static constexpr int32 kMaxValues = 256 * 1024; ///< likewise
    static constexpr size_t kMaxNameLength = 255;   ///< bytes

    /// The meaning of the message.
    uint32 what = 0;

    BMessage();
    explicit BMessage(uint32 code);
    /// Copies code, fields, mark, and how it was dropped. A copy of a delivered message is not the delivered one: it
    /// has no reply address and answers nothing; a message that is assigned to keeps its own delivery.
    BMessage(const BMessage& other);
    BMessage& operator=(const BMessage& other);
    /// Takes everything over, including the duty to answer; `other` is left empty, and a message that is assigned to
    /// answers its own sender first.
    BMessage(BMessage&& other) noexcept;
    BMessage& operator=(BMessage&& other) noexcept;
    /// Answers `B_NO_REPLY` if the sender waits and has not been answered.
    virtual ~BMessage();

    /// Whether both have the same code, and the same fields with the same types and values, bit by bit, in whatever
    /// order.
    bool HasSameData(const BMessage& other) const;

    // The contents.

    /// The number of fields of this type; `B_ANY_TYPE` counts all.
    int32 CountNames(type_code type) const;
    bool IsEmpty() const;
    /// The type of a field and the number of its values; both may be null.
    status_t GetInfo(const char* name, type_code* type, int32* count = nullptr) const;

    /// Removes one value; removing the last one removes the field.
    status_t RemoveData(const char* name, int32 index = 0);
    /// Removes a field.
    status_t RemoveName(const char* name);
    /// Removes all fields. The code stays.
    status_t MakeEmpty();

    // Add a value at the end of a field, which is created if it does not exist.

    status_t AddBool(const char* name, bool value);
    status_t AddInt8(const char* name, int8 value); ///< for the tool that makes resources, as AddDouble
    status_t AddInt16(const char* name, int16 value);
    status_t AddInt32(const char* name, int32 value);
    status_t AddInt64(const char* name, int64 value);
    status_t AddFloat(const char* name, float value);
    status_t AddDouble(const char* name, double value);
    status_t AddPoint(const char* name, BPoint value);
    status_t AddRect(const char* name, BRect value);
    status_t AddString(const char* name, const char* value);
    status_t AddString(const char* name, const std::string& value);
    /// Any address of this process; nothing is owned.
    status_t AddPointer(const char* name, void* value);
    status_t AddMessenger(const char* name, const BMessenger& value);
    /// Adds a copy, including its pointers.
    status_t AddMessage(const char* name, const BMessage* value);
    /// Adds the object's bytes under its type code, with a size that the rules of AddData and the object allow.
    status_t AddFlat(const char* name, const BFlattenable* object);
    /// Adds a copy of these bytes, of any type except `B_MESSAGE_TYPE` (`B_BAD_TYPE`).
    /// @param numBytes   must be the size of the type if that is known, otherwise `B_BAD_VALUE`. A string ends at its
    ///                   first zero byte or, without one, with the last byte.
    /// @param fixedSize  determined by the first value: all values of the field must have its size; one of another size
    ///                   is `B_BAD_VALUE`
    /// @param numItems   how many values will come; only a hint
    status_t AddData(const char* name, type_code type, const void* data, ssize_t numBytes, bool fixedSize = true,
                     int32 numItems = 1);

    // Find a value: the first one, or the one with this index. The results are copies, except for strings and data.

    status_t FindBool(const char* name, bool* value, int32 index = 0) const;
    status_t FindInt8(const char* name, int8* value, int32 index = 0) const;
    status_t FindInt16(const char* name, int16* value, int32 index = 0) const;
    status_t FindInt32(const char* name, int32* value, int32 index = 0) const;
    status_t FindInt64(const char* name, int64* value, int32 index = 0) const;
    status_t FindFloat(const char* name, float* value, int32 index = 0) const;
    status_t FindDouble(const char* name, double* value, int32 index = 0) const;
    status_t FindPoint(const char* name, BPoint* value, int32 index = 0) const;
    status_t FindRect(const char* name, BRect* value, int32 index = 0) const;
    /// The text, terminated by a zero byte; it belongs to the message and is valid until that is changed.
    status_t FindString(const char* name, const char** value, int32 index = 0) const;
    status_t FindString(const char* name, std::string* value, int32 index = 0) const;
    status_t FindPointer(const char* name, void** value, int32 index = 0) const;
    status_t FindMessenger(const char* name, BMessenger* value, int32 index = 0) const;
    /// Replaces code and fields of `value` by those of the message found.
    status_t FindMessage(const char* name, BMessage* value, int32 index = 0) const;
    /// Lets the object read the bytes; fails with `B_BAD_TYPE` unless it allows the field's type, otherwise as the
    /// object's Unflatten does.
    status_t FindFlat(const char* name, BFlattenable* object, int32 index = 0) const;
    /// The bytes of a value (of a string including its zero); they belong to the message, are valid until that is
    /// changed, and may be unaligned: copy them out. Messages are not bytes: `B_BAD_TYPE`.
    /// @param type      `B_ANY_TYPE` accepts any
    /// @param numBytes  may be null
    status_t FindData(const char* name, type_code type, const void** data, ssize_t* numBytes, int32 index = 0) const;

    // Whether there is such a value.

    /// @param type  `B_ANY_TYPE` accepts any
    bool HasData(const char* name, type_code type, int32 index = 0) const;

    // Replace an existing value.

    status_t ReplaceMessage(const char* name, const BMessage* value, int32 index = 0);
    /// Only a type of known size requires that size (`B_BAD_VALUE`). If any other field of fixed size gets a value of
    /// another size, that becomes its size if it was the only value; otherwise the sizes of its values may differ from
    /// now on.
    status_t ReplaceData(const char* name, type_code type, const void* data, ssize_t numBytes, int32 index = 0);

    // As bytes.

    /// The number of bytes that Flatten writes, or `B_BAD_VALUE` beyond the limits. As costly as Flatten.
    ssize_t FlattenedSize() const;
    /// Writes the message with one Write() to the stream's position.
    /// @param size  if not null, receives the number of bytes
    /// @return `B_BAD_VALUE` beyond the limits, the stream's error, `B_DEVICE_FULL` if it accepted only a part
    status_t Flatten(BDataIO* stream, ssize_t* size = nullptr) const;
    /// @param size  of the buffer; `B_NO_MEMORY` if that is too small
    status_t Flatten(char* buffer, ssize_t size) const;
    /// Reads code and fields from a stream, and reads no byte beyond the message.
    /// @return `B_BAD_VALUE` for anything that is not a whole, valid message within the limits: nothing is trusted. Or
    ///         the stream's error. An error leaves the message unchanged. Temporarily takes a few times the memory of
    ///         the bytes that could be read, and a few MiB at most beyond that.
    status_t Unflatten(BDataIO* stream);
    /// The same from memory, which must hold the message and nothing else.
    status_t Unflatten(const char* buffer, ssize_t size);

    // Its delivery. Fields have no part in this, and it is neither flattened nor compared.

    /// For messages that are sent faster than they may be read, and only report that something is new: while a marked
    /// message waits for a handler, a further one with the same code for the same handler replaces it (in its place,
    /// not at the end). Copied with the message.
    void SetNewestWins(bool newestWins) { fNewestWins = newestWins; }
    bool IsNewestWins() const { return fNewestWins; }

    /// Whether the user dropped it.
    bool WasDropped() const;
    /// Where it was dropped, in screen coordinates; (0, 0) if it was not dropped.
    /// @param offset  if not null, receives the pointer's place in the dragged object
    BPoint DropPoint(BPoint* offset = nullptr) const;

    /// Whether it was posted or sent, and not made here.
    bool WasDelivered() const { return fDelivered; }
    /// Whether its sender waits for a reply (in SendMessage with a reply), and has none yet.
    bool IsSourceWaiting() const;
    /// The address for a reply; an invalid messenger if the sender asked for none.
    BMessenger ReturnAddress() const;
    /// Answers a delivered message. A waiting sender gets the reply at once, without the main loop.
    /// @param replyTo  the handler for a reply to the reply; may be null
    /// @param timeout  has no effect: sending never waits
    /// @return `B_BAD_REPLY` if it was not delivered, asked for no reply, or the sender has stopped waiting;
    ///         `B_DUPLICATE_REPLY` if a waiting sender has a reply already
    status_t SendReply(uint32 code, BHandler* replyTo = nullptr);
    status_t SendReply(BMessage* reply, BHandler* replyTo = nullptr, bigtime_t timeout = B_INFINITE_TIMEOUT);

private:
    friend struct kits::MessageAccess;
    class Field;

    Field* FieldOf(const char* name);
    const Field* FieldOf(const char* name) const;
    status_t FindField(const char* name, type_code type, int32 index, const Field** found) const;
    status_t AddBytes(const char* name, type_code type, const void* data, size_t size, bool fixedSize, int32 count = 1);
    status_t FindBytes(const char* name, type_code type, int32 index, void* value, size_t size) const;
    status_t ReplaceBytes(const char* name, type_code type, int32 index, const void* data, size_t size);

    bool fNewestWins = false;
    bool fDelivered = false;
    std::vector<Field> fFields;
    std::unique_ptr<kits::MessageDelivery> fDelivery; ///< null unless it was dropped or has a return address
};
