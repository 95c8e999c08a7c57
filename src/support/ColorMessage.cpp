// SPDX-License-Identifier: MIT
#include "src/support/ColorMessage.h"

#include "kits/interface/Fields.h"

void MakeColorMessage(BMessage* message, rgb_color color)
{
    message->what = B_PASTE;
    kits::kColorField.Add(message, color);
}

bool FindColorMessage(const BMessage& message, rgb_color* color)
{
    return message.what == B_PASTE && kits::kColorField.Find(message, color);
}
