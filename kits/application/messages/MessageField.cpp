// SPDX-License-Identifier: MIT
#include "kits/application/messages/MessageField.h"

#include "kits/application/messages/MessagePrivate.h"
#include "kits/application/messages/ValueTypes.h"

#include <cstring>

namespace kits {

size_t FixedSizeOf(type_code type)
{
    if (IsAddressType(type))
        return sizeof(void*);
    return VisitNumbers(type, size_t{0}, [](auto numbers) { return sizeof(numbers); });
}

bool IsFieldName(const char* name)
{
    return name != nullptr && *name != '\0' && strnlen(name, BMessage::kMaxNameLength + 1) <= BMessage::kMaxNameLength;
}

bool IsAddressType(type_code type)
{
    return type == B_POINTER_TYPE || type == B_OBJECT_TYPE;
}

} // namespace kits

BMessage::Field::Field(std::string_view name, type_code type, bool fixedSize, size_t itemSize)
    : fName(name)
    , fType(type)
    , fItemSize(itemSize)
    , fFixedSize(fixedSize)
{
}

BMessage::Field::Field(const Field& other)
    : fName(other.fName)
    , fBytes(other.fBytes)
    , fMore(other.fMore != nullptr ? std::make_unique<More>(*other.fMore) : nullptr)
    , fType(other.fType)
    , fCount(other.fCount)
    , fItemSize(other.fItemSize)
    , fFixedSize(other.fFixedSize)
{
}

size_t BMessage::Field::Memory() const
{
    size_t memory = fName.capacity() + fBytes.capacity();
    if (fMore != nullptr) {
        memory += sizeof(More) + fMore->ends.capacity() * sizeof(size_t);
        // Reserved elements take as much.
        memory += (fMore->messages.capacity() - fMore->messages.size()) * sizeof(BMessage);
        for (const BMessage& message : fMore->messages)
            memory += kits::MemoryOf(message);
    }
    return memory;
}

size_t BMessage::Field::EndOf(int32 index) const
{
    if (fFixedSize)
        return fItemSize * (static_cast<size_t>(index) + 1);
    return fCount == 1 ? fBytes.size() : fMore->ends[static_cast<size_t>(index)];
}

std::string_view BMessage::Field::ItemAt(int32 index) const
{
    const size_t begin = index == 0 ? 0 : EndOf(index - 1);
    return std::string_view(fBytes).substr(begin, EndOf(index) - begin);
}

BMessage::Field::More& BMessage::Field::NeedMore()
{
    if (fMore == nullptr)
        fMore = std::make_unique<More>();
    return *fMore;
}

void BMessage::Field::Reserve(size_t count)
{
    if (fType == B_MESSAGE_TYPE)
        NeedMore().messages.reserve(count);
    else if (fFixedSize)
        fBytes.reserve(fItemSize * count);
    else if (count > 1)
        NeedMore().ends.reserve(count);
}

void BMessage::Field::Add(const void* data, size_t size)
{
    if (!fFixedSize && fCount > 0) {
        std::vector<size_t>& ends = NeedMore().ends;
        if (fCount == 1)
            ends.push_back(fBytes.size());
        ends.push_back(fBytes.size() + size);
    }
    fBytes.append(static_cast<const char*>(data), size);
    ++fCount;
}

void BMessage::Field::AddMessage(BMessage message)
{
    NeedMore().messages.push_back(std::move(message));
    ++fCount;
}

void BMessage::Field::Replace(int32 index, const void* data, size_t size)
{
    const std::string_view old = ItemAt(index);
    const size_t begin = static_cast<size_t>(old.data() - fBytes.data());
    const size_t oldSize = old.size();
    fBytes.replace(begin, oldSize, static_cast<const char*>(data), size);
    if (!fFixedSize && fCount > 1)
        for (size_t i = static_cast<size_t>(index); i < fCount; ++i)
            fMore->ends[i] = fMore->ends[i] - oldSize + size;
}

void BMessage::Field::ReplaceByOtherSize(int32 index, const void* data, size_t size)
{
    const bool isOnly = fCount == 1;
    if (!isOnly) {
        std::vector<size_t>& ends = NeedMore().ends;
        for (uint32 i = 1; i <= fCount; ++i)
            ends.push_back(fItemSize * i);
    }
    fFixedSize = false;
    Replace(index, data, size);
    fFixedSize = isOnly;
    fItemSize = isOnly ? size : 0;
}

void BMessage::Field::Remove(int32 index)
{
    if (fType == B_MESSAGE_TYPE) {
        fMore->messages.erase(fMore->messages.begin() + index);
    } else {
        Replace(index, nullptr, 0);
        if (!fFixedSize && fCount > 1) {
            fMore->ends.erase(fMore->ends.begin() + index);
            if (fCount == 2)
                fMore->ends.clear();
        }
    }
    --fCount;
}

bool BMessage::Field::HasSameData(const Field& other) const
{
    if (fName != other.fName || fType != other.fType || fCount != other.fCount)
        return false;
    for (int32 i = 0; i < Count(); ++i)
        if (fType == B_MESSAGE_TYPE ? !MessageAt(i).HasSameData(other.MessageAt(i)) : ItemAt(i) != other.ItemAt(i))
            return false;
    return true;
}
