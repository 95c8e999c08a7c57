// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/Font.h"
#include "kits/support/Point.h"
#include "kits/support/Rect.h"
#include "src/chart/ChartSettings.h"
#include "src/sampling/ValueProvider.h"

class BView;

/// Where a caption is before it was drawn.
inline constexpr BRect kNothingDrawn{1, 1, 0, 0};

/// One of the two captions of a chart.
struct ChartCaption {
    CaptionSettings& look;       ///< the chart's
    font_height height{};        ///< of the font
    BRect drawn = kNothingDrawn; ///< the text as last drawn; invalid: nothing was drawn
    rgb_color aaColor{};         ///< what the text's edges fade to

    bool IsOn(BPoint where) const { return look.shown && drawn.Contains(where); }
};

/// The two captions of a chart, its title and its live value: their places and their drawing, and which of them the
/// user has chosen by keyboard. The title lies above the value.
///
/// How they look is part of the chart's settings; whoever changes that says so here. Guarded as the chart is.
class ChartCaptions {
public:
    /// Puts both at their first places.
    /// @param settings  the chart's; stay the caller's and have to stay
    explicit ChartCaptions(ChartSettings& settings);

    ChartCaption& Value() { return fValue; }
    ChartCaption& Title() { return fTitle; }
    const ChartCaption& Value() const { return fValue; }
    const ChartCaption& Title() const { return fTitle; }
    /// The caption that shows at a place, the value first; null for none.
    ChartCaption* At(BPoint where);
    const char* TextOf(const ChartCaption& caption) const;

    const char* ValueText() const { return fValueText; }
    /// Room for the text of the value.
    typedef char Text[ValueProvider::kValueStringLength];
    /// @return false if that is the text already
    bool SetValueText(const Text& text);

    /// After a change of the caption's font.
    void FontChanged(ChartCaption& caption);
    /// After a change of the caption's colour or antialiasing.
    void ColorChanged(ChartCaption& caption);
    /// After a change of any other colour.
    void ColorsChanged();

    /// Puts a caption at a place, held inside the chart.
    /// @return false if it is there already
    bool MoveTo(ChartCaption& caption, BPoint where, BRect bounds);

    /// Draws a caption with the view's pen, and of the other one what this and the touched part uncover or cover.
    /// @param touched  what was drawn again below the captions; invalid for nothing
    void Draw(BView& view, ChartCaption& caption, BRect touched);

    /// @name The caption chosen by keyboard
    /// @{
    /// Null for none; one that does not show is not chosen.
    ChartCaption* Chosen() const;
    /// The one that comes after it, first the title; null after the last one.
    ChartCaption* NextToChoose();
    /// @return false if it was so already
    bool Choose(ChartCaption* caption);
    /// Where it was when it was chosen.
    BPoint ChosenFrom() const { return fChosenFrom; }
    /// A place on a caption; not on the other one, where they do not cover each other.
    BPoint PlaceOn(const ChartCaption& caption) const;
    /// @}

private:
    const ChartCaption& OtherThan(const ChartCaption& caption) const { return &caption == &fTitle ? fValue : fTitle; }
    void Paint(BView& view, ChartCaption& caption);

    ChartSettings& fSettings;
    ChartCaption fValue;
    ChartCaption fTitle;
    ChartCaption* fChosen = nullptr;
    BPoint fChosenFrom;
    Text fValueText = "";
};
