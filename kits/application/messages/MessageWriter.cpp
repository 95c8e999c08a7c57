#include "kits/application/MessagePrivate.h"
#include "kits/application/messages/MessageField.h"
#include "kits/application/messages/MessageFormat.h"
#include "kits/application/messages/MessageText.h"
#include "kits/application/teams/Crc32.h"
#include "kits/support/TypeConstants.h"

#include <QByteArray>
#include <QCborStreamWriter>

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
    explicit MessageWriter(QByteArray* bytes)
        : fWriter(bytes)
    {
    }

    /// Whether the message is within the limits.
    bool Measure(const BMessage& message, int32 depth);
    void Write(const BMessage& message);

private:
    void WriteText(std::string_view text);
    void WriteCode(uint32 code);
    void WriteField(const Field& field);
    void WriteValue(type_code type, std::string_view value);
    template <class T> void WriteArray(std::string_view value);

    QCborStreamWriter fWriter;
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
        if (++fCountFields > BMessage::kMaxFields || fCountValues > BMessage::kMaxValues)
            return false;
        for (int32 i = 0; field.Type() == B_MESSAGE_TYPE && i < field.Count(); ++i) {
            if (!Measure(field.MessageAt(i), depth + 1))
                return false;
        }
    }
    return true;
}

void MessageWriter::Write(const BMessage& message)
{
    quint64 count = 0;
    for (const Field& field : MessageAccess::FieldsOf(message))
        count += IsAddressType(field.Type()) ? 0 : 1;
    fWriter.startMap(2);
    fWriter.append(QLatin1StringView("what"));
    WriteCode(message.what);
    fWriter.append(QLatin1StringView("fields"));
    fWriter.startMap(count);
    for (const Field& field : MessageAccess::FieldsOf(message)) {
        if (!IsAddressType(field.Type()))
            WriteField(field);
    }
    fWriter.endMap();
    fWriter.endMap();
}

void MessageWriter::WriteText(std::string_view text)
{
    const qsizetype size = static_cast<qsizetype>(text.size());
    if (IsUtf8(text))
        fWriter.appendTextString(text.data(), size);
    else
        fWriter.appendByteString(text.data(), size);
}

void MessageWriter::WriteCode(uint32 code)
{
    const std::string text = TextOfCode(code);
    if (text.empty())
        fWriter.append(static_cast<quint64>(code));
    else
        fWriter.appendTextString(text.data(), static_cast<qsizetype>(text.size()));
}

void MessageWriter::WriteField(const Field& field)
{
    WriteText(field.Name());
    const bool isMarked = !field.IsFixedSize() && IsOpaqueType(field.Type());
    fWriter.startArray(static_cast<quint64>(field.Count()) + (isMarked ? 2 : 1));
    WriteCode(field.Type());
    if (isMarked)
        WriteText(kVariableMark);
    for (int32 i = 0; i < field.Count(); ++i) {
        if (field.Type() == B_MESSAGE_TYPE)
            Write(field.MessageAt(i));
        else
            WriteValue(field.Type(), field.ItemAt(i));
    }
    fWriter.endArray();
}

void MessageWriter::WriteValue(type_code type, std::string_view value)
{
    switch (type) {
    case B_BOOL_TYPE:
        return fWriter.append(value[0] != 0);
    case B_INT8_TYPE:
        return fWriter.append(static_cast<qint64>(ValueIn<int8>(value)));
    case B_INT16_TYPE:
        return fWriter.append(static_cast<qint64>(ValueIn<int16>(value)));
    case B_INT32_TYPE:
        return fWriter.append(static_cast<qint64>(ValueIn<int32>(value)));
    case B_INT64_TYPE:
        return fWriter.append(static_cast<qint64>(ValueIn<int64>(value)));
    case B_UINT8_TYPE:
        return fWriter.append(static_cast<quint64>(ValueIn<uint8>(value)));
    case B_UINT16_TYPE:
        return fWriter.append(static_cast<quint64>(ValueIn<uint16>(value)));
    case B_UINT32_TYPE:
        return fWriter.append(static_cast<quint64>(ValueIn<uint32>(value)));
    case B_UINT64_TYPE:
        return fWriter.append(static_cast<quint64>(ValueIn<uint64>(value)));
    case B_FLOAT_TYPE:
        return fWriter.append(ValueIn<float>(value));
    case B_DOUBLE_TYPE:
        return fWriter.append(ValueIn<double>(value));
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
        return fWriter.appendByteString(value.data(), static_cast<qsizetype>(value.size()));
    }
}

template <class T> void MessageWriter::WriteArray(std::string_view value)
{
    fWriter.startArray(value.size() / sizeof(T));
    for (; !value.empty(); value.remove_prefix(sizeof(T))) {
        if constexpr (std::is_integral_v<T>)
            fWriter.append(static_cast<quint64>(ValueIn<T>(value)));
        else
            fWriter.append(ValueIn<T>(value));
    }
    fWriter.endArray();
}

/// An integer of CBOR in the four-byte form, whatever its value.
void AppendFourByteInteger(std::string* bytes, uint32 value)
{
    bytes->push_back(kFourByteInteger);
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes->push_back(static_cast<char>(value >> shift & 0xFF));
}

} // namespace

status_t WriteMessage(const BMessage& message, std::string* flat, bool withChecksum)
{
    QByteArray bytes;
    MessageWriter writer(&bytes);
    if (!writer.Measure(message, 1))
        return B_BAD_VALUE;
    writer.Write(message);
    const std::string_view map(bytes.constData(), static_cast<size_t>(bytes.size()));
    const size_t size = map.size() + (withChecksum ? kChecksumSize : 0);
    if (kMessageHeadSize + size > BMessage::kMaxFlattenedSize)
        return B_BAD_VALUE;

    flat->clear();
    flat->reserve(kMessageHeadSize + size);
    flat->append(kMessageMark).push_back(withChecksum ? kArrayOfThree : kArrayOfTwo);
    AppendFourByteInteger(flat, static_cast<uint32>(size));
    flat->append(map);
    if (withChecksum)
        AppendFourByteInteger(flat, Crc32(map));
    return B_OK;
}

} // namespace kits
