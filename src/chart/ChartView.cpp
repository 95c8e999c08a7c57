// SPDX-License-Identifier: MIT
#include "src/chart/ChartView.h"

#include "kits/interface/Dragger.h"
#include "kits/interface/FilePanel.h"
#include "kits/interface/Window.h"
#include "kits/kernel/Clock.h"
#include "src/chart/ChartLocks.h"
#include "src/chart/ChartMenu.h"
#include "src/chart/ChartRanges.h"
#include "src/chart/DesktopSender.h"
#include "src/sampling/ServerConnection.h"
#include "src/sampling/SourceName.h"
#include "src/sampling/ThreadMagic.h"

#include <algorithm>

namespace {

constexpr float kCaptionSize = 15;
constexpr float kValueX = 50;

// A picture that memory can hold, whatever an archive says of the view's frame.
bool IsPictureSize(BRect bounds)
{
    const float columns = bounds.Width() + 1;
    const float rows = bounds.Height() + 1;
    return columns >= 1 && rows >= 1 && columns * rows <= kMaxPixels;
}

} // namespace

ChartView::ChartView()
    : BView(BRect(0, 0, 100, 30), "ChartView", B_FOLLOW_NONE, B_WILL_DRAW | B_NAVIGABLE)
{
    Initialise();
}

ChartView::ChartView(BMessage* archive)
    : BView(archive)
{
    SetFlags(Flags() | B_WILL_DRAW | B_NAVIGABLE);
    SetName("ChartView");
    Initialise();
    LoadPrefsFrom(archive);
    if (fShowBorder) {
        fColumn = 1;
        // The first source keeps its start at the view's edge.
        for (size_t i = 1; i < fLastPoints.size(); i++)
            fLastPoints[i].x = 1;
    }
}

ChartView::~ChartView()
{
    ClosePrefs();
    fResizer.reset();
    Connect(false, false);
    FinishSaving();
}

void ChartView::Initialise()
{
    fThrottle.Start(system_time());
    fTitle = "Def. title; d&d a source to the title";
    SetAccessibleName(fTitle.c_str());
    for (size_t i = 0; i < fChartColors.size(); i++) {
        const auto step = static_cast<uint8>(8 * i);
        const auto grey = static_cast<uint8>(100 + step);
        // Eight bits a channel: the blue of the last three wraps round, so that they stand out.
        fChartColors[i] = {grey, grey, static_cast<uint8>(220 + step), 255};
    }
    fChartColors[0].alpha = 0;

    FFont font(be_plain_font);
    font.SetSize(kCaptionSize);
    for (ChartCaption* caption : {&fValueCaption, &fTitleCaption}) {
        caption->font = font;
        font.GetHeight(&caption->height);
        caption->color = {216, 216, 216, 0};
    }
    fValueCaption.where = BPoint(kValueX, fValueCaption.height.ascent + fValueCaption.height.descent);
    fTitleCaption.where = BPoint(0, fTitleCaption.height.ascent + fTitleCaption.height.descent);
    fBorderColor = {255, 255, 255, 0};

    SetViewColor(B_TRANSPARENT_COLOR);
    MakePicture();
    fDragger = new BDragger(BRect(0, 0, 7, 7), this, B_FOLLOW_LEFT | B_FOLLOW_TOP, B_WILL_DRAW);
    AddChild(fDragger);
    UpdateDragger();
    UpdateAAColors();
    fValueVP = std::make_unique<ValueProvider>(VP_FIRST_CPU, 0);
}

void ChartView::MakePicture()
{
    DropPicture();
    fColumn = 0;
    fLastPoints.fill(Bounds().LeftBottom());
    FitHistory();
    if (!IsPictureSize(Bounds()))
        return;
    auto bitmap = std::make_unique<BBitmap>(Bounds(), B_RGB32, true);
    if (!bitmap->IsValid())
        return;
    fBitmap = std::move(bitmap);
    fPen = new BView(Bounds(), "", B_FOLLOW_NONE, B_WILL_DRAW);
    PictureLock lock(fBitmap.get());
    fBitmap->AddChild(fPen);
    fPen->SetViewColor(B_TRANSPARENT_COLOR);
    fPen->SetLowColor(fLowColor);
    fPen->FillRect(Bounds(), B_SOLID_LOW);
}

void ChartView::FitHistory()
{
    fHistory.SetCapacity(IsPictureSize(Bounds()) ? static_cast<int32>(Bounds().Width()) + 1 : 0);
}

void ChartView::DropPicture()
{
    fPen = nullptr;
    fBitmap.reset();
}

void ChartView::SetMode(int16 mode)
{
    if (mode == fMode || (mode != kChartMode && mode != kGaugeMode))
        return;
    LooperLock lock(this);
    fMode = mode;
    fHistory.KeepNewest(0);
    if (mode == kGaugeMode) {
        DropPicture();
        fGaugeEnds.fill(0);
        if (lock) {
            SetLowColor(fLowColor);
            FillRect(Bounds(), B_SOLID_LOW);
        }
    } else {
        MakePicture();
    }
    Redraw();
}

void ChartView::ResizeTo(float width, float height)
{
    // Bands of a holder without room come out negative.
    width = std::max(width, 0.0f);
    height = std::max(height, 0.0f);
    const BRect old = Bounds();
    if (width == old.Width() && height == old.Height())
        return;
    LooperLock lock(this);
    BView::ResizeTo(width, height);
    if (fReplicant && lock)
        Window()->ResizeTo(width, height);
    if (fMode == kChartMode) {
        const float column = ColumnAfterResize(fColumn, old.Width(), Bounds().Width());
        const std::array<BPoint, kMaxSources> lastPoints = fLastPoints;
        const std::unique_ptr<BBitmap> picture = std::move(fBitmap);
        MakePicture();
        fColumn = column;
        fLastPoints = lastPoints;
        if (fBitmap != nullptr && picture != nullptr) {
            PictureLock pictureLock(fBitmap.get());
            PictureLock oldLock(picture.get());
            fPen->DrawBitmap(picture.get(), picture->Bounds(), fBitmap->Bounds());
        }
    } else {
        FitHistory();
    }
    ModerateCaption(fValueCaption);
    ModerateCaption(fTitleCaption);
    Redraw();
}

const ValueProvider* ChartView::ValueProviderAt(int32 index) const
{
    if (index < 0 || index >= CountValueProviders())
        return nullptr;
    return fProviders[static_cast<size_t>(index)].get();
}

void ChartView::AddValueProvider(BMessage* archive, int32 index)
{
    const int32 count = CountValueProviders();
    if (count >= kMaxSources)
        return;
    if (index < 0 || index > count)
        index = count;
    auto provider = std::make_unique<ValueProvider>(archive);
    if (fMenu != nullptr)
        fMenu->AddSource(SourceName(provider->Target(), provider->Flags()).c_str(), index);
    fProviders.insert(fProviders.begin() + index, std::move(provider));
    fHistory.InsertSource(index);
}

void ChartView::RemoveValueProvider(int32 index)
{
    if (index == -1) {
        fProviders.clear();
        fHistory.KeepNewest(0);
    } else if (index >= 0 && index < CountValueProviders()) {
        fProviders.erase(fProviders.begin() + index);
        fHistory.RemoveSource(index);
    } else {
        return;
    }
    if (fMenu != nullptr)
        fMenu->RemoveSource(index);
}

void ChartView::AllAttached()
{
    if (fReplicant)
        ConnectReplicant(true, true);
    else
        Connect(true, true);
    DrawTitle(true);
    if (fMenu == nullptr) {
        MakeMenu();
        MakeDraggerMenu();
    }
    UpdateDragger();
}

void ChartView::MakeMenu()
{
    fMenu = std::make_unique<ChartMenu>(fReplicant);
    fMenu->MarkPaused(fPaused);
    for (int32 i = 0; i < CountValueProviders(); i++) {
        const ValueProvider* provider = ValueProviderAt(i);
        fMenu->AddSource(SourceName(provider->Target(), provider->Flags()).c_str(), i);
    }
}
