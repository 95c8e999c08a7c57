// SPDX-License-Identifier: MIT
#include "src/chart/ChartViewHolder.h"

#include "kits/application/Looper.h"
#include "kits/application/Message.h"
#include "kits/interface/Fields.h"
#include "kits/interface/InterfaceDefs.h"
#include "kits/interface/PopUpMenu.h"
#include "src/chart/ChartLocks.h"
#include "src/chart/ChartShelf.h"
#include "src/chart/ChartSteps.h"
#include "src/chart/ChartView.h"
#include "src/support/Changes.h"
#include "src/support/MessageCodes.h"
#include "src/support/MessageFields.h"
#include "src/support/Tr.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int32 kFirstCharts = 3;
constexpr BRect kDefaultFrame{0, 0, 100, 100};
constexpr float kHintMargin = 4;
constexpr const char* kHint = TrLater("Click here to add a chart.");

/// Returns a grey that is weaker than the panel's text, and easy to read on a light and on a dark panel.
rgb_color HintColor()
{
    const rgb_color text = ui_color(B_PANEL_TEXT_COLOR);
    const rgb_color panel = ui_color(B_PANEL_BACKGROUND_COLOR);
    const auto mix = [](uint8 one, uint8 other) { return static_cast<uint8>((2 * one + other) / 3); };
    return make_color(mix(text.red, panel.red), mix(text.green, panel.green), mix(text.blue, panel.blue));
}

} // namespace

ChartViewHolder::ChartViewHolder(BRect frame)
    : BView(frame, "Charts", B_FOLLOW_ALL_SIDES, B_FRAME_EVENTS)
{
    Initialise();
    for (int32 i = 0; i < kFirstCharts; i++)
        AddChartView(new ChartView());
    Rerender();
}

ChartViewHolder::ChartViewHolder(BMessage* archive)
    : BView(kDefaultFrame, "Charts", B_FOLLOW_ALL_SIDES, B_FRAME_EVENTS)
{
    BRect size = kDefaultFrame;
    kHolderBoundsField.Find(*archive, &size);
    ResizeTo(size.Width(), size.Height());
    Initialise();
    fShelf->LoadFrom(*archive);
    LoadPrefsFrom(archive);
    UpdateFocus();
}

ChartViewHolder::~ChartViewHolder()
{
    LooperLock lock(this);
    for (ChartView* chart : fCharts) {
        chart->RemoveSelf();
        delete chart;
    }
}

void ChartViewHolder::Initialise()
{
    SetViewColor(B_TRANSPARENT_32_BIT);
    fShelf = std::make_unique<ChartShelf>(this);
    fMenu = std::make_unique<BPopUpMenu>(Tr("Charts"), true, false, B_ITEMS_IN_COLUMN);
    fAddItem = new BMenuItem(Tr("Add new chart"), nullptr);
    fMenu->AddItem(fAddItem);
}

status_t ChartViewHolder::Archive(BMessage* into, bool) const
{
    kHolderBoundsField.Add(into, Bounds());
    kChartField.Remove(into);
    for (const ChartView* chart : fCharts) {
        BMessage archive;
        if (chart->Archive(&archive, false) != B_OK || kChartField.Add(into, archive) != B_OK)
            break;
    }
    fShelf->SaveTo(into);
    return B_OK;
}

void ChartViewHolder::LoadPrefsFrom(BMessage* from)
{
    BMessage archive;
    for (int32 i = 0; CountCharts() < kMaxCharts && kChartField.Find(*from, &archive, i); i++) {
        // The layout sets its size; a frame from outside would only cost memory until then.
        kits::kFrameField.Remove(&archive);
        AddChartView(new ChartView(&archive));
    }
    Rerender();
}

void ChartViewHolder::AddChartView(ChartView* chart)
{
    LooperLock lock(this);
    fCharts.push_back(chart);
    Changes::Note();
    UpdateFocus();
    chart->SetOwner(this);
    AddChild(chart);
}

void ChartViewHolder::RemoveChartView(ChartView* chart)
{
    const auto found = std::find(fCharts.begin(), fCharts.end(), chart);
    if (found == fCharts.end())
        return;
    LooperLock lock(this);
    fCharts.erase(found);
    Changes::Note();
    UpdateFocus();
    chart->SetOwner(nullptr);
    RemoveChild(chart);
    Rerender();
}

ChartView* ChartViewHolder::ChartAt(int32 index) const
{
    if (index < 0 || index >= CountCharts())
        return nullptr;
    return fCharts[static_cast<size_t>(index)];
}

void ChartViewHolder::Rerender()
{
    LooperLock lock(this);
    const BRect bounds = Bounds();
    for (int32 i = 0; i < CountCharts(); i++) {
        const BRect band = ChartBand(bounds, CountCharts(), i);
        ChartView* chart = ChartAt(i);
        chart->MoveTo(band.LeftTop());
        chart->ResizeTo(band.Width(), band.Height());
    }
}

void ChartViewHolder::Pause(bool pause)
{
    for (ChartView* chart : fCharts)
        chart->Pause(pause);
}

void ChartViewHolder::AllAttached()
{
    for (ChartView* chart : fCharts)
        chart->Connect(true, true);
    Rerender();
}

void ChartViewHolder::AllDetached()
{
    for (ChartView* chart : fCharts)
        chart->Connect(false, true);
}

void ChartViewHolder::FrameResized(float, float)
{
    Rerender();
}

void ChartViewHolder::ResizeTo(float width, float height)
{
    const BRect bounds = Bounds();
    if (bounds.Width() == width && bounds.Height() == height)
        return;
    BView::ResizeTo(width, height);
    Rerender();
}

void ChartViewHolder::MessageReceived(BMessage* message)
{
    if (message->what == MSG_DISTRIBUTE)
        Relay(*message);
    else
        BView::MessageReceived(message);
}

void ChartViewHolder::Relay(const BMessage& message)
{
    void* sender = nullptr;
    BMessage wish;
    if (!kSenderField.Find(message, &sender) || !kWishField.Find(message, &wish))
        return;
    for (ChartView* chart : fCharts)
        if (chart != sender && chart->Looper() != nullptr)
            chart->Looper()->PostMessage(&wish, chart);
}

void ChartViewHolder::MouseDown(BPoint where)
{
    ContextMenuRequested(where);
}

void ChartViewHolder::ContextMenuRequested(BPoint where)
{
    // A menu that shows only while the button is down is gone before most people have seen it.
    constexpr bool kStaysOpen = true;
    if (fMenu->Go(ConvertToScreen(where), false, kStaysOpen, false) != fAddItem || CountCharts() >= kMaxCharts)
        return;
    AddChartView(new ChartView());
    Rerender();
}

// A holder with charts leaves the focus to them.
void ChartViewHolder::UpdateFocus()
{
    constexpr uint32 kWhileEmpty = B_WILL_DRAW | B_NAVIGABLE;
    SetFlags(fCharts.empty() ? Flags() | kWhileEmpty : Flags() & ~kWhileEmpty);
    Invalidate();
}

void ChartViewHolder::Draw(BRect)
{
    SetLowColor(B_TRANSPARENT_COLOR);
    FillRect(Bounds(), B_SOLID_LOW);
    if (fCharts.empty())
        DrawHint();
    if (IsFocus()) {
        SetHighColor(ui_color(B_KEYBOARD_NAVIGATION_COLOR));
        StrokeRect(Bounds());
    }
}

void ChartViewHolder::DrawHint()
{
    const char* const hint = Tr(kHint);
    font_height height;
    GetFontHeight(&height);
    const BRect bounds = Bounds();
    const BPoint place(std::floor(std::max((bounds.Width() - StringWidth(hint)) / 2, kHintMargin)),
                       std::floor((bounds.Height() + height.ascent - height.descent) / 2));
    SetHighColor(HintColor());
    SetLowColor(ui_color(B_PANEL_BACKGROUND_COLOR));
    DrawString(hint, place);
}

std::string ChartViewHolder::AccessibleValue() const
{
    return fCharts.empty() ? Tr(kHint) : BView::AccessibleValue();
}
