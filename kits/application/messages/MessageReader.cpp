// SPDX-License-Identifier: MIT
#include "kits/application/messages/Crc32.h"
#include "kits/application/messages/MessageField.h"
#include "kits/application/messages/MessageFormat.h"
#include "kits/application/messages/MessagePrivate.h"
#include "kits/application/messages/MessageText.h"
#include "kits/application/messages/ValueTypes.h"

#include <QByteArray>
#include <QCborStreamReader>

#include <algorithm>
#include <limits>
#include <type_traits>

namespace kits {

namespace {

using Field = MessageAccess::Field;

/// Reads a message that anybody may have written. Every call returns false for anything that is not exactly as the
/// format says. It trusts a length only as far as bytes follow.
class MessageReader {
public:
    MessageReader(std::string_view bytes, const MessageLimits& limits)
        : fLimits(limits)
        , fSize(static_cast<qint64>(bytes.size()))
        , fReader(QByteArray::fromRawData(bytes.data(), static_cast<qsizetype>(bytes.size())))
    {
    }

    bool Read(BMessage* message, int32 depth);
    bool IsAtEnd() const { return fReader.currentOffset() == fSize; }

private:
    /// Enters a map or an array of known length. Each element takes at least one byte.
    bool Enter(QCborStreamReader::Type type, quint64* length);
    bool Leave() { return fReader.leaveContainer(); }
    bool ReadBytes(std::string* bytes);
    bool ReadText(std::string* text) { return fReader.isString() && ReadBytes(text); }
    bool ReadCode(uint32* code);
    bool ReadName(std::string_view expected);
    bool ReadFields(BMessage* message, int32 depth);
    bool ReadField(BMessage* message, int32 depth);
    bool ReadValue(Field* field);
    template <class T> bool ReadInteger(T* value);
    template <class T> bool ReadNumber(T* value);

    const MessageLimits fLimits;
    const qint64 fSize;
    QCborStreamReader fReader;
    std::string fScratch;
    int32 fCountFields = 0;
    int32 fCountValues = 0;
};

bool MessageReader::Enter(QCborStreamReader::Type type, quint64* length)
{
    if (fReader.type() != type || !fReader.isLengthKnown())
        return false;
    *length = fReader.length();
    return *length <= static_cast<quint64>(fSize - fReader.currentOffset()) && fReader.enterContainer();
}

bool MessageReader::ReadBytes(std::string* bytes)
{
    if ((!fReader.isByteArray() && !fReader.isString()) || !fReader.isLengthKnown())
        return false;
    const qsizetype size = fReader.currentStringChunkSize();
    if (size < 0 || size > fSize - fReader.currentOffset())
        return false;
    bytes->resize(static_cast<size_t>(size));
    const auto chunk = fReader.readStringChunk(bytes->data(), size);
    if (chunk.status != QCborStreamReader::Ok || chunk.data != size)
        return false;
    char none;
    return fReader.readStringChunk(&none, 0).status == QCborStreamReader::EndOfString;
}

bool MessageReader::ReadCode(uint32* code)
{
    if (fReader.isUnsignedInteger())
        return ReadInteger(code);
    return ReadText(&fScratch) && CodeOfText(fScratch, code);
}

bool MessageReader::ReadName(std::string_view expected)
{
    return ReadText(&fScratch) && fScratch == expected;
}

bool MessageReader::Read(BMessage* message, int32 depth)
{
    quint64 length;
    return depth <= BMessage::kMaxDepth && Enter(QCborStreamReader::Map, &length) && length == 2 && ReadName("what") &&
           ReadCode(&message->what) && ReadName("fields") && ReadFields(message, depth) && Leave();
}

bool MessageReader::ReadFields(BMessage* message, int32 depth)
{
    quint64 length;
    if (!Enter(QCborStreamReader::Map, &length) || length > static_cast<quint64>(fLimits.fields))
        return false;
    for (quint64 i = 0; i < length; ++i)
        if (++fCountFields > fLimits.fields || !ReadField(message, depth))
            return false;
    const std::vector<Field>& fields = MessageAccess::FieldsOf(*message);
    std::vector<std::string_view> names(fields.size());
    std::transform(fields.begin(), fields.end(), names.begin(),
                   [](const Field& field) -> std::string_view { return field.Name(); });
    std::sort(names.begin(), names.end());
    return std::adjacent_find(names.begin(), names.end()) == names.end() && Leave();
}

bool MessageReader::ReadField(BMessage* message, int32 depth)
{
    std::string name;
    quint64 length;
    type_code type;
    if (!ReadBytes(&name) || name.find('\0') != std::string::npos || !IsFieldName(name.c_str()) ||
        !Enter(QCborStreamReader::Array, &length) || length < 2 || !ReadCode(&type) || type == B_ANY_TYPE)
        return false;

    quint64 count = length - 1;
    const bool isOpaque = IsOpaqueType(type);
    bool fixedSize = FixedSizeOf(type) != 0;
    if (isOpaque) {
        fixedSize = !fReader.isString();
        if (!fixedSize && (!ReadName(kVariableMark) || --count == 0))
            return false;
    }
    if (count > static_cast<quint64>(fLimits.values - fCountValues))
        return false;
    fCountValues += static_cast<int32>(count);

    if (IsAddressType(type)) {
        for (uint64 address; count > 0; --count)
            if (!ReadInteger(&address))
                return false;
        return Leave();
    }

    // Opaque values have the size of the first one, which is not known yet.
    if (isOpaque && !ReadBytes(&fScratch))
        return false;
    const size_t itemSize = isOpaque ? fScratch.size() : FixedSizeOf(type);
    Field field(name, type, fixedSize, fixedSize ? itemSize : 0);
    if (count > 1)
        field.Reserve(static_cast<size_t>(count));
    for (quint64 i = 0; i < count; ++i) {
        if (type == B_MESSAGE_TYPE) {
            BMessage inner;
            if (!Read(&inner, depth + 1))
                return false;
            field.AddMessage(std::move(inner));
        } else if (isOpaque) {
            if ((i > 0 && !ReadBytes(&fScratch)) || (fixedSize && fScratch.size() != itemSize))
                return false;
            field.Add(fScratch.data(), fScratch.size());
        } else if (!ReadValue(&field)) {
            return false;
        }
    }
    MessageAccess::FieldsOf(*message).push_back(std::move(field));
    return Leave();
}

bool MessageReader::ReadValue(Field* field)
{
    if (field->Type() == B_STRING_TYPE) {
        if (!ReadBytes(&fScratch) || fScratch.find('\0') != std::string::npos)
            return false;
        field->Add(fScratch.c_str(), fScratch.size() + 1);
        return true;
    }
    return VisitNumbers(field->Type(), false, [this, field](auto numbers) {
        const bool isArray = numbers.size() > 1;
        quint64 length = 1;
        if (isArray && (!Enter(QCborStreamReader::Array, &length) || length != numbers.size()))
            return false;
        for (auto& number : numbers)
            if (!ReadNumber(&number))
                return false;
        field->Add(&numbers, sizeof(numbers));
        return !isArray || Leave();
    });
}

template <class T> bool MessageReader::ReadInteger(T* value)
{
    using Limits = std::numeric_limits<T>;
    if (fReader.isUnsignedInteger()) {
        const quint64 number = fReader.toUnsignedInteger();
        if (number > static_cast<quint64>(Limits::max()))
            return false;
        *value = static_cast<T>(number);
    } else if (fReader.isNegativeInteger()) {
        // The value is minus the number; 0 stands for 2^64.
        const quint64 number = static_cast<quint64>(fReader.toNegativeInteger());
        if (number - 1 > static_cast<quint64>(-(Limits::min() + 1)) || Limits::min() == 0)
            return false;
        *value = static_cast<T>(-static_cast<int64>(number - 1) - 1);
    } else {
        return false;
    }
    return fReader.next(1);
}

template <class T> bool MessageReader::ReadNumber(T* value)
{
    if constexpr (std::is_same_v<T, bool>) {
        if (!fReader.isBool())
            return false;
        *value = fReader.toBool();
    } else if constexpr (std::is_same_v<T, float>) {
        if (!fReader.isFloat())
            return false;
        *value = fReader.toFloat();
    } else if constexpr (std::is_same_v<T, double>) {
        if (!fReader.isDouble())
            return false;
        *value = fReader.toDouble();
    } else {
        return ReadInteger(value);
    }
    return fReader.next(1);
}

uint32 FourByteIntegerIn(std::string_view bytes)
{
    uint32 value = 0;
    for (const char c : bytes.substr(1, 4))
        value = value << 8 | static_cast<uint8>(c);
    return value;
}

} // namespace

ssize_t SizeOfMessage(std::string_view head)
{
    if (head.size() < kMessageHeadSize || head.substr(0, 3) != kMessageMark ||
        (head[3] != kArrayOfTwo && head[3] != kArrayOfThree) || head[4] != kFourByteInteger)
        return B_BAD_VALUE;
    const size_t size = kMessageHeadSize + FourByteIntegerIn(head.substr(4));
    return size <= BMessage::kMaxFlattenedSize ? static_cast<ssize_t>(size) : B_BAD_VALUE;
}

status_t ReadMessage(std::string_view flat, BMessage* message, const MessageLimits& limits)
{
    if (SizeOfMessage(flat) != static_cast<ssize_t>(flat.size()) || flat.size() > limits.size)
        return B_BAD_VALUE;
    std::string_view map = flat.substr(kMessageHeadSize);
    if (flat[3] == kArrayOfThree) {
        if (map.size() < kChecksumSize)
            return B_BAD_VALUE;
        const std::string_view checksum = map.substr(map.size() - kChecksumSize);
        map.remove_suffix(kChecksumSize);
        if (checksum[0] != kFourByteInteger || FourByteIntegerIn(checksum) != Crc32(map))
            return B_BAD_VALUE;
    }
    BMessage read;
    MessageReader reader(map, limits);
    if (!reader.Read(&read, 1) || !reader.IsAtEnd())
        return B_BAD_VALUE;
    message->what = read.what;
    MessageAccess::FieldsOf(*message) = std::move(MessageAccess::FieldsOf(read));
    return B_OK;
}

} // namespace kits
