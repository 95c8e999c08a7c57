// SPDX-License-Identifier: MIT
#include "src/chart/ChartCaptions.h"

#include "kits/interface/View.h"
#include "src/chart/ChartCaption.h"
#include "src/support/Changes.h"

#include <cstring>

namespace {

constexpr float kValueX = 50;

} // namespace

ChartCaptions::ChartCaptions(ChartSettings& settings)
    : fSettings(settings)
    , fValue{settings.value}
    , fTitle{settings.title}
{
    for (ChartCaption* caption : {&fValue, &fTitle})
        FontChanged(*caption);
    fValue.look.where = BPoint(kValueX, fValue.height.ascent + fValue.height.descent);
    fTitle.look.where = BPoint(0, fTitle.height.ascent + fTitle.height.descent);
    ColorsChanged();
}

const ChartCaption* ChartCaptions::At(BPoint where) const
{
    if (fValue.IsOn(where))
        return &fValue;
    return fTitle.IsOn(where) ? &fTitle : nullptr;
}

const char* ChartCaptions::TextOf(const ChartCaption& caption) const
{
    return &caption == &fValue ? fValueText : fSettings.titleText.c_str();
}

bool ChartCaptions::SetValueText(const char* text)
{
    if (std::strcmp(text, fValueText) == 0)
        return false;
    std::strncpy(fValueText, text, sizeof(fValueText) - 1);
    return true;
}

void ChartCaptions::FontChanged(ChartCaption& caption)
{
    caption.look.font.GetHeight(&caption.height);
}

void ChartCaptions::ColorChanged(ChartCaption& caption)
{
    caption.aaColor = fSettings.CalcAA(caption.look.color, caption.look.aaTarget, caption.look.aaValue);
}

void ChartCaptions::ColorsChanged()
{
    ColorChanged(fValue);
    ColorChanged(fTitle);
}

bool ChartCaptions::MoveTo(ChartCaption& caption, BPoint where, BRect bounds)
{
    const float width = caption.look.font.StringWidth(TextOf(caption));
    where = ModerateStringCoord(where, bounds, width, caption.height);
    if (where == caption.look.where)
        return false;
    caption.look.where = where;
    Changes::Note();
    return true;
}

void ChartCaptions::Draw(BView& view, ChartCaption& caption, BRect touched)
{
    if (&caption == &fTitle && fValue.drawn.Intersects(touched))
        Paint(view, fValue);
    Paint(view, caption);
    if (&caption == &fValue && fTitle.drawn.Intersects(touched | caption.drawn))
        Paint(view, fTitle);
}

void ChartCaptions::Paint(BView& view, ChartCaption& caption)
{
    if (!caption.look.shown)
        return;
    view.SetFont(&caption.look.font);
    view.SetHighColor(caption.look.color);
    view.SetLowColor(caption.aaColor);
    view.SetDrawingMode(B_OP_COPY);
    const char* text = TextOf(caption);
    view.DrawString(text, caption.look.where);
    caption.drawn = CaptionRect(caption.look.where, view.StringWidth(text), caption.height);
    if (&caption == fChosen) {
        // The mark stays within the area that is restored when the caption goes.
        view.SetHighColor(ui_color(B_KEYBOARD_NAVIGATION_COLOR));
        view.StrokeRect(caption.drawn);
    }
}

ChartCaption* ChartCaptions::Chosen() const
{
    return fChosen != nullptr && fChosen->look.shown ? fChosen : nullptr;
}

ChartCaption* ChartCaptions::NextToChoose()
{
    bool isBehind = Chosen() == nullptr;
    for (ChartCaption* caption : {&fTitle, &fValue}) {
        if (isBehind && caption->look.shown && *TextOf(*caption) != '\0')
            return caption;
        isBehind = isBehind || caption == fChosen;
    }
    return nullptr;
}

bool ChartCaptions::Choose(ChartCaption* caption)
{
    if (caption == fChosen)
        return false;
    fChosen = caption;
    if (caption != nullptr)
        fChosenFrom = caption->look.where;
    return true;
}

BPoint ChartCaptions::PlaceOn(const ChartCaption& caption) const
{
    const BRect& drawn = caption.drawn;
    const BPoint middle((drawn.left + drawn.right) / 2, (drawn.top + drawn.bottom) / 2);
    for (const BPoint place : {middle, drawn.LeftTop(), drawn.RightTop(), drawn.LeftBottom(), drawn.RightBottom()})
        if (!OtherThan(caption).IsOn(place))
            return place;
    return middle;
}
