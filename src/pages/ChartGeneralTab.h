// SPDX-License-Identifier: MIT
#pragma once

#include "src/pages/ChartPage.h"

class BCheckBox;
class BMenu;
class BMenuField;
class BMenuItem;
class BSlider;
class BTextControl;

/// The page "General" of a chart: its kind, title, captions, border, page size, and how often it draws.
class ChartGeneralTab : public ChartPage {
public:
    explicit ChartGeneralTab(ChartView* chart);

    void AllAttached() override;
    void MessageReceived(BMessage* message) override;
    void Rerender() override;
    /// The page shows each of the chart's skips plus one, and writes back what the sliders show: so each time the
    /// visible page is filled, both rise by one. This is kept because users have chosen their settings with it.
    void GetState() override;
    void GetMinimumSize(float* width, float* height) override;

private:
    void MakeModeField();
    BSlider* MakeSlider(const char* label, uint32 code, int32 maximum, const char* minLabel, const char* maxLabel);
    BCheckBox* MakeCheckBox(const char* label, uint32 code);
    void ChartTypeChosen(const BMessage& message);
    void OrientationChosen(const BMessage& message);
    void RefreshSkipChanged();
    void ValueSkipChanged();
    void MarkMode();

    // Children of this view, and what belongs to the field's menu.
    BMenuField* fMode = nullptr;
    BMenuItem* fChartItem = nullptr;
    BMenuItem* fGaugeItem = nullptr;
    BTextControl* fTitle = nullptr;
    BCheckBox* fShowValue = nullptr;
    BCheckBox* fShowTitle = nullptr;
    BCheckBox* fShowBorder = nullptr;
    BCheckBox* fDesktopColor = nullptr;
    BSlider* fPageSize = nullptr;
    BSlider* fRefreshSkip = nullptr;
    BSlider* fValueSkip = nullptr;
};
