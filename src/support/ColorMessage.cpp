// SPDX-License-Identifier: MIT
#include "src/support/ColorMessage.h"

#include "kits/application/Message.h"
#include "kits/support/TypeConstants.h"

#include <cstring>

namespace {

constexpr const char* kField = "RGBColor";

} // namespace

void MakeColorMessage(BMessage* message, rgb_color color)
{
    message->what = B_PASTE;
    message->AddData(kField, B_RGB_COLOR_TYPE, &color, sizeof(color), true, 1);
}

bool FindColorMessage(const BMessage& message, rgb_color* color)
{
    return message.what == B_PASTE && FindColorField(message, color);
}

bool FindColorField(const BMessage& message, rgb_color* color)
{
    const void* data = nullptr;
    ssize_t size = 0;
    if (message.FindData(kField, B_RGB_COLOR_TYPE, &data, &size) != B_OK || size != sizeof(rgb_color))
        return false;
    std::memcpy(color, data, sizeof(rgb_color));
    return true;
}
