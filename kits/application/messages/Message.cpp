// SPDX-License-Identifier: MIT
#include "kits/application/Message.h"

#include "kits/application/messages/MessageField.h"
#include "kits/application/messages/MessagePrivate.h"
#include "kits/kernel/Bounds.h"
#include "kits/support/TypeConstants.h"

#include <algorithm>
#include <cstring>
#include <utility>

using kits::MessageDelivery;

size_t kits::MemoryOf(const BMessage& message)
{
    const std::vector<MessageAccess::Field>& fields = MessageAccess::FieldsOf(message);
    size_t memory = sizeof(BMessage) + sizeof(MessageDelivery) + fields.capacity() * sizeof(MessageAccess::Field);
    for (const MessageAccess::Field& field : fields)
        memory += field.Memory();
    return memory;
}

MessageDelivery& kits::MessageAccess::NeedDelivery(BMessage& message)
{
    if (message.fDelivery == nullptr)
        message.fDelivery = std::make_unique<MessageDelivery>();
    return *message.fDelivery;
}

void kits::MessageAccess::SetDropped(BMessage& message, BPoint where, BPoint offset)
{
    MessageDelivery& delivery = NeedDelivery(message);
    delivery.dropped = true;
    delivery.dropPoint = where;
    delivery.dropOffset = offset;
}

// The numbers are repeated in that header, so that a new row of the table does not recompile everything.
namespace bounds = kits::bounds;
static_assert(BMessage::kMaxFlattenedSize == bounds::kMostFlattened && BMessage::kMaxDepth == bounds::kMostDepth &&
              BMessage::kMaxFields == bounds::kMostFields && BMessage::kMaxValues == bounds::kMostValues &&
              BMessage::kMaxNameLength == bounds::kLongestFieldName);

BMessage::BMessage() = default;

BMessage::BMessage(uint32 code)
    : what(code)
{
}

BMessage::~BMessage()
{
    if (IsSourceWaiting())
        fDelivery->replyNothing(*this);
}

BMessage::BMessage(const BMessage& other)
    : what(other.what)
    , fNewestWins(other.fNewestWins)
    , fFields(other.fFields)
{
    if (other.WasDropped())
        kits::MessageAccess::SetDropped(*this, other.fDelivery->dropPoint, other.fDelivery->dropOffset);
}

BMessage::BMessage(BMessage&& other) noexcept
    : what(other.what)
    , fNewestWins(other.fNewestWins)
    , fDelivered(std::exchange(other.fDelivered, false))
    , fFields(std::move(other.fFields))
    , fDelivery(std::move(other.fDelivery))
{
    other.fFields.clear();
}

BMessage& BMessage::operator=(const BMessage& other)
{
    if (this == &other)
        return *this;
    what = other.what;
    fNewestWins = other.fNewestWins;
    // Not in place, because the assigned message may be inside this one.
    std::vector<Field> fields(other.fFields);
    if (other.WasDropped())
        kits::MessageAccess::SetDropped(*this, other.fDelivery->dropPoint, other.fDelivery->dropOffset);
    else if (fDelivery != nullptr)
        fDelivery->dropped = false;
    fFields = std::move(fields);
    return *this;
}

BMessage& BMessage::operator=(BMessage&& other) noexcept
{
    if (this == &other)
        return *this;
    BMessage taken(std::move(other));
    std::swap(what, taken.what);
    std::swap(fNewestWins, taken.fNewestWins);
    std::swap(fDelivered, taken.fDelivered);
    std::swap(fFields, taken.fFields);
    std::swap(fDelivery, taken.fDelivery);
    return *this;
}

bool BMessage::WasDropped() const
{
    return fDelivery != nullptr && fDelivery->dropped;
}

BPoint BMessage::DropPoint(BPoint* offset) const
{
    if (offset != nullptr)
        *offset = WasDropped() ? fDelivery->dropOffset : BPoint();
    return WasDropped() ? fDelivery->dropPoint : BPoint();
}

bool BMessage::IsSourceWaiting() const
{
    return fDelivery != nullptr && fDelivery->sourceWaits && !fDelivery->replied;
}

bool BMessage::HasSameData(const BMessage& other) const
{
    if (what != other.what || fFields.size() != other.fFields.size())
        return false;
    for (size_t i = 0; i < fFields.size(); ++i) {
        // Usually both have their fields in the same order.
        const Field* counterpart = &other.fFields[i];
        if (counterpart->Name() != fFields[i].Name())
            counterpart = other.FieldOf(fFields[i].Name().c_str());
        if (counterpart == nullptr || !fFields[i].HasSameData(*counterpart))
            return false;
    }
    return true;
}

int32 BMessage::CountNames(type_code type) const
{
    return static_cast<int32>(std::count_if(
        fFields.begin(), fFields.end(),
        [type](const Field& field) { return type == B_ANY_TYPE || field.Type() == type; }));
}

bool BMessage::IsEmpty() const
{
    return fFields.empty();
}

status_t BMessage::GetInfo(const char* name, type_code* type, int32* count) const
{
    const Field* field;
    const status_t status = FindField(name, B_ANY_TYPE, 0, &field);
    if (status != B_OK)
        return status;
    if (type != nullptr)
        *type = field->Type();
    if (count != nullptr)
        *count = field->Count();
    return B_OK;
}

status_t BMessage::RemoveData(const char* name, int32 index)
{
    const Field* found;
    const status_t status = FindField(name, B_ANY_TYPE, index, &found);
    if (status != B_OK)
        return status;
    if (found->Count() == 1)
        return RemoveName(name);
    FieldOf(name)->Remove(index);
    return B_OK;
}

status_t BMessage::RemoveName(const char* name)
{
    const Field* field;
    const status_t status = FindField(name, B_ANY_TYPE, 0, &field);
    if (status == B_OK)
        fFields.erase(fFields.begin() + (field - fFields.data()));
    return status;
}

status_t BMessage::MakeEmpty()
{
    fFields.clear();
    return B_OK;
}

BMessage::Field* BMessage::FieldOf(const char* name)
{
    return const_cast<Field*>(std::as_const(*this).FieldOf(name));
}

const BMessage::Field* BMessage::FieldOf(const char* name) const
{
    for (const Field& field : fFields)
        if (field.Name() == name)
            return &field;
    return nullptr;
}

status_t BMessage::FindField(const char* name, type_code type, int32 index, const Field** found) const
{
    if (name == nullptr)
        return B_BAD_VALUE;
    const Field* field = FieldOf(name);
    if (field == nullptr)
        return B_NAME_NOT_FOUND;
    if (type != B_ANY_TYPE && field->Type() != type)
        return B_BAD_TYPE;
    if (index < 0 || index >= field->Count())
        return B_BAD_INDEX;
    *found = field;
    return B_OK;
}

status_t BMessage::AddBytes(const char* name, type_code type, const void* data, size_t size, bool fixedSize,
                            int32 count)
{
    if (!kits::IsFieldName(name) || data == nullptr)
        return B_BAD_VALUE;
    if (type == B_ANY_TYPE)
        return B_BAD_TYPE;
    Field* field = FieldOf(name);
    if (field != nullptr) {
        if (field->Type() != type)
            return B_BAD_TYPE;
        if (field->IsFixedSize() && field->ItemSize() != size)
            return B_BAD_VALUE;
        field->Add(data, size);
        return B_OK;
    }
    Field added(name, type, fixedSize, fixedSize ? size : 0);
    // Only a hint: it may come from a caller that knows no better.
    constexpr int32 kMostReserved = 1024;
    if (count > 1)
        added.Reserve(static_cast<size_t>(std::min(count, kMostReserved)));
    added.Add(data, size);
    fFields.push_back(std::move(added));
    return B_OK;
}

status_t BMessage::FindBytes(const char* name, type_code type, int32 index, void* value, size_t size) const
{
    if (value == nullptr)
        return B_BAD_VALUE;
    const Field* field;
    const status_t status = FindField(name, type, index, &field);
    if (status == B_OK)
        memcpy(value, field->ItemAt(index).data(), size);
    return status;
}

status_t BMessage::ReplaceBytes(const char* name, type_code type, int32 index, const void* data, size_t size)
{
    if (data == nullptr)
        return B_BAD_VALUE;
    const Field* found;
    const status_t status = FindField(name, type, index, &found);
    if (status != B_OK)
        return status;
    const bool isOtherSize = found->IsFixedSize() && found->ItemSize() != size;
    if (isOtherSize && kits::FixedSizeOf(found->Type()) != 0)
        return B_BAD_VALUE;
    if (isOtherSize)
        FieldOf(name)->ReplaceByOtherSize(index, data, size);
    else
        FieldOf(name)->Replace(index, data, size);
    return B_OK;
}
