// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/View.h"
#include "src/support/FFont.h"

/// Shows a font with a line of text. The user can drag it, and Ctrl+C copies it: a "!FNT" message with the font in
/// "font", which charts accept on their captions.
class FontSample : public BView {
public:
    explicit FontSample(BRect frame);

    /// Sets the font that is shown, dragged and copied, with its mask.
    void SetSample(const FFont& font);
    /// Returns the smallest height, bottom minus top in pixels, that shows the whole text.
    float HeightForSample() const;

    void Draw(BRect update) override;
    void MouseDown(BPoint where) override;
    bool CopyRequested(BMessage* message) override;
    std::string AccessibleValue() const override;

private:
    FFont fFont;
};
