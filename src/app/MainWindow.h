// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Field.h"
#include "src/support/ui/SmartWindow.h"

class BMenuBar;
class BTabView;
class ChartTab;
class ChartViewHolder;

/// The limits of the main window's sides, and its initial size with the charts in front.
inline constexpr float kMinWindowSide = 100;
inline constexpr float kMaxWindowSide = 4000;
inline constexpr BRect kFirstChartFrame(0, 0, 300, 150);

// The fields of its archive.

inline const kits::Field<BRect> kWindowFrameField("WindowFrame", kMinWindowSide, kMaxWindowSide, BRect(0, 0, 300, 200),
                                                  kits::Outside::kHeld);
inline const kits::Field<BRect> kChartFrameField("WindowFrameWithCharts", kMinWindowSide, kMaxWindowSide,
                                                 kFirstChartFrame, kits::Outside::kHeld);
/// The tab in front.
inline const kits::Field<int32> kSelectionField("Selection", 0, 1);
inline const kits::Field<BMessage> kHolderField("ChartViewHolder");

/// The program's window: a menu bar with the menu "File" over two tabs, the uptimes (0) and the charts (1). It keeps
/// two sizes, one for the chart tab and one for the other, and which tab was in front.
///
/// To the archive of the window it adds "ChartViewHolder" (message), "WindowFrameWithCharts" and "WindowFrame"
/// (rectangles; only width and height count) and "Selection" (int32).
class MainWindow : public SmartWindow {
public:
    /// A window with three default charts and the uptimes in front.
    MainWindow(BRect frame, SmartWindow** ownerSlot);

    /// A window from its archive. Fields that are missing or unusable have the values of a new window: sizes are held
    /// to the window's limits, and a tab that does not exist is not selected.
    MainWindow(BMessage* archive, SmartWindow** ownerSlot);

    /// Always shallow for the window itself and deep for its charts, whatever `deep` says.
    status_t Archive(BMessage* into, bool deep = true) const override;

    /// Stores the new frame for the tab in front, unless the window is maximised, full screen or tiled.
    void FrameResized(float width, float height) override;

private:
    void Initialise();
    void AddChartTab(ChartViewHolder* holder, BRect chartFrame);

    BMenuBar* fMenuBar = nullptr;  // a child of the window
    BTabView* fTabView = nullptr;  // a child of the window
    ChartTab* fChartTab = nullptr; // owned by the tab view
};
