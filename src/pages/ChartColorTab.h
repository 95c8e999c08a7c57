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

/// The page "Colors" of a chart. One colour control serves the five colours, chosen with a menu; for the two texts the
/// page also edits their antialiasing. It can pick the desktop's colour, and show the picked colour on the desktop as
/// long as the user tests it.
///
/// When it opens, and after a revert, it has no target: then the control's colour belongs to nothing.
class ChartColorTab : public ChartPage {
public:
    explicit ChartColorTab(ChartView* chart);
    /// Restores the desktop's colour if it was being tested.
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
