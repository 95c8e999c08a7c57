// SPDX-License-Identifier: MIT
#pragma once

#include "src/pages/ChartPage.h"

#include <vector>

class BCheckBox;
class BMenuField;
class BMenuItem;
class BSlider;
class BTextControl;

/// The page "General" of a chart: its kind, title, captions, border, page size, and how often it draws.
class ChartGeneralTab : public ChartPage {
public:
    explicit ChartGeneralTab(ChartView* chart);

    void MessageReceived(BMessage* message) override;
    void Rerender() override;
    /// The sliders show the chart's skips plus one, and the page writes these values back: so each time the visible
    /// page is filled, both skips rise by one. This stays because users have chosen their settings with it.
    void GetState() override;
    void GetMinimumSize(float* width, float* height) override;

private:
    void MakeModeField();
    void ChartTypeChosen(const BMessage& message);
    void OrientationChosen(const BMessage& message);
    void SkipChanged(BSlider* slider, const char* label, void (ChartView::*set)(int16 skip));
    void MarkMode();

    // Children of this view, and what belongs to the field's menu.
    BMenuField* fMode = nullptr;
    BMenuItem* fChartItem = nullptr;
    BMenuItem* fGaugeItem = nullptr;
    BTextControl* fTitle = nullptr;
    std::vector<BCheckBox*> fSwitches;
    BSlider* fPageSize = nullptr;
    BSlider* fRefreshSkip = nullptr;
    BSlider* fValueSkip = nullptr;
};
