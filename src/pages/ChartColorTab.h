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
    enum Target : int16 { kChart, kBackground, kValue, kTitle, kBorder, kNone };

    void MakeTargetField();
    void MakeAATargetField();
    bool HandleChartMessage(uint32 code);
    void ColorChanged();
    void ChooseTarget(Target target);
    rgb_color TargetColor() const;
    bool IsText() const { return fTarget == kValue || fTarget == kTitle; }
    void ShowAntialiasing();
    void SetAATarget(int16 target);
    void AAValueChanged();
    void LabelAASlider();
    void ShowInPreview(rgb_color color);
    void PickDesktop();
    void TakeColor(rgb_color color);
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
    Target fTarget = kNone;
    int16 fPicks = 0;
    bool fTesting = false;
};
