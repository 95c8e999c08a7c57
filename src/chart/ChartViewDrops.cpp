// SPDX-License-Identifier: MIT
#include "kits/application/Message.h"
#include "kits/interface/Fields.h"
#include "src/chart/ChartLocks.h"
#include "src/chart/ChartRanges.h"
#include "src/chart/ChartView.h"
#include "src/sampling/SourceName.h"
#include "src/support/Tr.h"
#include "src/support/ui/ShowAlert.h"

#include <algorithm>
#include <string>

// Handles drops on a chart. Everything here may come from another program.

namespace {

// The largest number of entries examined in one drop.
constexpr int32 kMaxLookedAt = 256;

bool LookAlike(rgb_color one, rgb_color other)
{
    return one.red == other.red && one.green == other.green && one.blue == other.blue;
}

} // namespace

void ChartView::TextDropped(BMessage* message)
{
    std::string_view bytes;
    if (!message->WasDropped() || !fCaptions.Title().IsOn(ConvertFromScreen(message->DropPoint())) ||
        !kits::kPlainTextField.Find(*message, &bytes))
        return;
    bytes = bytes.substr(0, bytes.find('\0'));
    std::string text(bytes.substr(0, kMaxTitleLength + 1));
    // A title is one line.
    std::replace_if(
        text.begin(), text.end(), [](char c) { return static_cast<uint8>(c) < ' '; }, ' ');
    SetTitle(text.c_str());
}

void ChartView::SourcesDropped(BMessage* message)
{
    LooperLock lock(this);
    const bool dropped = message->WasDropped();
    const BPoint where = dropped ? ConvertFromScreen(message->DropPoint()) : BPoint();
    const bool onTitle = dropped && fCaptions.Title().IsOn(where);
    const bool onValue = dropped && !onTitle && fCaptions.Value().IsOn(where);
    BMessage archive;
    for (int32 i = 0; i < kMaxLookedAt && message->FindMessage("ValueProvider", i, &archive) == B_OK; i++) {
        if (!IsSourceArchive(archive, false))
            continue;
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

void ChartView::FontDropped(BMessage* message)
{
    if (!message->WasDropped())
        return;
    FFont font;
    ChartCaption* caption = fCaptions.At(ConvertFromScreen(message->DropPoint()));
    if (caption == nullptr || FindMessageFont(message, "font", 0, &font) != B_OK)
        return;
    // Only the properties that the dropped font carries change.
    FFont changed(caption->look.font);
    font.UpdateTo(&changed, FFont::kAll);
    SetCaptionFont(*caption, &changed);
}

void ChartView::ColorDropped(BPoint where, rgb_color color)
{
    LooperLock lock(this);
    if (ChartCaption* caption = fCaptions.At(where))
        SetCaptionColor(*caption, color);
    else
        // A colour that was pasted comes with a place beside the chart.
        ColorSource(Bounds().Contains(where) ? fPicture.SourceAt(where) : -1, color);
}

// Gives the colour to the source, or to the background with -1, unless two of them would then look alike.
void ChartView::ColorSource(int32 source, rgb_color color)
{
    bool taken = source != -1 && LookAlike(color, fPicture.LowColor());
    for (int32 i = 0; i < CountValueProviders(); i++)
        taken = taken || (i != source && LookAlike(color, ChartColor(i)));
    if (taken) {
        beep();
    } else if (source != -1) {
        SetChartColor(color, source);
    } else {
        if (!fSettings.transparent)
            SetLockBgColor(false);
        SetBackgroundColor(color);
    }
}
