// SPDX-License-Identifier: MIT
#include "src/pages/PageControls.h"

#include "kits/application/Looper.h"
#include "kits/interface/MenuField.h"
#include "kits/interface/TextControl.h"

#include <algorithm>

namespace {

float WidthOfBoth(float label, float rest, float part)
{
    return std::max(label * part, rest / (1 - 1 / part));
}

} // namespace

void PostToPage(BHandler* page, uint32 code)
{
    if (BLooper* looper = page->Looper())
        looper->PostMessage(code, page);
}

BPoint PreferredSizeOf(BView* control)
{
    BPoint size;
    control->GetPreferredSize(&size.x, &size.y);
    return size;
}

float FieldWidth(BMenuField* field, float part)
{
    return WidthOfBoth(field->NarrowestLabelWidth(), field->NarrowestMenuWidth(), part);
}

float FieldWidth(BTextControl* field, float part)
{
    return WidthOfBoth(field->NarrowestLabelWidth(), PreferredSizeOf(field).x - field->Divider(), part);
}

std::string PercentLabel(const char* name, float position)
{
    return name + std::string(" ") + std::to_string(static_cast<int>(position * 100)) + " %";
}
