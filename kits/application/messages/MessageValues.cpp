// SPDX-License-Identifier: MIT
// The typed calls of BMessage: each is one line about how values of its type are stored.

#include "kits/application/Message.h"
#include "kits/application/messages/MessageField.h"
#include "kits/support/Flattenable.h"
#include "kits/support/Rect.h"
#include "kits/support/TypeConstants.h"

#include <cstring>
#include <string_view>

namespace {

/// Returns the part of the bytes that a string keeps: those before the first zero.
std::string_view TextIn(const void* data, size_t size)
{
    const char* text = static_cast<const char*>(data);
    return {text, strnlen(text, size)};
}

} // namespace

// Types whose values are stored as their own bytes.
#define KITS_PLAIN_VALUE(Name, Value, kType)                                                                           \
    status_t BMessage::Add##Name(const char* name, Value value)                                                        \
    {                                                                                                                  \
        return AddBytes(name, kType, &value, sizeof(value), true);                                                     \
    }                                                                                                                  \
    status_t BMessage::Find##Name(const char* name, Value* value, int32 index) const                                   \
    {                                                                                                                  \
        return FindBytes(name, kType, index, value, sizeof(Value));                                                    \
    }

KITS_PLAIN_VALUE(Int8, int8, B_INT8_TYPE)
KITS_PLAIN_VALUE(Int16, int16, B_INT16_TYPE)
KITS_PLAIN_VALUE(Int32, int32, B_INT32_TYPE)
KITS_PLAIN_VALUE(Int64, int64, B_INT64_TYPE)
KITS_PLAIN_VALUE(Float, float, B_FLOAT_TYPE)
KITS_PLAIN_VALUE(Double, double, B_DOUBLE_TYPE)
KITS_PLAIN_VALUE(Point, BPoint, B_POINT_TYPE)
KITS_PLAIN_VALUE(Rect, BRect, B_RECT_TYPE)
KITS_PLAIN_VALUE(Pointer, void*, B_POINTER_TYPE)

#undef KITS_PLAIN_VALUE

// A bool is stored as one byte; AddData may have stored any value there.

status_t BMessage::AddBool(const char* name, bool value)
{
    const uint8 byte = value ? 1 : 0;
    return AddBytes(name, B_BOOL_TYPE, &byte, 1, true);
}

status_t BMessage::FindBool(const char* name, bool* value, int32 index) const
{
    uint8 byte;
    const status_t status = value == nullptr ? B_BAD_VALUE : FindBytes(name, B_BOOL_TYPE, index, &byte, 1);
    if (status == B_OK)
        *value = byte != 0;
    return status;
}

// A string is stored with its terminating zero.

status_t BMessage::AddString(const char* name, const char* value)
{
    return AddBytes(name, B_STRING_TYPE, value, value == nullptr ? 0 : strlen(value) + 1, false);
}

status_t BMessage::AddString(const char* name, const std::string& value)
{
    return AddString(name, value.c_str());
}

status_t BMessage::FindString(const char* name, const char** value, int32 index) const
{
    const Field* field;
    const status_t status = value == nullptr ? B_BAD_VALUE : FindField(name, B_STRING_TYPE, index, &field);
    if (status == B_OK)
        *value = field->ItemAt(index).data();
    return status;
}

status_t BMessage::FindString(const char* name, std::string* value, int32 index) const
{
    const char* text;
    const status_t status = value == nullptr ? B_BAD_VALUE : FindString(name, &text, index);
    if (status == B_OK)
        *value = text;
    return status;
}

status_t BMessage::AddMessage(const char* name, const BMessage* value)
{
    if (!kits::IsFieldName(name) || value == nullptr)
        return B_BAD_VALUE;
    // Copied before anything moves, because it may be this message, or one inside it.
    BMessage copy(*value);
    Field* field = FieldOf(name);
    if (field != nullptr && field->Type() != B_MESSAGE_TYPE)
        return B_BAD_TYPE;
    if (field == nullptr)
        field = &fFields.emplace_back(name, B_MESSAGE_TYPE, false, 0);
    field->AddMessage(std::move(copy));
    return B_OK;
}

status_t BMessage::FindMessage(const char* name, BMessage* value, int32 index) const
{
    const Field* field;
    const status_t status = value == nullptr ? B_BAD_VALUE : FindField(name, B_MESSAGE_TYPE, index, &field);
    if (status == B_OK)
        *value = field->MessageAt(index);
    return status;
}

status_t BMessage::ReplaceMessage(const char* name, const BMessage* value, int32 index)
{
    const Field* field;
    const status_t status = value == nullptr ? B_BAD_VALUE : FindField(name, B_MESSAGE_TYPE, index, &field);
    if (status == B_OK) {
        BMessage copy(*value);
        FieldOf(name)->MessageAt(index) = std::move(copy);
    }
    return status;
}

status_t BMessage::AddFlat(const char* name, const BFlattenable* object)
{
    if (object == nullptr)
        return B_BAD_VALUE;
    const ssize_t size = object->FlattenedSize();
    if (size < 0)
        return B_BAD_VALUE;
    std::vector<char> bytes(static_cast<size_t>(size) + 1);
    const status_t status = object->Flatten(bytes.data(), size);
    return status == B_OK ? AddData(name, object->TypeCode(), bytes.data(), size, object->IsFixedSize()) : status;
}

status_t BMessage::FindFlat(const char* name, BFlattenable* object, int32 index) const
{
    const Field* field;
    const status_t status = object == nullptr ? B_BAD_VALUE : FindField(name, B_ANY_TYPE, index, &field);
    if (status != B_OK)
        return status;
    if (field->Type() == B_MESSAGE_TYPE || !object->AllowsTypeCode(field->Type()))
        return B_BAD_TYPE;
    const std::string_view bytes = field->ItemAt(index);
    return object->Unflatten(field->Type(), bytes.data(), static_cast<ssize_t>(bytes.size()));
}

status_t BMessage::AddData(const char* name, type_code type, const void* data, ssize_t numBytes, bool fixedSize,
                           int32 numItems)
{
    if (data == nullptr || numBytes < 0)
        return B_BAD_VALUE;
    const size_t size = static_cast<size_t>(numBytes);
    if (type == B_MESSAGE_TYPE)
        return B_BAD_TYPE;
    if (type == B_STRING_TYPE)
        return AddString(name, std::string(TextIn(data, size)));
    const size_t knownSize = kits::FixedSizeOf(type);
    if (knownSize != 0 && size != knownSize)
        return B_BAD_VALUE;
    return AddBytes(name, type, data, size, fixedSize || knownSize != 0, numItems);
}

status_t BMessage::FindData(const char* name, type_code type, const void** data, ssize_t* numBytes, int32 index) const
{
    if (data == nullptr)
        return B_BAD_VALUE;
    const Field* field;
    const status_t status = FindField(name, type, index, &field);
    if (status != B_OK)
        return status;
    if (field->Type() == B_MESSAGE_TYPE)
        return B_BAD_TYPE;
    const std::string_view bytes = field->ItemAt(index);
    *data = bytes.data();
    if (numBytes != nullptr)
        *numBytes = static_cast<ssize_t>(bytes.size());
    return B_OK;
}

status_t BMessage::ReplaceData(const char* name, type_code type, const void* data, ssize_t numBytes, int32 index)
{
    if (data == nullptr || numBytes < 0)
        return B_BAD_VALUE;
    const size_t size = static_cast<size_t>(numBytes);
    if (type == B_MESSAGE_TYPE || type == B_ANY_TYPE)
        return B_BAD_TYPE;
    if (type == B_STRING_TYPE) {
        const std::string text(TextIn(data, size));
        return ReplaceBytes(name, type, index, text.c_str(), text.size() + 1);
    }
    return ReplaceBytes(name, type, index, data, size);
}

bool BMessage::HasData(const char* name, type_code type, int32 index) const
{
    const Field* field;
    return FindField(name, type, index, &field) == B_OK;
}
