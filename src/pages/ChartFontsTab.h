#pragma once

#include "src/pages/ChartPage.h"
#include "src/support/FFont.h"

class BListView;
class BMenuField;
class BScrollView;
class BSlider;
class FontSample;

/// The page "Fonts" of a chart: families, their styles and a size, with a sample that can be dragged onto captions.
/// With a target chosen every change goes to that caption at once; without one the fonts are only looked at.
///
/// Only family, style and size are chosen here: the rest of a caption's font stays as it is. In a drag of several pages
/// the two fonts take the place of those that another page has put into the message.
class ChartFontsTab : public ChartPage {
public:
    explicit ChartFontsTab(ChartView* chart);

    void AllAttached() override;
    void MessageReceived(BMessage* message) override;
    void Rerender() override;
    /// Back to no target, with the font that was chosen last.
    void GetState() override;
    void GetMinimumSize(float* width, float* height) override;

private:
    enum Target { kNone, kValue, kTitle };

    void ChooseTarget(Target target);
    void FillFamilies();
    void FillStyles();
    void ShowFont(const BFont& font);
    void FamilyChosen();
    void StyleChosen();
    void SizeChosen();
    void FontChanged();
    void LabelSize();

    // Children of this view, and of those.
    BMenuField* fTargetField = nullptr;
    BListView* fFamilies = nullptr;
    BScrollView* fFamiliesScroll = nullptr;
    BListView* fStyles = nullptr;
    BScrollView* fStylesScroll = nullptr;
    BSlider* fSize = nullptr;
    FontSample* fSample = nullptr;

    FFont fFont;
    Target fTarget = kNone;
};
