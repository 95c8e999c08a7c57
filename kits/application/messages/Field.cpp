// SPDX-License-Identifier: MIT
#include "kits/application/Field.h"

#include <algorithm>
#include <cmath>

namespace kits {

namespace {

/// Null before the first constructor of a field runs: constructors of different files run in no defined order.
constinit const AnyField* sFirst = nullptr;

} // namespace

size_t CutLength(std::string_view text, size_t limit)
{
    if (text.size() <= limit)
        return text.size();
    while (limit > 0 && (static_cast<uint8>(text[limit]) & 0xC0) == 0x80)
        limit--;
    return limit;
}

AnyField::AnyField(const char* name, type_code type, double low, double high, Outside outside, int32 most)
    : fName(name)
    , fNext(std::exchange(sFirst, this))
    , fLow(low)
    , fHigh(high)
    , fType(type)
    , fMost(most)
    , fOutside(outside)
{
}

const AnyField* AnyField::All()
{
    return sFirst;
}

int32 AnyField::Count(const BMessage& from) const
{
    type_code type = fType;
    int32 count = 0;
    return from.GetInfo(fName, &type, &count) == B_OK && type == fType ? std::min(count, fMost) : 0;
}

void AnyField::Remove(BMessage* from) const
{
    from->RemoveName(fName);
}

bool AnyField::FindBytes(const BMessage& from, int32 index, std::string_view* bytes) const
{
    const void* data = nullptr;
    ssize_t size = 0;
    if (from.FindData(fName, fType, &data, &size, index) != B_OK)
        return false;
    // A text ends with a zero.
    *bytes = {static_cast<const char*>(data), static_cast<size_t>(fType == B_STRING_TYPE ? size - 1 : size)};
    return true;
}

bool AnyField::Take(BPoint* value) const
{
    return InRange(static_cast<double>(value->x)) && InRange(static_cast<double>(value->y));
}

bool AnyField::Take(BRect* value) const
{
    // The conditions are negated, so that NaN counts as absent.
    if (!(std::abs(value->left) <= kFarthestPlace) || !(std::abs(value->top) <= kFarthestPlace))
        return false;
    float width = value->right - value->left;
    float height = value->bottom - value->top;
    if (fOutside == Outside::kHeld && value->IsValid() && Take(&width) && Take(&height))
        *value = BRect(value->left, value->top, value->left + width, value->top + height);
    return InRange(static_cast<double>(width)) && InRange(static_cast<double>(height));
}

bool AnyField::Take(std::string_view* bytes) const
{
    const auto longest = static_cast<size_t>(fHigh);
    if (fOutside == Outside::kHeld)
        *bytes = bytes->substr(0, fType == B_STRING_TYPE ? CutLength(*bytes, longest) : longest);
    return InRange(static_cast<double>(bytes->size()));
}

} // namespace kits
