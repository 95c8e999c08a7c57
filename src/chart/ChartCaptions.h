// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/Font.h"
#include "kits/support/Point.h"
#include "kits/support/Rect.h"
#include "src/chart/ChartSettings.h"
#include "src/sampling/ValueProvider.h"

class BView;

/// The place of a caption before its first drawing.
inline constexpr BRect kNothingDrawn{1, 1, 0, 0};

/// One of the two captions of a chart.
struct ChartCaption {
    CaptionSettings& look;       ///< the chart's
    font_height height{};        ///< of the font
    BRect drawn = kNothingDrawn; ///< the text as last drawn; invalid before the first drawing
    rgb_color aaColor{};         ///< the colour to which the text's edges fade

    bool IsOn(BPoint where) const { return look.shown && drawn.Contains(where); }
};

/// The two captions of a chart, its title and its live value: their places, their drawing, and which of them the user
/// has chosen by keyboard. The title lies above the value.
///
/// The looks of both are part of the chart's settings; a caller that changes these calls FontChanged(), ColorChanged()
/// or ColorsChanged(). The chart's lock guards this object, too.
class ChartCaptions {
public:
    /// Puts both captions at their first places.
    /// @param settings  the chart's settings, which the caller owns and which must outlive this object
    explicit ChartCaptions(ChartSettings& settings);

    ChartCaption& Value() { return fValue; }
    ChartCaption& Title() { return fTitle; }
    const ChartCaption& Value() const { return fValue; }
    const ChartCaption& Title() const { return fTitle; }
    /// Returns the caption that shows at a place, the value first, or null.
    const ChartCaption* At(BPoint where) const;
    const char* TextOf(const ChartCaption& caption) const;

    const char* ValueText() const { return fValueText; }
    /// A buffer for the text of the value.
    typedef char Text[ValueProvider::kValueStringLength];
    /// Cuts off the part that does not fit.
    /// @return false if the value has that text already
    bool SetValueText(const char* text);

    /// Call after a change of the caption's font.
    void FontChanged(ChartCaption& caption);
    /// Call after a change of the caption's colour or antialiasing.
    void ColorChanged(ChartCaption& caption);
    /// Call after a change of any other colour.
    void ColorsChanged();

    /// Puts a caption at a place, kept inside the chart.
    /// @return false if it is there already
    bool MoveTo(ChartCaption& caption, BPoint where, BRect bounds);

    /// Draws a caption with the view's pen, and those parts of the other caption that this one or the touched area
    /// uncovers or covers.
    /// @param touched  the area below the captions that was drawn again; invalid for none
    void Draw(BView& view, ChartCaption& caption, BRect touched);

    /// @name The caption chosen by keyboard
    /// @{
    /// Null for none; a hidden caption cannot be chosen.
    ChartCaption* Chosen() const;
    /// Returns the caption to choose next: first the title, and null after the last one.
    ChartCaption* NextToChoose();
    /// @return false if that caption was chosen already
    bool Choose(ChartCaption* caption);
    /// Returns where the caption was when it was chosen.
    BPoint ChosenFrom() const { return fChosenFrom; }
    /// Returns a place on a caption that the other one does not cover, if there is such a place.
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
