// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/View.h"

#include <memory>
#include <string>
#include <vector>

class BMenuItem;
class BPopUpMenu;
class ChartShelf;
class ChartView;

/// More charts than a screen has rows are not loaded or added.
inline constexpr int32 kMaxCharts = 1000;

/// Owns the charts of the main window and lays them out from top to bottom in equal bands over its whole width.
///
/// It archives and restores them and passes one chart's wish on to its siblings (MSG_DISTRIBUTE). Where there is no
/// chart a click with any button opens a menu that offers "Add new chart". Everything runs in the window's thread,
/// except that charts may be added and removed by whoever holds the interface lock.
class ChartViewHolder : public BView {
public:
    /// A holder with three charts of all defaults.
    explicit ChartViewHolder(BRect frame);

    /// A holder with the charts of what Archive() wrote; none when it holds none. @p archive stays the caller's.
    explicit ChartViewHolder(BMessage* archive);

    /// Deletes the charts.
    ~ChartViewHolder() override;

    /// Writes "Rect", one "Chart" per chart and what the shelf saves, in place of those that are there. Always B_OK: a
    /// chart that cannot be archived ends the list.
    status_t Archive(BMessage* into, bool deep = true) const override;

    /// Appends the charts of what Archive() wrote to those that are there.
    void LoadPrefsFrom(BMessage* from);

    /// Takes @p chart as the last one; the caller lays out (Rerender()). The holder owns it from here on.
    void AddChartView(ChartView* chart);

    /// Gives @p chart back to the caller, who owns it from here on, and lays the others out. Others than the holder's
    /// are ignored.
    void RemoveChartView(ChartView* chart);

    int32 CountCharts() const { return static_cast<int32>(fCharts.size()); }
    /// The chart at @p index, top first, or null. It stays the holder's.
    ChartView* ChartAt(int32 index) const;

    /// Lays the charts out.
    void Rerender();

    /// Pauses or resumes all charts.
    void Pause(bool pause);

    /// Connects every chart to the sampler, paused ones too (these then draw nothing).
    void AllAttached() override;
    /// Disconnects every chart.
    void AllDetached() override;
    /// Without charts it takes the keyboard's focus, for its menu.
    void ContextMenuRequested(BPoint where) override;
    /// Without charts: one grey line that tells how to add one.
    void Draw(BRect update) override;
    /// The same line; else the charts.
    std::string AccessibleValue() const override;
    void FrameResized(float width, float height) override;
    void MessageReceived(BMessage* message) override;
    void MouseDown(BPoint where) override;
    void ResizeTo(float width, float height) override;

private:
    void Initialise();
    void DrawHint();
    void OfferChart(BPoint where);
    void Relay(const BMessage& message);
    void UpdateFocus();

    std::unique_ptr<ChartShelf> fShelf;
    std::unique_ptr<BPopUpMenu> fMenu;
    BMenuItem* fAddItem = nullptr;   // fMenu's
    std::vector<ChartView*> fCharts; // children, top first
};
