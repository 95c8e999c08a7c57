// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Field.h"
#include "kits/interface/View.h"

#include <memory>
#include <string>
#include <vector>

class BMenuItem;
class BPopUpMenu;
class ChartShelf;
class ChartView;

/// The largest number of charts to load or add, more than a screen has rows.
inline constexpr int32 kMaxCharts = 1000;
/// The longest side of a holder, in pixels.
inline constexpr float kLongestHolder = 16383;

// Fields of a holder's archive; ChartShelf.h declares the others.
inline const kits::Field<BRect> kHolderBoundsField("Rect", 0, kLongestHolder);
inline const kits::Field<BMessage> kChartField("Chart", kMaxCharts);

/// Owns the charts of the main window and lays them out from top to bottom in equal bands over its whole width.
///
/// It archives and restores them, and passes a chart's request on to its siblings (MSG_DISTRIBUTE). While it has no
/// charts, a click with any button opens a menu that offers "Add new chart". Everything runs in the window's thread,
/// except that any thread that holds the interface lock may add and remove charts.
class ChartViewHolder : public BView {
public:
    /// Creates a holder with three charts of all defaults.
    explicit ChartViewHolder(BRect frame);

    /// Creates a holder with the charts in the output of Archive(); none when it holds none. The caller keeps @p
    /// archive.
    explicit ChartViewHolder(BMessage* archive);

    /// Deletes the charts.
    ~ChartViewHolder() override;

    /// Writes "Rect", one "Chart" per chart and the shelf's fields, in place of those that are there. Always returns
    /// B_OK: a chart that cannot be archived ends the list.
    status_t Archive(BMessage* into, bool deep = true) const override;

    /// Appends the charts in the output of Archive().
    void LoadPrefsFrom(BMessage* from);

    /// Takes @p chart as the last one and owns it from then on. The caller lays out the charts (Rerender()).
    void AddChartView(ChartView* chart);

    /// Gives @p chart back to the caller, who owns it from then on, and lays the others out. Ignores charts of other
    /// holders.
    void RemoveChartView(ChartView* chart);

    int32 CountCharts() const { return static_cast<int32>(fCharts.size()); }
    /// Returns the chart at @p index, counted from the top, or null. The holder owns it.
    ChartView* ChartAt(int32 index) const;

    /// Lays the charts out.
    void Rerender();

    /// Pauses or resumes all charts. For owners; the program itself pauses charts one by one.
    void Pause(bool pause);

    /// Connects every chart to the sampler, paused ones too, which then draw nothing.
    void AllAttached() override;
    /// Disconnects every chart.
    void AllDetached() override;
    /// Takes the keyboard's focus for the menu while there are no charts.
    void ContextMenuRequested(BPoint where) override;
    /// Draws one grey line that tells how to add a chart, while there are none.
    void Draw(BRect update) override;
    /// Returns that line, or the charts.
    std::string AccessibleValue() const override;
    void FrameResized(float width, float height) override;
    void MessageReceived(BMessage* message) override;
    void MouseDown(BPoint where) override;
    void ResizeTo(float width, float height) override;

private:
    void Initialise();
    void DrawHint();
    void Relay(const BMessage& message);
    void UpdateFocus();

    std::unique_ptr<ChartShelf> fShelf;
    std::unique_ptr<BPopUpMenu> fMenu;
    BMenuItem* fAddItem = nullptr;   // fMenu's
    std::vector<ChartView*> fCharts; // children, top first
};
