// SPDX-License-Identifier: MIT
#include "kits/application/messages/CborWriter.h"
#include "kits/application/messages/Crc32.h"
#include "kits/application/messages/MessageField.h"
#include "kits/application/messages/MessageFormat.h"
#include "kits/application/messages/MessagePrivate.h"
#include "kits/application/messages/MessageText.h"
#include "kits/application/messages/ValueTypes.h"
#include "kits/support/Utf8.h"

#include <cstring>
#include <type_traits>

namespace kits {

namespace {

using Field = MessageAccess::Field;

class MessageWriter {
public:
    MessageWriter(std::string* bytes, const MessageLimits& limits)
        : fLimits(limits)
        , fWriter(bytes)
    {
    }

    /// Returns whether the message is within the limits.
    bool Measure(const BMessage& message, int32 depth);
    void Write(const BMessage& message);

private:
    void WriteText(std::string_view text);
    void WriteCode(uint32 code);
    void WriteField(const Field& field);
    void WriteValue(type_code type, std::string_view value);
    template <class T> void WriteNumber(T number);

    const MessageLimits fLimits;
    CborWriter fWriter;
    int32 fCountFields = 0;
    int32 fCountValues = 0;
};

bool MessageWriter::Measure(const BMessage& message, int32 depth)
{
    if (depth > BMessage::kMaxDepth)
        return false;
    for (const Field& field : MessageAccess::FieldsOf(message)) {
        if (IsAddressType(field.Type()))
            continue;
        fCountValues += field.Count();
        if (++fCountFields > fLimits.fields || fCountValues > fLimits.values)
            return false;
        for (int32 i = 0; field.Type() == B_MESSAGE_TYPE && i < field.Count(); ++i)
            if (!Measure(field.MessageAt(i), depth + 1))
                return false;
    }
    return true;
}

void MessageWriter::Write(const BMessage& message)
{
    uint64 count = 0;
    for (const Field& field : MessageAccess::FieldsOf(message))
        count += IsAddressType(field.Type()) ? 0 : 1;
    fWriter.StartMap(2);
    fWriter.AddText("what");
    WriteCode(message.what);
    fWriter.AddText("fields");
    fWriter.StartMap(count);
    for (const Field& field : MessageAccess::FieldsOf(message))
        if (!IsAddressType(field.Type()))
            WriteField(field);
}

void MessageWriter::WriteText(std::string_view text)
{
    if (IsUtf8(text))
        fWriter.AddText(text);
    else
        fWriter.AddBytes(text);
}

void MessageWriter::WriteCode(uint32 code)
{
    const std::string text = TextOfCode(code);
    if (text.empty())
        fWriter.AddUnsigned(code);
    else
        fWriter.AddText(text);
}

void MessageWriter::WriteField(const Field& field)
{
    WriteText(field.Name());
    const bool isMarked = !field.IsFixedSize() && IsOpaqueType(field.Type());
    fWriter.StartArray(static_cast<uint64>(field.Count()) + (isMarked ? 2 : 1));
    WriteCode(field.Type());
    if (isMarked)
        WriteText(kVariableMark);
    for (int32 i = 0; i < field.Count(); ++i)
        if (field.Type() == B_MESSAGE_TYPE)
            Write(field.MessageAt(i));
        else
            WriteValue(field.Type(), field.ItemAt(i));
}

void MessageWriter::WriteValue(type_code type, std::string_view value)
{
    if (type == B_STRING_TYPE)
        return WriteText(value.substr(0, value.size() - 1));
    // Any byte may stand for true.
    if (type == B_BOOL_TYPE)
        return fWriter.AddBool(value[0] != 0);
    const bool isOfNumbers = VisitNumbers(type, false, [this, value](auto numbers) {
        memcpy(&numbers, value.data(), sizeof(numbers));
        if (numbers.size() > 1)
            fWriter.StartArray(numbers.size());
        for (const auto number : numbers)
            WriteNumber(number);
        return true;
    });
    if (!isOfNumbers)
        fWriter.AddBytes(value);
}

template <class T> void MessageWriter::WriteNumber(T number)
{
    if constexpr (std::is_same_v<T, float>)
        fWriter.AddFloat(number);
    else if constexpr (std::is_same_v<T, double>)
        fWriter.AddDouble(number);
    else if constexpr (std::is_signed_v<T>)
        fWriter.AddInteger(number);
    else
        fWriter.AddUnsigned(number);
}

/// Writes a CBOR integer in the four-byte form, whatever its value.
void PutFourByteInteger(char* place, uint32 value)
{
    *place++ = kFourByteInteger;
    for (int shift = 24; shift >= 0; shift -= 8)
        *place++ = static_cast<char>(value >> shift & 0xFF);
}

} // namespace

status_t WriteMessage(const BMessage& message, std::string* flat, bool withChecksum, const MessageLimits& limits)
{
    // Enough for most messages.
    constexpr size_t kFirstCapacity = 2048;
    std::string bytes;
    MessageWriter writer(&bytes, limits);
    if (!writer.Measure(message, 1))
        return B_BAD_VALUE;
    bytes.reserve(kFirstCapacity);
    bytes.append(kMessageMark).push_back(withChecksum ? kArrayOfThree : kArrayOfTwo);
    bytes.resize(kMessageHeadSize);
    writer.Write(message);
    const size_t size = bytes.size() - kMessageHeadSize + (withChecksum ? kChecksumSize : 0);
    if (kMessageHeadSize + size > limits.size)
        return B_BAD_VALUE;
    PutFourByteInteger(&bytes[kMessageHeadSize - kChecksumSize], static_cast<uint32>(size));
    if (withChecksum) {
        const size_t end = bytes.size();
        const uint32 checksum = Crc32(std::string_view(bytes).substr(kMessageHeadSize));
        bytes.resize(end + kChecksumSize);
        PutFourByteInteger(&bytes[end], checksum);
    }
    *flat = std::move(bytes);
    return B_OK;
}

} // namespace kits
