// SPDX-License-Identifier: MIT
#pragma once

#include "kits/support/Color.h"
#include "src/pages/ChartPage.h"

class BButton;
class BCheckBox;
class BMenuField;
class BSlider;
class ColorPreView;
class SmartColorControl;
struct CaptionSettings;
struct ColorTarget;

/// The page "Colors" of a chart. A menu selects the target: the one of the five colours that the colour control
/// edits. For the two texts the page also edits their antialiasing. The user can pick the desktop's colour, and test a
/// colour on the desktop.
///
/// When the page opens, and after a revert, it has no target: the colour control then changes nothing in the chart.
class ChartColorTab : public ChartPage {
public:
    explicit ChartColorTab(ChartView* chart);
    /// Restores the desktop's colour if the user was testing another one.
    ~ChartColorTab() override;

    void AllAttached() override;
    void MessageReceived(BMessage* message) override;
    void Rerender() override;
    void GetState() override;
    void GetMinimumSize(float* width, float* height) override;

private:
    void ControlChanged(BMessage* message);
    void ColorChanged();
    void ChooseTarget(const ColorTarget* target);
    /// The settings of the target if it is a text; otherwise null.
    const CaptionSettings* Text() const;
    void LabelAASlider();
    void ShowInPreview(rgb_color color);
    void CountPick();
    void TestOnDesktop();

    // Children of this view.
    SmartColorControl* fColors = nullptr;
    ColorPreView* fPreview = nullptr;
    BButton* fPick = nullptr;
    BMenuField* fTargetField = nullptr;
    BMenuField* fAATargetField = nullptr;
    BCheckBox* fTest = nullptr;
    BCheckBox* fTransparent = nullptr;
    BSlider* fAASlider = nullptr;

    bigtime_t fLastPick = 0;
    rgb_color fNoTargetColor{0, 0, 0, 0};
    const ColorTarget* fTarget;
    int16 fPicks = 0;
    bool fTesting = false;
};
