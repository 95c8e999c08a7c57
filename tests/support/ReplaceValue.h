// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Message.h"
#include "kits/support/Rect.h"
#include "kits/support/TypeConstants.h"

#include <string>

namespace test {

// Replace the first value of a field; the results are those of BMessage::ReplaceData.

inline status_t ReplaceInt32(BMessage& message, const char* name, int32 value)
{
    return message.ReplaceData(name, B_INT32_TYPE, &value, sizeof(value));
}
inline status_t ReplaceRect(BMessage& message, const char* name, BRect value)
{
    return message.ReplaceData(name, B_RECT_TYPE, &value, sizeof(value));
}
inline status_t ReplaceString(BMessage& message, const char* name, const std::string& value)
{
    return message.ReplaceData(name, B_STRING_TYPE, value.c_str(), static_cast<ssize_t>(value.size() + 1));
}

} // namespace test
