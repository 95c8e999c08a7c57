// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/View.h"
#include "src/support/FFont.h"

/// Shows a font with a line of text. The user can drag it, and Ctrl+C copies it: a "!FNT" message with the font in
/// "font", which charts accept on their captions.
class FontSample : public BView {
public:
    explicit FontSample(BRect frame);

    /// The shown and dragged font; the drag includes its mask.
    void SetSample(const FFont& font);
    /// The height at which nothing of the text is cut off, in pixels as bottom minus top.
    float HeightForSample() const;

    void Draw(BRect update) override;
    void MouseDown(BPoint where) override;
    bool CopyRequested(BMessage* message) override;
    std::string AccessibleValue() const override;

private:
    FFont fFont;
};
