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

/// A 32-bit code and named, typed fields of one or more values each: what is posted, stored in files, dragged and kept
/// as an archive. A plain value; one thread at a time.
///
/// A field has one type. Its values are numbered from 0 in the order in which they were added. Names are case
/// sensitive, not empty, at most kMaxNameLength bytes. The order of fields is that of their first Add.
///
/// What the calls return, unless they say more:
///   Add      `B_BAD_VALUE` for a null or empty or too long name or null data; `B_BAD_TYPE` if the name has another
///            type already: a field never changes its type
///   Find     `B_NAME_NOT_FOUND`, `B_BAD_TYPE`, `B_BAD_INDEX`; `B_BAD_VALUE` for null arguments. What the result is
///            to be stored in is touched only with `B_OK`.
///   Replace  as Find; the field has to have that value already
///   Remove   as Find
/// A call that fails changes nothing.
///
/// Flattened, a message is CBOR (RFC 8949) that any CBOR tool shows; the layout is told in MessageFormat.h. Every value
/// comes back as it was, floating-point numbers bit by bit. Pointers mean something in one process only: they are not
/// written, and are dropped from what is read.
class BMessage {
public:
    /// The limits of what can be flattened, and of what is read. A message beyond them lives on in memory, but cannot
    /// be flattened (`B_BAD_VALUE`): what is written can always be read.
    static constexpr size_t kMaxFlattenedSize = 16 * 1024 * 1024;
    static constexpr int32 kMaxDepth = 16;          ///< messages in messages; one without any has depth 1
    static constexpr int32 kMaxFields = 64 * 1024;  ///< with those of all messages in it
    static constexpr int32 kMaxValues = 256 * 1024; ///< likewise
    static constexpr size_t kMaxNameLength = 255;   ///< bytes

    /// What the message is about.
    uint32 what = 0;

    BMessage();
    explicit BMessage(uint32 code);
    /// Copies code, fields, mark, and how it was dropped. A copy of a delivered message is not the delivered one: it
    /// has no return address and answers nothing; a message that is assigned to is what it was in this.
    BMessage(const BMessage& other);
    BMessage& operator=(const BMessage& other);
    /// Takes everything over, the duty to answer too; `other` is left empty, and a message that is assigned to answers
    /// before.
    BMessage(BMessage&& other) noexcept;
    BMessage& operator=(BMessage&& other) noexcept;
    /// Answers `B_NO_REPLY` if the sender waits and has not been answered.
    virtual ~BMessage();

    /// The same code, and the same fields with the same types and values, bit by bit; in whatever order of fields.
    bool HasSameData(const BMessage& other) const;

    // What is in it.

    /// The number of fields of this type; `B_ANY_TYPE` counts all.
    int32 CountNames(type_code type) const;
    bool IsEmpty() const;
    /// The type of a field and the number of its values; both may be null.
    status_t GetInfo(const char* name, type_code* type, int32* count = nullptr) const;
    /// The `index`-th of the fields that have this type (`B_ANY_TYPE`: of all): its name, valid until the message is
    /// changed, its type and the number of its values. Each may be null.
    /// @return `B_BAD_INDEX` if there are not as many
    status_t GetInfo(type_code type, int32 index, const char** name, type_code* typeFound,
                     int32* count = nullptr) const;

    /// Removes one value; the field with its last one.
    status_t RemoveData(const char* name, int32 index = 0);
    /// Removes a field.
    status_t RemoveName(const char* name);
    /// Removes all fields. The code stays.
    status_t MakeEmpty();

    // Add a value at the end of a field, which is made if there is none.

    status_t AddBool(const char* name, bool value);
    status_t AddInt8(const char* name, int8 value);
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
    status_t AddPointer(const char* name, const void* value);
    status_t AddMessenger(const char* name, const BMessenger& value);
    /// Puts a copy in, with its pointers.
    status_t AddMessage(const char* name, const BMessage* value);
    /// Adds the object's bytes under its type code, of the size that the rules of AddData and the object allow.
    status_t AddFlat(const char* name, const BFlattenable* object);
    /// Adds a copy of these bytes, of any type but `B_MESSAGE_TYPE` (`B_BAD_TYPE`).
    /// @param numBytes   a type whose size is known has to have it, else `B_BAD_VALUE`. A string ends at its first zero
    ///                   byte or, without one, with the last byte.
    /// @param fixedSize  settled by the first value: all values of the field will have the size of that one, and one
    ///                   of another size is `B_BAD_VALUE`
    /// @param numItems   how many values will come; a hint, of no effect on the result
    status_t AddData(const char* name, type_code type, const void* data, ssize_t numBytes, bool fixedSize = true,
                     int32 numItems = 1);

    // Find a value: the first, or the one with this index. The results are copies, but for strings and data.

    status_t FindBool(const char* name, bool* value) const { return FindBool(name, 0, value); }
    status_t FindBool(const char* name, int32 index, bool* value) const;
    status_t FindInt8(const char* name, int8* value) const { return FindInt8(name, 0, value); }
    status_t FindInt8(const char* name, int32 index, int8* value) const;
    status_t FindInt16(const char* name, int16* value) const { return FindInt16(name, 0, value); }
    status_t FindInt16(const char* name, int32 index, int16* value) const;
    status_t FindInt32(const char* name, int32* value) const { return FindInt32(name, 0, value); }
    status_t FindInt32(const char* name, int32 index, int32* value) const;
    status_t FindInt64(const char* name, int64* value) const { return FindInt64(name, 0, value); }
    status_t FindInt64(const char* name, int32 index, int64* value) const;
    status_t FindFloat(const char* name, float* value) const { return FindFloat(name, 0, value); }
    status_t FindFloat(const char* name, int32 index, float* value) const;
    status_t FindDouble(const char* name, double* value) const { return FindDouble(name, 0, value); }
    status_t FindDouble(const char* name, int32 index, double* value) const;
    status_t FindPoint(const char* name, BPoint* value) const { return FindPoint(name, 0, value); }
    status_t FindPoint(const char* name, int32 index, BPoint* value) const;
    status_t FindRect(const char* name, BRect* value) const { return FindRect(name, 0, value); }
    status_t FindRect(const char* name, int32 index, BRect* value) const;
    /// The text, ended by a zero byte; belongs to the message and is valid until that is changed.
    status_t FindString(const char* name, const char** value) const { return FindString(name, 0, value); }
    status_t FindString(const char* name, int32 index, const char** value) const;
    status_t FindString(const char* name, std::string* value) const { return FindString(name, 0, value); }
    status_t FindString(const char* name, int32 index, std::string* value) const;
    status_t FindPointer(const char* name, void** value) const { return FindPointer(name, 0, value); }
    status_t FindPointer(const char* name, int32 index, void** value) const;
    status_t FindMessenger(const char* name, BMessenger* value) const { return FindMessenger(name, 0, value); }
    status_t FindMessenger(const char* name, int32 index, BMessenger* value) const;
    /// Replaces code and fields of `value` by those of the message found.
    status_t FindMessage(const char* name, BMessage* value) const { return FindMessage(name, 0, value); }
    status_t FindMessage(const char* name, int32 index, BMessage* value) const;
    /// Lets the object read the bytes; fails with `B_BAD_TYPE` unless it allows the field's type, else as the object's
    /// Unflatten does.
    status_t FindFlat(const char* name, BFlattenable* object) const { return FindFlat(name, 0, object); }
    status_t FindFlat(const char* name, int32 index, BFlattenable* object) const;
    /// The bytes of a value (of a string with its zero); they belong to the message, are valid until that is changed,
    /// and lie at any address: copy them out. Messages are not bytes: `B_BAD_TYPE`.
    /// @param type      `B_ANY_TYPE` takes any
    /// @param numBytes  may be null
    status_t FindData(const char* name, type_code type, const void** data, ssize_t* numBytes) const
    {
        return FindData(name, type, 0, data, numBytes);
    }
    status_t FindData(const char* name, type_code type, int32 index, const void** data, ssize_t* numBytes) const;

    // Whether there is such a value.

    bool HasBool(const char* name, int32 index = 0) const;
    bool HasInt8(const char* name, int32 index = 0) const;
    bool HasInt16(const char* name, int32 index = 0) const;
    bool HasInt32(const char* name, int32 index = 0) const;
    bool HasInt64(const char* name, int32 index = 0) const;
    bool HasFloat(const char* name, int32 index = 0) const;
    bool HasDouble(const char* name, int32 index = 0) const;
    bool HasPoint(const char* name, int32 index = 0) const;
    bool HasRect(const char* name, int32 index = 0) const;
    bool HasString(const char* name, int32 index = 0) const;
    bool HasPointer(const char* name, int32 index = 0) const;
    bool HasMessenger(const char* name, int32 index = 0) const;
    bool HasMessage(const char* name, int32 index = 0) const;
    bool HasFlat(const char* name, const BFlattenable* object) const { return HasFlat(name, 0, object); }
    bool HasFlat(const char* name, int32 index, const BFlattenable* object) const;
    /// @param type  `B_ANY_TYPE` takes any
    bool HasData(const char* name, type_code type, int32 index = 0) const;

    // Put another value in the place of one that is there.

    status_t ReplaceBool(const char* name, bool value) { return ReplaceBool(name, 0, value); }
    status_t ReplaceBool(const char* name, int32 index, bool value);
    status_t ReplaceInt8(const char* name, int8 value) { return ReplaceInt8(name, 0, value); }
    status_t ReplaceInt8(const char* name, int32 index, int8 value);
    status_t ReplaceInt16(const char* name, int16 value) { return ReplaceInt16(name, 0, value); }
    status_t ReplaceInt16(const char* name, int32 index, int16 value);
    status_t ReplaceInt32(const char* name, int32 value) { return ReplaceInt32(name, 0, value); }
    status_t ReplaceInt32(const char* name, int32 index, int32 value);
    status_t ReplaceInt64(const char* name, int64 value) { return ReplaceInt64(name, 0, value); }
    status_t ReplaceInt64(const char* name, int32 index, int64 value);
    status_t ReplaceFloat(const char* name, float value) { return ReplaceFloat(name, 0, value); }
    status_t ReplaceFloat(const char* name, int32 index, float value);
    status_t ReplaceDouble(const char* name, double value) { return ReplaceDouble(name, 0, value); }
    status_t ReplaceDouble(const char* name, int32 index, double value);
    status_t ReplacePoint(const char* name, BPoint value);
    status_t ReplacePoint(const char* name, int32 index, BPoint value);
    status_t ReplaceRect(const char* name, BRect value);
    status_t ReplaceRect(const char* name, int32 index, BRect value);
    status_t ReplaceString(const char* name, const char* value) { return ReplaceString(name, 0, value); }
    status_t ReplaceString(const char* name, int32 index, const char* value);
    status_t ReplaceString(const char* name, const std::string& value) { return ReplaceString(name, 0, value); }
    status_t ReplaceString(const char* name, int32 index, const std::string& value)
    {
        return ReplaceString(name, index, value.c_str());
    }
    status_t ReplacePointer(const char* name, const void* value) { return ReplacePointer(name, 0, value); }
    status_t ReplacePointer(const char* name, int32 index, const void* value);
    status_t ReplaceMessenger(const char* name, const BMessenger& value) { return ReplaceMessenger(name, 0, value); }
    status_t ReplaceMessenger(const char* name, int32 index, const BMessenger& value);
    status_t ReplaceMessage(const char* name, const BMessage* value) { return ReplaceMessage(name, 0, value); }
    status_t ReplaceMessage(const char* name, int32 index, const BMessage* value);
    status_t ReplaceFlat(const char* name, const BFlattenable* object) { return ReplaceFlat(name, 0, object); }
    status_t ReplaceFlat(const char* name, int32 index, const BFlattenable* object);
    /// Only a type whose size is known holds the value to that (`B_BAD_VALUE`). If any other field of values of one
    /// size gets one of another size, that is the size of its only value then, or its values may differ from now on.
    status_t ReplaceData(const char* name, type_code type, const void* data, ssize_t numBytes)
    {
        return ReplaceData(name, type, 0, data, numBytes);
    }
    status_t ReplaceData(const char* name, type_code type, int32 index, const void* data, ssize_t numBytes);

    // As bytes.

    /// The number of bytes that Flatten writes, or `B_BAD_VALUE` beyond the limits. As costly as Flatten.
    ssize_t FlattenedSize() const;
    /// Writes the message with one Write() to where the stream stands.
    /// @param size  when not null, gets the number of bytes
    /// @return `B_BAD_VALUE` beyond the limits, what the stream reported, `B_DEVICE_FULL` if it took only a part
    status_t Flatten(BDataIO* stream, ssize_t* size = nullptr) const;
    /// @param size  of the buffer; `B_NO_MEMORY` if that is too small
    status_t Flatten(char* buffer, ssize_t size) const;
    /// Takes code and fields from a stream, and reads no byte behind the message.
    /// @return `B_BAD_VALUE` for anything that is not a whole, sound message within the limits, whatever made it so:
    ///         nothing is trusted. Or what the stream reported. With any error the message is as it was. Takes, for a
    ///         moment, a few times the memory of the bytes that were there to read, and a few MiB at most beyond that.
    status_t Unflatten(BDataIO* stream);
    /// The same from memory, which must hold the message and nothing else.
    status_t Unflatten(const char* buffer, ssize_t size);

    // How it came here. Fields have no part in this, and it is neither flattened nor compared.

    /// For what is sent faster than it may be read, and tells only that something is new: while a message that is so
    /// marked waits for a handler, a further one with the same code for the same handler takes its place (there, not
    /// at the end) instead of waiting behind it. Copied with the message.
    void SetNewestWins(bool newestWins) { fNewestWins = newestWins; }
    bool IsNewestWins() const { return fNewestWins; }

    /// Whether it was dropped by the user's hand.
    bool WasDropped() const;
    /// Where, in screen coordinates; (0, 0) if it was not dropped.
    /// @param offset  when not null, gets where in the dragged thing the hand was
    BPoint DropPoint(BPoint* offset = nullptr) const;

    /// Whether it was posted or sent, and not made here.
    bool WasDelivered() const { return fDelivered; }
    /// Whether its sender waits for an answer (in SendMessage with a reply), and has none yet.
    bool IsSourceWaiting() const;
    /// Where an answer will go; an invalid messenger if it asked for none.
    BMessenger ReturnAddress() const;
    /// Answers a delivered message. To a waiting sender the answer goes at once, not by way of the main loop.
    /// @param replyTo  where an answer to the answer is wanted; may be null
    /// @param timeout  of no effect: sending never waits
    /// @return `B_BAD_REPLY` if it was not delivered, asked for no answer, or the sender has given up waiting;
    ///         `B_DUPLICATE_REPLY` if a waiting sender has an answer already
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
