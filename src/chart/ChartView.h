// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Message.h"
#include "kits/application/Messenger.h"
#include "kits/interface/Bitmap.h"
#include "kits/interface/Font.h"
#include "kits/interface/View.h"
#include "kits/support/Color.h"
#include "kits/support/Point.h"
#include "kits/support/Rect.h"
#include "src/chart/ChartCaption.h"
#include "src/chart/ChartHistory.h"
#include "src/chart/ChartSteps.h"
#include "src/sampling/ValueProvider.h"
#include "src/support/FFont.h"

#include <array>
#include <memory>
#include <string>
#include <vector>

class BDragger;
class BFilePanel;
class ChartMenu;
class ChartViewHolder;
class FireAndForgetThread;
class ServerConnection;
class DesktopSender;
class SmartWindow;
class Sysinfo;
class SysinfoNode;

/// What a chart shows its sources as.
enum : int16 { kChartMode = 1, kGaugeMode = 2 };

/// How a column of a chart looks.
enum : int16 { kSolidChart = 1, kLineChart = 2, kPointChart = 3 };

/// The user makes no chart on the desktop narrower or lower than this, in pixels.
inline constexpr float kSmallestReplicant = 20;

/// A view that shows up to eight sources of the sampler as a scrolling chart or as a stacked gauge, with a title and a
/// live value drawn over it.
///
/// It lives in a ChartViewHolder, or outside the application as a *replicant*. It keeps its picture in a bitmap of its
/// own: a sample costs one column of it, an exposure one copy, a change of colour one pass over its pixels.
///
/// Every setting takes effect at once and goes into an archive and back (SavePrefsTo, LoadPrefsFrom). The same fields
/// serve the settings file, the snapshots of the preferences pages and drags of settings; a missing field leaves what
/// is there, one out of its range (ChartRanges.h) too.
///
/// Threads: the view belongs to its window's thread. Setters may be called by whoever holds the interface lock; they
/// take it themselves, so a caller without it is safe too. Without a window a chart keeps its picture and draws
/// nothing on a screen. Locks are taken in the order looper, sampler, bitmap.
class ChartView : public BView {
public:
    /// A chart with all defaults, 101 x 31 pixels. It has no sources yet.
    ChartView();

    /// A chart from what Archive() or SavePrefsTo() wrote. @p archive stays the caller's.
    explicit ChartView(BMessage* archive);

    /// Closes its preferences window, ends its threads and disconnects; waits for nobody.
    ~ChartView() override;

    /// A chart outside the application, from what Archive() wrote; null when @p archive is not one of a chart.
    /// The caller owns it.
    static ChartView* Instantiate(BMessage* archive);

    /// Writes a replicant's archive: the view itself, "add_on", "class" and all settings. Children never go in.
    status_t Archive(BMessage* into, bool deep = true) const override;

    /// @name Settings as fields of a message
    /// Each returns B_OK, or the statuses of the fields that could not be added, or-ed together.
    /// @{
    status_t SavePrefsTo(BMessage* into) const;
    status_t SaveColorPrefsTo(BMessage* into) const;
    status_t SaveGeneralPrefsTo(BMessage* into) const;
    status_t SaveProviderPrefsTo(BMessage* into) const;
    void LoadPrefsFrom(BMessage* from);
    /// @}

    /// @name Sources
    /// @{
    int32 CountValueProviders() const { return static_cast<int32>(fProviders.size()); }
    /// The source at @p index, or null. It stays the chart's.
    const ValueProvider* ValueProviderAt(int32 index) const;
    /// Puts a source made from @p archive at @p index; a negative index, or one past the end, appends. Nine sources
    /// never stand in a chart: with eight there, nothing happens.
    void AddValueProvider(BMessage* archive, int32 index);
    /// Removes the source at @p index, all of them with -1; an index that does not exist changes nothing.
    void RemoveValueProvider(int32 index);
    /// The source of the value caption, or null.
    const ValueProvider* ValueVP() const { return fValueVP.get(); }
    /// @}

    /// @name Captions
    /// @{
    const char* Title() const { return fTitle.c_str(); }
    /// The first @p length bytes of @p text become the title, all of it with 0. Longer titles than kMaxTitleLength
    /// bytes are cut at a character.
    void SetTitle(const char* text, int32 length = 0);
    bool ShowsTitle() const { return fTitleCaption.shown; }
    void SetShowTitle(bool on);
    bool ShowsValue() const { return fValueCaption.shown; }
    void SetShowValue(bool on);
    const FFont& ValueFont() const { return fValueCaption.font; }
    /// Null, and sizes that no caption can have (ChartRanges.h), are ignored.
    void SetValueFont(const FFont* font);
    const FFont& TitleFont() const { return fTitleCaption.font; }
    void SetTitleFont(const FFont* font);
    /// What the caption's antialiasing goes towards: 1 the first chart colour, 2 the background, 3 their average.
    int16 ValueAATarget() const { return fValueCaption.aaTarget; }
    void SetValueAATarget(int16 target);
    int16 TitleAATarget() const { return fTitleCaption.aaTarget; }
    void SetTitleAATarget(int16 target);
    /// How strong it is, 0.0 (none) to 1.0.
    float ValueAAValue() const { return fValueCaption.aaValue; }
    void SetValueAAValue(float value);
    float TitleAAValue() const { return fTitleCaption.aaValue; }
    void SetTitleAAValue(float value);
    /// The text that the value caption shows, and where: what was last drawn, invalid when nothing was.
    const char* ValueText() const { return fValueText; }
    BRect ValueRect() const { return fValueCaption.drawn; }
    BRect TitleRect() const { return fTitleCaption.drawn; }
    BPoint ValueCoord() const { return fValueCaption.where; }
    BPoint TitleCoord() const { return fTitleCaption.where; }
    /// @}

    /// @name Colours
    /// @{
    rgb_color ChartColor(int32 index) const { return fChartColors[static_cast<size_t>(index)]; }
    /// Recolours the history of source @p index (0 to 7) in place.
    void SetChartColor(rgb_color color, int32 index);
    rgb_color BackgroundColor() const { return fBackgroundColor; }
    void SetBackgroundColor(rgb_color color);
    rgb_color ValueColor() const { return fValueCaption.color; }
    void SetValueColor(rgb_color color);
    rgb_color TitleColor() const { return fTitleCaption.color; }
    void SetTitleColor(rgb_color color);
    rgb_color BorderColor() const { return fBorderColor; }
    void SetBorderColor(rgb_color color);
    /// What the chart is cleared with: the background, the desktop's colour, or the transparent magic.
    rgb_color CurrentLowColor() const { return fLowColor; }
    /// The colour that a caption of colour @p text fades to: @p value 1.0 gives the text's own, 0.0 the target's.
    rgb_color CalcAA(rgb_color text, int16 target, float value) const;
    /// @}

    /// @name What is drawn
    /// @{
    int16 Mode() const { return fMode; }
    /// To the gauge and back: the history is lost. Other values than the two modes are ignored.
    void SetMode(int16 mode);
    int16 ChartType() const { return fChartType; }
    /// Stores only, for the columns to come; types that do not exist are ignored.
    void SetChartType(int16 type);
    bool IsVertical() const { return fVertical; }
    /// Stores only: the next sample draws the gauge from bottom to top, or from left to right.
    void SetVertical(bool vertical) { fVertical = vertical; }
    float PageSize() const { return fPageSize; }
    /// The part of the width that stays when the chart is full, 0.0 to 1.0; above 0.99 it scrolls by one pixel.
    void SetPageSize(float size);
    bool ShowsBorder() const { return fShowBorder; }
    void SetShowBorder(bool on);
    bool IsTransparent() const { return fTransparent; }
    void SetTransparent(bool on);
    bool LocksBgColor() const { return fLockBgColor; }
    /// The background follows the desktop's colour.
    void SetLockBgColor(bool on);
    /// How many samples are left out between two that are drawn, 0 to 50.
    int16 SkipValue() const { return fRefreshSkip.skip; }
    void SetSkipValue(int16 skip);
    /// How many refreshes keep the value caption, 0 to 50.
    int16 ValueSkipValue() const { return fValueSkip.skip; }
    void SetValueSkipValue(int16 skip);
    /// Where the next sample's column goes, nearly: see ChartSteps.h.
    float Column() const { return fColumn; }
    /// @}

    /// @name Samples
    /// The caller holds the sampler's lock from before it reads @p newest until this returns.
    /// @{
    /// A sample has come: draws it unless the chart is paused, in no window, or it came too early.
    void Refresh(Sysinfo* sampler, SysinfoNode* newest);
    void RefreshChart(Sysinfo* sampler, SysinfoNode* newest);
    void RefreshGauge(Sysinfo* sampler, SysinfoNode* newest);
    /// @}

    /// Registers for samples, or unregisters; returns at once. A replicant does it on threads of its own, see
    /// ServerConnection; if it cannot be connected when it comes into a window, an alert says so, once.
    /// @param mayLaunch  a replicant may start the application
    void Connect(bool connect, bool mayLaunch);
    /// A paused chart is disconnected and draws nothing, whatever comes.
    void Pause(bool pause);
    bool IsPaused() const { return fPaused; }

    bool IsReplicant() const { return fReplicant; }
    /// A replicant's connection to the application; null for other charts. Stays the chart's.
    const ServerConnection* Connection() const { return fConnection.get(); }
    /// The holder of a chart in the main window; null for others. Not owned.
    void SetOwner(ChartViewHolder* owner) { fOwner = owner; }
    ChartViewHolder* Owner() const { return fOwner; }

    /// Its preferences window while that is open; not owned by the caller.
    SmartWindow* PreferencesWindow() const { return fPrefsWindow; }

    /// Its pop-up menu; null until it was in a window. Stays the chart's.
    ChartMenu* Menu() const { return fMenu.get(); }

    /// The picture so far, null in gauge mode; stays the chart's. Read it under its lock.
    BBitmap* Picture() const { return fBitmap.get(); }

    /// The figures behind the picture, in gauge mode as many as a chart of this width would show.
    const ChartHistory& History() const { return fHistory; }
    /// The same as a table for a file (ChartExport.h).
    std::string ValuesAsCsv();
    /// What the chart shows, captions and border included, as the bytes of a PNG file at the screen's resolution; empty
    /// outside a window.
    std::string PictureAsPng();
    /// Writes a file in the background; an alert says when that fails. A chart that goes before waits for it.
    /// @param path  absolute
    void SaveFile(const std::string& path, std::string bytes);

    /// @name Dragging a caption
    /// The mouse is at @p where: the caption's base line begins there, held inside the view.
    /// @{
    void TrackValue(BPoint where);
    void TrackTitle(BPoint where);
    void DoneTracking();
    /// @}

    /// A colour was dropped at @p where: it goes to the caption, the source or the background that shows there, unless
    /// two of them would then look alike.
    void ColorDropped(BPoint where, rgb_color color);
    /// A font was dropped: it goes to the caption that shows there.
    void FontDropped(BMessage* message);

    /// Its sources, with their shares as last drawn.
    std::vector<AccessiblePart> AccessibleParts() const override;
    void AllAttached() override;
    void ContextMenuRequested(BPoint where) override;
    /// All settings, as a drag of all pages carries them.
    bool CopyRequested(BMessage* message) override;
    /// On the chosen caption; else it concerns the chart as a whole, and a colour its background.
    bool PasteRequested(BPoint* where) override;
    void Draw(BRect update) override;
    /// Enter chooses the title, the value, and none again; the arrow keys move the chosen one by a pixel, with Shift by
    /// ten, Escape puts it back. Without the focus none is chosen. On the desktop they move the chart while none is,
    /// with Ctrl they resize it, and Tab goes to the next chart there.
    void KeyDown(const char* bytes, int32 count) override;
    void MessageReceived(BMessage* message) override;
    void MouseDown(BPoint where) override;
    void MouseMoved(BPoint where, uint32 transit, const BMessage* dragMessage) override;
    /// Stretches the picture to the new size. On the desktop the window, which is the chart's own, goes with it.
    void ResizeTo(float width, float height) override;

    /// The mouse holds a replicant's corner: gives it the size that the mouse is at.
    /// @return false when no button is down (any more)
    bool FollowCorner();

private:
    void Initialise();
    void MakePicture();
    void DropPicture();
    void FitHistory();
    BRect ChartRect() const { return ::ChartRect(Bounds(), fShowBorder); }

    void DrawStep(size_t source, BPoint base, BPoint top, bool onScreen);
    void WrapPicture(const WrapStep& step);
    bool TakeValueText(Sysinfo* sampler, SysinfoNode* newest);

    void Redraw();
    void RedrawAll();
    void RestoreUnder(BRect area);
    void DrawGauge(BRect update);
    void DrawBorder();
    void DrawFocus();
    void DrawValue(bool restore) { DrawCaption(fValueCaption, restore); }
    void DrawTitle(bool restore) { DrawCaption(fTitleCaption, restore); }

    const char* TextOf(const ChartCaption& caption) const;
    void DrawCaption(ChartCaption& caption, bool restore);
    void PaintCaption(ChartCaption& caption);
    void ShowCaption(ChartCaption& caption, bool on);
    void SetCaptionColor(ChartCaption& caption, rgb_color color);
    void SetCaptionAATarget(ChartCaption& caption, int16 target);
    void SetCaptionAAValue(ChartCaption& caption, float value);
    void SetCaptionFont(ChartCaption& caption, const FFont* font);
    void ModerateCaption(ChartCaption& caption);

    void ReplaceInPicture(uint32 from, uint32 to);
    void MySetLowColor(rgb_color color);
    void UpdateAAColors();
    void UpdateDragger();

    void LoadCaptionsFrom(const BMessage& from);
    void LoadSourcesFrom(const BMessage& from);
    void LoadColorsFrom(const BMessage& from);
    void StartSource(int32 index);

    double NextShare(size_t source, Sysinfo* sampler, SysinfoNode* newest);

    void MakeMenu();
    void MakeDraggerMenu();
    void UpdateToolTip();
    void OpenMenu(BPoint where);
    bool IsOn(const ChartCaption& caption, BPoint where) const;
    bool IsOnCorner(BPoint where) const;
    void TrackCorner();
    void TrackCaption(ChartCaption& caption, BPoint where);

    bool UseKey(char key);
    bool UseArrow(BPoint direction, uint32 modifiers);
    ChartCaption* Chosen() const;
    ChartCaption* NextToChoose();
    void Choose(ChartCaption* caption);
    void MoveChosen(BPoint where);
    void MoveOnDesktop(BPoint distance);
    void ResizeOnDesktop(BPoint difference);
    void GoToNextOnDesktop(bool back);
    BPoint PlaceOn(const ChartCaption& caption) const;
    int32 SourceMeantBy(const BMessage& message) const;
    void PasteColor(const BMessage& message);
    void TakePastedColor(const BMessage& message, const BMessage& pasted);

    BPoint DropPlace(BMessage* message) const;
    void TextDropped(BMessage* message);
    void SourcesDropped(BMessage* message);
    void ColorDropped(BMessage* message);
    void ColorSource(int32 source, rgb_color color);
    int32 SourceInPicture(BPoint where) const;
    int32 SourceInGauge(BPoint where) const;

    void ConnectReplicant(bool mayLaunch, bool tellFailure);
    void TellFailure();
    void ServerGone(const BMessage& message);
    void ForwardAbout(BMessage* message);
    void TakeSample(const BMessage& message);
    void RemoveSourceOf(const BMessage& message);
    void Distribute(const BMessage& wish);
    void DistributePlace(uint32 command, const ChartCaption& caption);
    void TakePlace(const BMessage& message, ChartCaption& caption);
    void MoveColumnTo(float column);
    void AddSibling();
    void SavePicture();
    void SaveValues();
    void FinishSaving();
    void OpenPrefs();
    void PrefsWindowClosed(const BMessage& message);
    void RefreshPrefsWindowArchive() const;
    void ClosePrefs();
    void Delete();

    bool DesktopMessageReceived(BMessage* message);
    void DroppedOnDesktop(const BMessage& message);
    void ShowOnDesktop(const BPoint* leftTop);
    DesktopSender& Sender();
    void StartDesktop();
    static void TellNotOnDesktop(const char* why);

    ChartCaption fValueCaption;
    ChartCaption fTitleCaption;
    ChartCaption* fChosen = nullptr; // by keyboard: one of these two
    BPoint fChosenFrom;              // where it was then
    std::string fTitle;
    char fValueText[ValueProvider::kValueStringLength] = "";
    std::vector<std::unique_ptr<ValueProvider>> fProviders;
    std::unique_ptr<ValueProvider> fValueVP;

    std::unique_ptr<BBitmap> fBitmap;
    BView* fPen = nullptr;        // draws into fBitmap, which owns it
    BDragger* fDragger = nullptr; // a child
    std::unique_ptr<ChartMenu> fMenu;
    std::unique_ptr<BFilePanel> fPanel; // the last one that was opened
    std::unique_ptr<FireAndForgetThread> fSaving;
    std::unique_ptr<DesktopSender> fDesktopSender; // null until it is needed
    ChartViewHolder* fOwner = nullptr;
    SmartWindow* fPrefsWindow = nullptr; // cleared by the window when it goes
    mutable BMessage fPrefsWindowArchive;
    BMessenger fMessenger;                         // as last registered
    std::unique_ptr<ServerConnection> fConnection; // of a replicant
    std::unique_ptr<FireAndForgetThread> fResizer;

    std::array<rgb_color, kMaxSources> fChartColors{};
    std::array<BPoint, kMaxSources> fLastPoints{};
    std::array<float, kMaxSources> fGaugeEnds{};
    std::array<double, kMaxSources> fShares{}; // as last drawn
    ChartHistory fHistory;
    rgb_color fBackgroundColor{};
    rgb_color fBorderColor{};
    rgb_color fLowColor{};

    RefreshThrottle fThrottle;
    SkipCounter fRefreshSkip;
    SkipCounter fValueSkip;
    float fColumn = 0;
    float fPageSize = 0.75f;
    int16 fMode = kChartMode;
    int16 fChartType = kSolidChart;
    bool fPaused = false;
    bool fHovered = false;      // the pointer is on it
    bool fFocusByMouse = false; // it has the focus from a click
    bool fReplicant = false;
    bool fShowBorder = false;
    bool fLockBgColor = false;
    bool fTransparent = false;
    bool fVertical = false;
};
