// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/View.h"
#include "src/support/FFont.h"

/// Shows a font with a line of text in it. Pulled with the mouse it is dragged away, and Ctrl+C copies it: a "!FNT"
/// message with the font in "font", which charts take on their captions.
class FontSample : public BView {
public:
    explicit FontSample(BRect frame);

    /// The font that is shown and dragged; its mask goes with it.
    void SetSample(const FFont& font);
    /// What the view has to be high so that nothing of the text is cut off, in pixels as bottom minus top.
    float HeightForSample() const;

    void Draw(BRect update) override;
    void MouseDown(BPoint where) override;
    bool CopyRequested(BMessage* message) override;
    std::string AccessibleValue() const override;

private:
    FFont fFont;
};
