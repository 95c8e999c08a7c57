// SPDX-License-Identifier: MIT
#include "src/chart/ChartView.h"

#include "kits/application/Archivable.h"
#include "kits/interface/Dragger.h"
#include "kits/interface/Fields.h"
#include "kits/interface/Window.h"
#include "kits/kernel/Clock.h"
#include "src/chart/ChartExport.h"
#include "src/chart/ChartLocks.h"
#include "src/chart/ChartMenu.h"
#include "src/chart/PixelRows.h"
#include "src/sampling/ThreadMagic.h"
#include "src/support/Changes.h"
#include "src/support/Qel.h"
#include "src/support/ui/SmartWindow.h"

#include <algorithm>

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
    if (fSettings.showBorder)
        fPicture.SetColumn(1);
}

void ChartView::Initialise()
{
    fThrottle.Start(system_time());
    SetAccessibleName(Title());
    SetViewColor(B_TRANSPARENT_COLOR);
    fDragger = new BDragger(BRect(0, 0, 7, 7), this, B_FOLLOW_LEFT | B_FOLLOW_TOP, B_WILL_DRAW);
    AddChild(fDragger);
    UpdateDragger();
}

ChartView::~ChartView()
{
    if (fPrefsWindow != nullptr)
        fPrefsWindow->Quit();
    fResizer.reset();
    Connect(false, false);
    fSaving.Finish();
}

ChartView* ChartView::Instantiate(BMessage* archive)
{
    if (!validate_instantiation(archive, "ChartView"))
        return nullptr;
    auto chart = std::make_unique<ChartView>(archive);
    chart->fConnection.BecomeReplicant();
    return chart.release();
}

status_t ChartView::Archive(BMessage* into, bool) const
{
    // Children are left out: the dragger is made anew.
    status_t status = BView::Archive(into, false);
    if (status != B_OK)
        return status;
    // The pen has the colours of the last drawing. They are no setting, and would make a different archive with every
    // sample.
    kits::kPenColorsField.Set(into, static_cast<int32>(PixelWord(ChartColor(0))), 0);
    kits::kPenColorsField.Set(into, static_cast<int32>(PixelWord(fSettings.backgroundColor)), 1);
    status = kits::kAddOnField.Add(into, signature);
    status |= kits::kClassField.Add(into, "ChartView");
    status |= SavePrefsTo(into);
    return status;
}

status_t ChartView::SavePrefsTo(BMessage* into) const
{
    status_t status = SaveColorPrefsTo(into);
    status |= SaveGeneralPrefsTo(into);
    status |= SaveProviderPrefsTo(into);
    return status;
}

status_t ChartView::SaveGeneralPrefsTo(BMessage* into) const
{
    if (fPrefsWindow != nullptr) {
        fSettings.prefsWindow.MakeEmpty();
        fPrefsWindow->Archive(&fSettings.prefsWindow, false);
    }
    return fSettings.SaveGeneral(into);
}

status_t ChartView::SaveProviderPrefsTo(BMessage* into) const
{
    status_t status = B_OK;
    if (fValueVP != nullptr) {
        BMessage archive;
        status = fValueVP->Archive(&archive);
        status |= kValueSourceField.Add(into, archive);
    }
    for (const auto& provider : fProviders) {
        BMessage archive;
        status |= provider->Archive(&archive);
        const status_t added = kSourcesField.Add(into, archive);
        if (added != B_OK)
            return added;
    }
    return status;
}

void ChartView::LoadPrefsFrom(BMessage* from)
{
    if (from == nullptr)
        return;
    FFont font;
    if (kValueFontField.Find(*from, &font))
        SetValueFont(&font);
    if (kTitleFontField.Find(*from, &font))
        SetTitleFont(&font);
    fSettings.Load(*from);
    Changes::Note();
    kSkipValueField.Find(*from, &fRefreshes.counter);
    kValueSkipValueField.Find(*from, &fValueRefreshes.counter);
    std::string title;
    if (kTitleField.Find(*from, &title))
        SetTitle(title.c_str());
    SetMode(kModeField.Get(*from));
    bool transparent = false;
    if (kTransparentField.Find(*from, &transparent))
        SetTransparent(transparent);
    kVerticalField.Find(*from, &fSettings.vertical);
    LoadSourcesFrom(*from);

    rgb_color color;
    for (int32 i = 0; i < kMaxSources; i++)
        if (kChartColorField.Find(*from, &color, i))
            SetChartColor(color, i);
    if (kBackgroundColorField.Find(*from, &color))
        SetBackgroundColor(color);
    if (kValueColorField.Find(*from, &color))
        SetValueColor(color);
    if (kTitleColorField.Find(*from, &color))
        SetTitleColor(color);
    if (kBorderColorField.Find(*from, &color))
        SetBorderColor(color);
    bool lock = false;
    if (kLockBgColorField.Find(*from, &lock))
        SetLockBgColor(lock);
}

void ChartView::LoadSourcesFrom(const BMessage& from)
{
    BMessage archive;
    if (kValueSourceField.Find(from, &archive) && IsSourceArchive(archive, true))
        fValueVP = std::make_unique<ValueProvider>(&archive);

    if (!kSourcesField.IsIn(from))
        return;
    RemoveValueProvider(-1);
    for (int32 i = 0; kSourcesField.Find(from, &archive, i); i++)
        if (IsSourceArchive(archive, false))
            AddValueProvider(&archive, -1);
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
    Changes::Note();
    fPicture.InsertSource(index);
}

void ChartView::RemoveValueProvider(int32 index)
{
    if (index == -1) {
        fProviders.clear();
        fPicture.RemoveAllSources();
    } else if (index >= 0 && index < CountValueProviders()) {
        fProviders.erase(fProviders.begin() + index);
        fPicture.RemoveSource(index);
    } else {
        return;
    }
    Changes::Note();
    if (fMenu != nullptr)
        fMenu->RemoveSource(index);
}

void ChartView::AllAttached()
{
    if (!IsReplicant() || !fPaused)
        fConnection.Connect(true, true);
    DrawCaption(fCaptions.Title(), true);
    if (fMenu == nullptr) {
        fMenu = std::make_unique<ChartMenu>(IsReplicant());
        fMenu->MarkPaused(fPaused);
        for (int32 i = 0; i < CountValueProviders(); i++) {
            const ValueProvider* provider = ValueProviderAt(i);
            fMenu->AddSource(SourceName(provider->Target(), provider->Flags()).c_str(), i);
        }
        MakeDraggerMenu();
    }
    UpdateDragger();
}

void ChartView::Connect(bool connect, bool mayLaunch)
{
    if (!connect)
        fConnection.Disconnect();
    else if (!IsReplicant() || !fPaused)
        fConnection.Connect(mayLaunch, false);
}

void ChartView::Pause(bool pause)
{
    if (pause == fPaused)
        return;
    LooperLock lock(this);
    fPaused = pause;
    if (fMenu != nullptr)
        fMenu->MarkPaused(pause);
    Connect(!pause, !pause);
}

void ChartView::ResizeTo(float width, float height)
{
    // Bands of a holder without room have negative sizes.
    width = std::max(width, 0.0f);
    height = std::max(height, 0.0f);
    if (width == Bounds().Width() && height == Bounds().Height())
        return;
    LooperLock lock(this);
    BView::ResizeTo(width, height);
    if (IsReplicant() && lock)
        Window()->ResizeTo(width, height);
    fPicture.Resize(Bounds());
    for (ChartCaption* caption : {&fCaptions.Value(), &fCaptions.Title()})
        fCaptions.MoveTo(*caption, caption->look.where, Bounds());
    Draw(Bounds());
}

std::string ChartView::ValuesAsCsv()
{
    LooperLock lock(this);
    std::vector<std::string> names;
    for (const auto& provider : fProviders)
        names.push_back(ValueProvider::Name(provider->Target(), provider->Flags()));
    return ::ValuesAsCsv(fPicture.History(), names, kits::MomentOfBoot());
}

std::string ChartView::PictureAsPng()
{
    // A click gives the focus without the frame that marks it for the keyboard.
    const bool byMouse = std::exchange(fFocusByMouse, true);
    Draw(Bounds());
    std::string png;
    if (GetPicture(&png) != B_OK)
        png.clear();
    fFocusByMouse = byMouse;
    Draw(Bounds());
    return png;
}
