// SPDX-License-Identifier: MIT
#include "kits/application/FieldRanges.h"

#include "kits/application/Message.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace kits {

const FieldRange* FieldRanges::RangeOf(const char* key) const
{
    const auto row =
        std::find_if(begin(), end(), [key](const FieldRange& one) { return std::strcmp(one.key, key) == 0; });
    return row != end() ? row : nullptr;
}

bool FieldRanges::InRange(const char* key, double value) const
{
    const FieldRange* range = RangeOf(key);
    return range != nullptr && value >= range->low && value <= range->high;
}

template <typename T> bool FieldRanges::Take(const char* key, T candidate, T* value) const
{
    const FieldRange* range = RangeOf(key);
    if (range == nullptr)
        return false;
    if (range->outside == Outside::kHeld) {
        // Written so that what is not a number becomes the lowest.
        const auto low = static_cast<T>(range->low);
        const auto high = static_cast<T>(range->high);
        candidate = candidate >= low ? std::min(candidate, high) : low;
    } else if (!InRange(key, static_cast<double>(candidate))) {
        return false;
    }
    *value = candidate;
    return true;
}

bool FieldRanges::Find(const BMessage& from, const char* key, int16* value, int32 index) const
{
    int16 found = 0;
    return from.FindInt16(key, index, &found) == B_OK && Take(key, found, value);
}

bool FieldRanges::Find(const BMessage& from, const char* key, int32* value, int32 index) const
{
    int32 found = 0;
    return from.FindInt32(key, index, &found) == B_OK && Take(key, found, value);
}

bool FieldRanges::Find(const BMessage& from, const char* key, int64* value, int32 index) const
{
    int64 found = 0;
    return from.FindInt64(key, index, &found) == B_OK && Take(key, found, value);
}

bool FieldRanges::Find(const BMessage& from, const char* key, float* value, int32 index) const
{
    float found = 0;
    return from.FindFloat(key, index, &found) == B_OK && Take(key, found, value);
}

bool FieldRanges::Find(const BMessage& from, const char* key, BPoint* value, int32 index) const
{
    BPoint found;
    if (from.FindPoint(key, index, &found) != B_OK || !InRange(key, static_cast<double>(found.x)) ||
        !InRange(key, static_cast<double>(found.y)))
        return false;
    *value = found;
    return true;
}

bool FieldRanges::Find(const BMessage& from, const char* key, BRect* value, int32 index) const
{
    BRect found;
    // Written so that what is not a number is refused.
    if (from.FindRect(key, index, &found) != B_OK || !(std::abs(found.left) <= kFarthestPlace) ||
        !(std::abs(found.top) <= kFarthestPlace) || !InRange(key, static_cast<double>(found.right - found.left)) ||
        !InRange(key, static_cast<double>(found.bottom - found.top)))
        return false;
    *value = found;
    return true;
}

bool FieldRanges::Find(const BMessage& from, const char* key, const char** value, int32 index) const
{
    const char* found = nullptr;
    if (from.FindString(key, index, &found) != B_OK || !InRange(key, static_cast<double>(std::strlen(found))))
        return false;
    *value = found;
    return true;
}

} // namespace kits
