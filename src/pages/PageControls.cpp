#include "src/pages/PageControls.h"

#include "kits/application/Looper.h"
#include "kits/interface/MenuField.h"
#include "kits/interface/TextControl.h"

#include <algorithm>

namespace {

/// Between a label and its field where the page is as small as it can be; pixels.
constexpr float kSmallestBesideLabel = 4;

float WidthOfBoth(float label, float rest, float part)
{
    return std::max((label + kSmallestBesideLabel) * part, rest / (1 - 1 / part));
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
    return WidthOfBoth(field->StringWidth(field->Label()), field->NarrowestMenuWidth(), part);
}

float FieldWidth(BTextControl* field, float part)
{
    return WidthOfBoth(field->StringWidth(field->Label()), PreferredSizeOf(field).x - field->Divider(), part);
}

std::string PercentLabel(const char* name, float position)
{
    return name + std::string(" ") + std::to_string(static_cast<int>(position * 100)) + " %";
}
