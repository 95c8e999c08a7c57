// SPDX-License-Identifier: MIT
// A chart shows up to eight sources of the sampler: as columns that run through time, one for each sample, or as a
// gauge of the newest sample. A title and a live value stand above it.
#pragma once

#include "kits/interface/View.h"
#include "src/chart/ChartCaptions.h"
#include "src/chart/ChartConnection.h"
#include "src/chart/ChartPicture.h"
#include "src/chart/ChartSaving.h"
#include "src/chart/ChartSettings.h"
#include "src/chart/ChartSteps.h"
#include "src/chart/DesktopSender.h"
#include "src/sampling/ValueProvider.h"

#include <memory>
#include <vector>

class BDragger;
class ChartMenu;
class ChartViewHolder;
class FireAndForgetThread;
class SmartWindow;

/// The view of a chart. It owns the chart's parts, handles events and redraws changes on the screen: ChartSettings
/// holds what the user has set, ChartPicture draws the samples, ChartCaptions draws the title and the value,
/// ChartConnection delivers the samples. It lives in a ChartViewHolder, or outside the application as a *replicant*.
///
/// Threads: the view belongs to its window's thread. Any thread that holds the interface lock may call the setters,
/// which also take it themselves. Without a window a chart keeps its picture and draws nothing on a screen. Locks are
/// taken in the order looper, sampler, bitmap.
class ChartView : public BView {
public:
    /// Creates a chart of 101 x 31 pixels with all defaults and no sources.
    ChartView();
    /// Creates a chart from the output of Archive() or SavePrefsTo(). The caller keeps @p archive.
    explicit ChartView(BMessage* archive);
    /// Closes its preferences window, ends its threads and disconnects; waits only for a file that is being saved.
    ~ChartView() override;
    /// Creates a chart outside the application; null when @p archive is not a chart's. The caller owns the result.
    static ChartView* Instantiate(BMessage* archive);
    /// Writes a replicant's archive: the view itself, "add_on", "class" and all settings. Never contains children.
    status_t Archive(BMessage* into, bool deep = true) const override;

    /// Each adds settings to a message and returns the statuses of the fields, or-ed together.
    status_t SavePrefsTo(BMessage* into) const;
    status_t SaveColorPrefsTo(BMessage* into) const { return fSettings.SaveColors(into); }
    status_t SaveGeneralPrefsTo(BMessage* into) const;
    status_t SaveProviderPrefsTo(BMessage* into) const;
    /// A setting that is missing or out of its range keeps its value.
    void LoadPrefsFrom(BMessage* from);
    const ChartSettings& Settings() const { return fSettings; }
    const ChartPicture& Picture() const { return fPicture; }
    const ChartCaptions& Captions() const { return fCaptions; }
    const ChartConnection& Connection() const { return fConnection; }
    const char* Title() const { return fSettings.titleText.c_str(); }
    rgb_color ChartColor(int32 index) const { return fSettings.chartColors[static_cast<size_t>(index)]; }
    /// Returns its pop-up menu, or null until the chart was in a window.
    ChartMenu* Menu() const { return fMenu.get(); }
    SmartWindow* PreferencesWindow() const { return fPrefsWindow; }

    int32 CountValueProviders() const { return fPicture.CountSources(); }
    /// Returns the source at @p index, or null. The chart owns it.
    const ValueProvider* ValueProviderAt(int32 index) const;
    /// Puts a source made from @p archive at @p index, or at the end if there is no such index. Does nothing when the
    /// chart has eight sources.
    void AddValueProvider(BMessage* archive, int32 index);
    /// Removes the source at @p index, or all of them with -1. Ignores an index that does not exist.
    void RemoveValueProvider(int32 index);
    /// Returns the source of the value caption, or null.
    const ValueProvider* ValueVP() const { return fValueVP.get(); }

    // Each setting takes effect at once; a value out of the range of its field is ignored.

    /// Takes the first @p length bytes of @p text, all of it with 0. A title that is too long is cut at a character.
    void SetTitle(const char* text, int32 length = 0);
    void SetShowTitle(bool on) { ShowCaption(fCaptions.Title(), on); }
    void SetShowValue(bool on) { ShowCaption(fCaptions.Value(), on); }
    void SetTitleFont(const FFont* font) { SetCaptionFont(fCaptions.Title(), font); }
    void SetValueFont(const FFont* font) { SetCaptionFont(fCaptions.Value(), font); }
    void SetTitleColor(rgb_color color) { SetCaptionColor(fCaptions.Title(), color); }
    void SetValueColor(rgb_color color) { SetCaptionColor(fCaptions.Value(), color); }
    void SetTitleAATarget(int16 target) { SetCaptionAATarget(fCaptions.Title(), target); }
    void SetValueAATarget(int16 target) { SetCaptionAATarget(fCaptions.Value(), target); }
    void SetTitleAAValue(float value) { SetCaptionAAValue(fCaptions.Title(), value); }
    void SetValueAAValue(float value) { SetCaptionAAValue(fCaptions.Value(), value); }
    void SetChartColor(rgb_color color, int32 index);
    void SetBackgroundColor(rgb_color color);
    void SetBorderColor(rgb_color color);
    void SetShowBorder(bool on);
    void SetTransparent(bool on);
    void SetLockBgColor(bool on);
    /// Switches to the gauge or back. The history is lost.
    void SetMode(int16 mode);
    /// These take effect with the next sample.
    void SetChartType(int16 type) { SetInRange(kChartTypeField, type, &fSettings.chartType); }
    void SetVertical(bool vertical);
    void SetPageSize(float size) { SetInRange(kPageSizeField, size, &fSettings.pageSize); }
    void SetSkipValue(int16 skip) { SetInRange(kSkipValueField, skip, &fSettings.skip); }
    void SetValueSkipValue(int16 skip) { SetInRange(kValueSkipValueField, skip, &fSettings.valueSkip); }

    /// Draws a new sample, unless the chart is paused, in no window, or the sample came too early. The caller holds the
    /// sampler's lock from before it reads @p newest until this returns.
    void Refresh(Sysinfo* sampler, SysinfoNode* newest);
    void RefreshChart(Sysinfo* sampler, SysinfoNode* newest);
    void RefreshGauge(Sysinfo* sampler, SysinfoNode* newest);
    /// Registers for samples, or unregisters. @p mayLaunch: a replicant may start the application.
    void Connect(bool connect, bool mayLaunch);
    /// A paused chart is disconnected and draws no samples.
    void Pause(bool pause);
    bool IsPaused() const { return fPaused; }
    bool IsReplicant() const { return fConnection.IsReplicant(); }
    /// Sets the holder of a chart in the main window; null for other charts. The chart does not own it.
    void SetOwner(ChartViewHolder* owner) { fOwner = owner; }
    ChartViewHolder* Owner() const { return fOwner; }
    /// Makes and shows the preferences window of a chart, with the state in the archive unless that is empty. Stores
    /// the pointer in the slot; the window's messages go to the chart. Set once for all charts, since this folder knows
    /// no pages.
    typedef void (*PreferencesOpener)(ChartView* chart, SmartWindow** slot, BMessage* archive);
    static void SetPreferencesOpener(PreferencesOpener opener);

    /// Returns the figures behind the picture as a table for a file (ChartExport.h).
    std::string ValuesAsCsv();
    /// Returns the visible chart as a PNG file of the screen's resolution; empty outside a window.
    std::string PictureAsPng();
    void SaveFile(const std::string& path, std::string bytes) { fSaving.Save(path, std::move(bytes)); }
    /// Moves a caption that is dragged: its base line begins at the mouse, kept inside the view.
    void TrackValue(BPoint where) { TrackCaption(fCaptions.Value(), where); }
    void TrackTitle(BPoint where) { TrackCaption(fCaptions.Title(), where); }
    void DoneTracking();
    /// Resizes a replicant whose corner is dragged: to the mouse, but not below the smallest size.
    void FollowCorner(BPoint where);

    /// Returns its sources with their shares as last drawn.
    std::vector<AccessiblePart> AccessibleParts() const override;
    void AllAttached() override;
    void ContextMenuRequested(BPoint where) override;
    /// Adds all settings, in the form of a drag of all pages.
    bool CopyRequested(BMessage* message) override;
    /// Pastes on the chosen caption; without one, on the chart as a whole, and a colour on its background.
    bool PasteRequested(BPoint* where) override;
    void Draw(BRect update) override;
    /// Enter chooses the title, the value, then none. Arrow keys move the chosen caption, Escape puts it back. On the
    /// desktop they move the chart while none is chosen, with Ctrl they resize it, and Tab goes to the next chart.
    void KeyDown(const char* bytes, int32 count) override;
    void MessageReceived(BMessage* message) override;
    void MouseDown(BPoint where) override;
    void MouseMoved(BPoint where, uint32 transit, const BMessage* dragMessage) override;
    /// Stretches the picture to the new size. On the desktop the chart's own window changes its size, too.
    void ResizeTo(float width, float height) override;

private:
    void Initialise();
    void LoadSourcesFrom(const BMessage& from);
    void ShowCaption(ChartCaption& caption, bool on);
    void SetCaptionFont(ChartCaption& caption, const FFont* font);
    void SetCaptionColor(ChartCaption& caption, rgb_color color);
    void SetCaptionAATarget(ChartCaption& caption, int16 target);
    void SetCaptionAAValue(ChartCaption& caption, float value);
    void MySetLowColor(rgb_color color);
    void UpdateDragger();
    ChartPicture::Shares SharesOf(Sysinfo* sampler, SysinfoNode* newest);
    bool TakeValueText(Sysinfo* sampler, SysinfoNode* newest);
    void RedrawAll();
    void RestoreUnder(BRect area);
    void DrawCaption(ChartCaption& caption, bool restore);
    void DrawBorder();
    void DrawFocus();
    void UpdateToolTip();
    void OpenMenu(BPoint where);
    void TrackCaption(ChartCaption& caption, BPoint where);
    void MoveChosen(BPoint where);
    bool UseKey(char key);
    bool UseArrow(BPoint direction, uint32 modifiers);
    void SourcesDropped(BMessage* message);
    bool DropReceived(BMessage* message);
    void TakePlace(const BMessage& message, ChartCaption& caption);
    void MakeDraggerMenu();
    bool DesktopMessageReceived(BMessage* message);

    ChartSettings fSettings;
    ChartPicture fPicture{fSettings, Bounds()};
    ChartCaptions fCaptions{fSettings};
    ChartConnection fConnection{this};
    ChartSaving fSaving;
    DesktopSender fDesktopSender;
    std::vector<std::unique_ptr<ValueProvider>> fProviders;
    std::unique_ptr<ValueProvider> fValueVP = std::make_unique<ValueProvider>(VP_FIRST_CPU, 0);
    std::unique_ptr<ChartMenu> fMenu;
    std::unique_ptr<FireAndForgetThread> fResizer;
    BDragger* fDragger = nullptr; // a child
    ChartViewHolder* fOwner = nullptr;
    SmartWindow* fPrefsWindow = nullptr; // the window clears it when it closes
    RefreshThrottle fThrottle;
    SkipCounter fRefreshes;
    SkipCounter fValueRefreshes;
    bool fPaused = false;
    bool fHovered = false;      // the pointer is over the chart
    bool fFocusByMouse = false; // a click gave it the focus
};
