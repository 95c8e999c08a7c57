// SPDX-License-Identifier: MIT
#include "kits/application/messages/CborWriter.h"
#include "kits/application/messages/Crc32.h"
#include "kits/application/messages/MessageField.h"
#include "kits/application/messages/MessageFormat.h"
#include "kits/application/messages/MessagePrivate.h"
#include "kits/application/messages/MessageText.h"
#include "kits/support/TypeConstants.h"

#include <cstring>

namespace kits {

namespace {

using Field = MessageAccess::Field;

template <class T> T ValueIn(std::string_view bytes)
{
    T value;
    memcpy(&value, bytes.data(), sizeof(value));
    return value;
}

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
    template <class T> void WriteArray(std::string_view value);

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
    switch (type) {
    case B_BOOL_TYPE:
        return fWriter.AddBool(value[0] != 0);
    case B_INT8_TYPE:
        return fWriter.AddInteger(ValueIn<int8>(value));
    case B_INT16_TYPE:
        return fWriter.AddInteger(ValueIn<int16>(value));
    case B_INT32_TYPE:
        return fWriter.AddInteger(ValueIn<int32>(value));
    case B_INT64_TYPE:
        return fWriter.AddInteger(ValueIn<int64>(value));
    case B_UINT8_TYPE:
        return fWriter.AddUnsigned(ValueIn<uint8>(value));
    case B_UINT16_TYPE:
        return fWriter.AddUnsigned(ValueIn<uint16>(value));
    case B_UINT32_TYPE:
        return fWriter.AddUnsigned(ValueIn<uint32>(value));
    case B_UINT64_TYPE:
        return fWriter.AddUnsigned(ValueIn<uint64>(value));
    case B_FLOAT_TYPE:
        return fWriter.AddFloat(ValueIn<float>(value));
    case B_DOUBLE_TYPE:
        return fWriter.AddDouble(ValueIn<double>(value));
    case B_POINT_TYPE:
    case B_RECT_TYPE:
        return WriteArray<float>(value);
    case B_RGB_COLOR_TYPE:
        return WriteArray<uint8>(value);
    case B_MESSENGER_TYPE:
        return WriteArray<uint64>(value);
    case B_STRING_TYPE:
        return WriteText(value.substr(0, value.size() - 1));
    default:
        return fWriter.AddBytes(value);
    }
}

template <class T> void MessageWriter::WriteArray(std::string_view value)
{
    fWriter.StartArray(value.size() / sizeof(T));
    for (; !value.empty(); value.remove_prefix(sizeof(T)))
        if constexpr (std::is_integral_v<T>)
            fWriter.AddUnsigned(ValueIn<T>(value));
        else
            fWriter.AddFloat(ValueIn<T>(value));
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
