// SPDX-License-Identifier: MIT
#include "src/pages/FontSample.h"

#include "kits/application/Message.h"
#include "src/chart/ChartSettings.h"
#include "src/support/Tr.h"

#include <cmath>

namespace {

constexpr float kMargin = 4;
constexpr const char* kText = "CPU 1: 42.0 %";

} // namespace

FontSample::FontSample(BRect frame)
    : BView(frame, "", B_FOLLOW_NONE, B_WILL_DRAW | B_NAVIGABLE | B_FULL_UPDATE_ON_RESIZE)
{
    SetViewUIColor(B_DOCUMENT_BACKGROUND_COLOR);
    SetAccessibleName(Tr("Sample of the font"));
    SetToolTip(Tr("Drag the sample onto a caption of a chart, or copy it with Ctrl+C"));
}

void FontSample::SetSample(const FFont& font)
{
    fFont = font;
    SetFont(&fFont);
    Invalidate();
}

float FontSample::HeightForSample() const
{
    font_height height;
    fFont.GetHeight(&height);
    return std::ceil(height.ascent + height.descent) + 2 * kMargin;
}

void FontSample::Draw(BRect)
{
    font_height height;
    GetFontHeight(&height);
    const float y = std::round((Bounds().Height() + height.ascent - height.descent) / 2);
    SetLowColor(ViewColor());
    SetHighColor(ui_color(B_DOCUMENT_TEXT_COLOR));
    DrawString(kText, BPoint(kMargin, y));
    if (IsFocus())
        SetHighColor(ui_color(B_KEYBOARD_NAVIGATION_COLOR));
    else
        SetHighColor(128, 128, 128);
    StrokeRect(Bounds());
}

std::string FontSample::AccessibleValue() const
{
    font_family family;
    font_style style;
    fFont.GetFamilyAndStyle(&family, &style);
    return std::string(family) + " " + style + ", " + std::to_string(std::lround(fFont.Size()));
}

void FontSample::MouseDown(BPoint)
{
    BMessage message;
    CopyRequested(&message);
    DragMessage(&message, Bounds(), nullptr);
}

bool FontSample::CopyRequested(BMessage* message)
{
    message->what = '!FNT';
    return kDraggedFontField.Add(message, fFont) == B_OK;
}
