// SPDX-License-Identifier: MIT
#pragma once

#include "src/pages/ChartPage.h"
#include "src/support/FFont.h"

class BListView;
class BMenuField;
class BNumberControl;
class BScrollView;
class BSlider;
class FontSample;
struct FontTarget;

/// The page "Fonts" of a chart: families, their styles and a size, with a sample that can be dragged onto captions. If
/// a target is chosen, every change takes effect on that caption at once; without one the page only shows fonts.
///
/// When the user chooses another family, the style stays if the family has it; otherwise the page selects the new
/// family's regular style. The page changes only family, style and size: the rest of a caption's font stays. The sample
/// is as tall as the size requires, and the window grows with it. In a drag of several pages, the two fonts replace
/// those that another page has put into the message.
class ChartFontsTab : public ChartPage {
public:
    explicit ChartFontsTab(ChartView* chart);

    void AllAttached() override;
    void MessageReceived(BMessage* message) override;
    void Rerender() override;
    /// Resets the target to none. After a revert, the page shows the font of the last target, initially that of the
    /// value; when the page is only shown again, it shows the last chosen font.
    void GetState() override;
    void GetMinimumSize(float* width, float* height) override;

private:
    void ChooseTarget(const FontTarget* target);
    void FillFamilies();
    void FillStyles(const font_family family);
    void ShowFont(const BFont& font);
    void FamilyChosen();
    void StyleChosen();
    void SizeChosen(int32 size);
    void FontChanged();
    void ShowSize();
    void ShowSample();
    const FFont& FontOf(const FontTarget* target) const;
    float SampleHeight() const;

    // Children of this view, and their children.
    BMenuField* fTargetField = nullptr;
    BListView* fFamilies = nullptr;
    BScrollView* fFamiliesScroll = nullptr;
    BListView* fStyles = nullptr;
    BScrollView* fStylesScroll = nullptr;
    BSlider* fSize = nullptr;
    BNumberControl* fSizeNumber = nullptr;
    FontSample* fSample = nullptr;

    FFont fFont;
    const FontTarget* fTarget;
    const FontTarget* fLastTarget;
    bool fIsShownAgain = false;
};
