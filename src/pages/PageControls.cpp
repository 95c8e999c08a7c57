// SPDX-License-Identifier: MIT
#include "src/pages/PageControls.h"

#include "kits/application/Looper.h"
#include "kits/interface/Slider.h"
#include "kits/interface/TextControl.h"

namespace {

float WidthOfBoth(float label, float rest, float part)
{
    return std::max(label * part, rest / (1 - 1 / part));
}

} // namespace

BSlider* AddSlider(BView* page, const char* label, uint32 code, int32 minimum, int32 maximum, const char* minLabel,
                   const char* maxLabel, int32 hashMarks)
{
    auto* slider = new BSlider(kSomewhere, "", label, new BMessage(code), minimum, maximum, B_TRIANGLE_THUMB);
    slider->SetLimitLabels(minLabel, maxLabel);
    if (hashMarks > 0) {
        slider->SetHashMarks(B_HASH_MARKS_BOTTOM);
        slider->SetHashMarkCount(hashMarks);
    }
    page->AddChild(slider);
    return slider;
}

void PostToPage(BHandler* page, uint32 code)
{
    if (BLooper* looper = page->Looper())
        looper->PostMessage(code, page);
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
