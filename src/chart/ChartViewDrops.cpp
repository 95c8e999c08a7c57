// SPDX-License-Identifier: MIT
#include "kits/application/Message.h"
#include "kits/application/Messenger.h"
#include "kits/interface/Clipboard.h"
#include "kits/interface/Fields.h"
#include "src/chart/ChartLocks.h"
#include "src/chart/ChartMenu.h"
#include "src/chart/ChartView.h"
#include "src/support/Changes.h"
#include "src/support/ColorMessage.h"
#include "src/support/MessageCodes.h"
#include "src/support/Tr.h"
#include "src/support/ui/ShowAlert.h"

#include <algorithm>
#include <string>

// Handles drops on a chart, and pastes to its sources. Everything here may come from another program.

namespace {

// The message of font panels.
constexpr uint32 kFontDrop = '!FNT';

// The largest number of entries examined in one drop.
constexpr int32 kMaxLookedAt = 256;

bool LookAlike(rgb_color one, rgb_color other)
{
    return one.red == other.red && one.green == other.green && one.blue == other.blue;
}

BPoint DropPlace(const ChartView& chart, BMessage* message)
{
    return chart.ConvertFromScreen(message->DropPoint());
}

void TextDropped(ChartView& chart, BMessage* message)
{
    std::string_view bytes;
    if (!message->WasDropped() || !chart.Captions().Title().IsOn(DropPlace(chart, message)) ||
        !kits::kPlainTextField.Find(*message, &bytes))
        return;
    bytes = bytes.substr(0, bytes.find('\0'));
    std::string text(bytes.substr(0, kMaxTitleLength + 1));
    // A title is one line.
    std::replace_if(
        text.begin(), text.end(), [](char c) { return static_cast<uint8>(c) < ' '; }, ' ');
    chart.SetTitle(text.c_str());
}

void FontDropped(ChartView& chart, BMessage* message)
{
    FFont font;
    if (!message->WasDropped() || !kDraggedFontField.Find(*message, &font))
        return;
    // Only the properties that the dropped font carries change.
    const ChartCaption* caption = chart.Captions().At(DropPlace(chart, message));
    FFont changed(caption != nullptr ? caption->look.font : font);
    font.UpdateTo(&changed, FFont::kAll);
    if (caption == &chart.Captions().Value())
        chart.SetValueFont(&changed);
    else if (caption != nullptr)
        chart.SetTitleFont(&changed);
}

// Gives the colour to the source, or to the background with -1, unless two of them would then look alike.
void ColorSource(ChartView& chart, int32 source, rgb_color color)
{
    bool taken = source != -1 && LookAlike(color, chart.Picture().LowColor());
    for (int32 i = 0; i < chart.CountValueProviders(); i++)
        taken = taken || (i != source && LookAlike(color, chart.ChartColor(i)));
    if (taken) {
        beep();
    } else if (source != -1) {
        chart.SetChartColor(color, source);
    } else {
        if (!chart.Settings().transparent)
            chart.SetLockBgColor(false);
        chart.SetBackgroundColor(color);
    }
}

void ColorDropped(ChartView& chart, BMessage* message)
{
    rgb_color color;
    if (!message->WasDropped() || !FindColorMessage(*message, &color))
        return;
    LooperLock lock(&chart);
    const BPoint where = DropPlace(chart, message);
    const ChartCaption* caption = chart.Captions().At(where);
    if (caption == &chart.Captions().Value())
        chart.SetValueColor(color);
    else if (caption != nullptr)
        chart.SetTitleColor(color);
    else
        // A colour that was pasted comes with a place beside the chart.
        ColorSource(chart, chart.Bounds().Contains(where) ? chart.Picture().SourceAt(where) : -1, color);
}

// Returns the source whose submenu holds the item that sent the message, or -1.
int32 SourceMeantBy(const ChartView& chart, const BMessage& message)
{
    return chart.Menu() != nullptr ? chart.Menu()->SourceOf(kits::kSourceField.Get(message)) : -1;
}

// The menu may change before the colour comes, so the source is looked up again then.
void PasteColor(ChartView* chart, const BMessage& message)
{
    const auto take = [target = BMessenger(chart), message](const BMessage& pasted) {
        auto* const view = dynamic_cast<ChartView*>(target.Target(nullptr));
        if (view == nullptr)
            return;
        const int32 source = SourceMeantBy(*view, message);
        rgb_color color;
        if (source != -1 && FindColorMessage(pasted, &color))
            ColorSource(*view, source, color);
        else
            beep();
    };
    if (SourceMeantBy(*chart, message) == -1 || !kits::FetchClipboard(take))
        beep();
}

} // namespace

bool ChartView::DropReceived(BMessage* message)
{
    switch (message->what) {
    case MSG_PREFS_DROP:
        LoadPrefsFrom(message);
        RedrawAll();
        return true;
    case MSG_SOURCE_DROP:
        SourcesDropped(message);
        return true;
    case B_SIMPLE_DATA:
    case B_MIME_DATA:
        TextDropped(*this, message);
        return true;
    case B_PASTE:
        ColorDropped(*this, message);
        return true;
    case kFontDrop:
        FontDropped(*this, message);
        return true;
    case MSG_PASTE_COLOR:
        PasteColor(this, *message);
        return true;
    case MSG_REMOVE_SOURCE:
        if (const int32 source = SourceMeantBy(*this, *message); source != -1)
            RemoveValueProvider(source);
        return true;
    default:
        return false;
    }
}

void ChartView::SourcesDropped(BMessage* message)
{
    LooperLock lock(this);
    const bool dropped = message->WasDropped();
    const BPoint where = dropped ? ConvertFromScreen(message->DropPoint()) : BPoint();
    const bool onTitle = dropped && fCaptions.Title().IsOn(where);
    const bool onValue = dropped && !onTitle && fCaptions.Value().IsOn(where);
    BMessage archive;
    for (int32 i = 0; i < kMaxLookedAt && kDraggedSourceField.Find(*message, &archive, i); i++) {
        if (!IsSourceArchive(archive, false))
            continue;
        Changes::Note();
        auto source = std::make_unique<ValueProvider>(&archive);
        if (onTitle) {
            SetTitle(SourceName(source->Target(), source->Flags()).c_str());
        } else if (onValue) {
            fValueVP = std::move(source);
        } else if (CountValueProviders() >= kMaxSources) {
            ShowAlert(Tr("The maximal number of sources\nreached. Mail me if you need more !\n(Because of your 16-way "
                         "SMP box or sg. ;)"),
                      B_INFO_ALERT);
            return;
        } else {
            if (fValueVP != nullptr && fValueVP->Target() == VP_NONE)
                fValueVP = std::move(source);
            fPicture.StartNextSource();
            AddValueProvider(&archive, -1);
        }
    }
}
