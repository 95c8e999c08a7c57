// SPDX-License-Identifier: MIT
#include "kits/application/Archivable.h"
#include "kits/support/TypeConstants.h"
#include "src/chart/ChartRanges.h"
#include "src/chart/ChartView.h"
#include "src/chart/PixelRows.h"
#include "src/sampling/ServerConnection.h"
#include "src/sampling/ThreadMagic.h"
#include "src/support/MessageCodes.h"
#include "src/support/Qel.h"

// How a chart's settings stand in messages.

namespace {

status_t AddColor(BMessage* into, const char* key, rgb_color color)
{
    const uint8 channels[4] = {color.red, color.green, color.blue, color.alpha};
    return into->AddData(key, B_RAW_TYPE, channels, sizeof(channels), true);
}

} // namespace

status_t ChartView::SaveColorPrefsTo(BMessage* into) const
{
    status_t status = into->AddInt16("ValueAATarget", fValueCaption.aaTarget);
    status |= into->AddInt16("TitleAATarget", fTitleCaption.aaTarget);
    status |= into->AddFloat("ValueAAValue", fValueCaption.aaValue);
    status |= into->AddFloat("TitleAAValue", fTitleCaption.aaValue);
    for (rgb_color color : fChartColors)
        status |= AddColor(into, "ChartColor", color);
    status |= AddColor(into, "BackgroundColor", fBackgroundColor);
    status |= AddColor(into, "ValueColor", fValueCaption.color);
    status |= AddColor(into, "TitleColor", fTitleCaption.color);
    status |= AddColor(into, "BorderColor", fBorderColor);
    return status;
}

status_t ChartView::SaveGeneralPrefsTo(BMessage* into) const
{
    RefreshPrefsWindowArchive();
    status_t status = into->AddInt16("SkipValue", fRefreshSkip.skip);
    status |= into->AddInt16("ValueSkipValue", fValueSkip.skip);
    status |= into->AddInt16("ChartType", fChartType);
    status |= into->AddFloat("PageSize", fPageSize);
    status |= into->AddBool("ShowValue", fValueCaption.shown);
    status |= into->AddBool("ShowTitle", fTitleCaption.shown);
    status |= into->AddBool("ShowBorder", fShowBorder);
    status |= into->AddPoint("ValueCoord", fValueCaption.where);
    status |= into->AddPoint("TitleCoord", fTitleCaption.where);
    status |= into->AddMessage("PrefsWindowArchive", &fPrefsWindowArchive);
    status |= into->AddBool("LockBgColor", fLockBgColor);
    status |= into->AddString("Title", fTitle);
    status |= into->AddInt16("Mode", fMode);
    status |= into->AddBool("Transparent", fTransparent);
    status |= into->AddBool("Vertical", fVertical);
    status |= into->AddFlat("ValueFont", &fValueCaption.font);
    status |= into->AddFlat("TitleFont", &fTitleCaption.font);
    return status;
}

status_t ChartView::SaveProviderPrefsTo(BMessage* into) const
{
    status_t status = B_OK;
    if (fValueVP != nullptr) {
        BMessage archive;
        status = fValueVP->Archive(&archive);
        status |= into->AddMessage("ValueVP", &archive);
    }
    for (const auto& provider : fProviders) {
        BMessage archive;
        status |= provider->Archive(&archive);
        const status_t added = into->AddMessage("ValueProviders", &archive);
        if (added != B_OK)
            return added;
    }
    return status;
}

status_t ChartView::SavePrefsTo(BMessage* into) const
{
    status_t status = SaveColorPrefsTo(into);
    status |= SaveGeneralPrefsTo(into);
    status |= SaveProviderPrefsTo(into);
    return status;
}

ChartView* ChartView::Instantiate(BMessage* archive)
{
    if (!validate_instantiation(archive, "ChartView"))
        return nullptr;
    auto chart = std::make_unique<ChartView>(archive);
    chart->fReplicant = true;
    chart->fConnection = std::make_unique<ServerConnection>(signature, MSG_SERVER_UNREACHABLE);
    return chart.release();
}

status_t ChartView::Archive(BMessage* into, bool) const
{
    // Children never go in: the dragger is made anew.
    status_t status = BView::Archive(into, false);
    if (status != B_OK)
        return status;
    // The pen has the colours of what was drawn last. They are no setting, and every sample would make a new archive.
    into->ReplaceInt32("_color", 0, static_cast<int32>(PixelWord(fChartColors[0])));
    into->ReplaceInt32("_color", 1, static_cast<int32>(PixelWord(fBackgroundColor)));
    status = into->AddString("add_on", signature);
    status |= into->AddString("class", "ChartView");
    status |= SavePrefsTo(into);
    return status;
}

void ChartView::LoadPrefsFrom(BMessage* from)
{
    if (from == nullptr)
        return;
    LoadCaptionsFrom(*from);

    if (FindInRange(*from, "SkipValue", &fRefreshSkip.skip))
        fRefreshSkip.counter = fRefreshSkip.skip;
    if (FindInRange(*from, "ValueSkipValue", &fValueSkip.skip))
        fValueSkip.counter = fValueSkip.skip;
    FindInRange(*from, "ChartType", &fChartType);
    // 0 counts as missing, for the page size as for the antialiasing values.
    float size = 0;
    if (FindInRange(*from, "PageSize", &size) && size != 0)
        fPageSize = size;
    from->FindBool("ShowBorder", &fShowBorder);

    fPrefsWindowArchive.MakeEmpty();
    from->FindMessage("PrefsWindowArchive", &fPrefsWindowArchive);
    const char* title = nullptr;
    if (from->FindString("Title", &title) == B_OK)
        SetTitle(title);

    int16 mode = fMode;
    if (FindInRange(*from, "Mode", &mode))
        SetMode(mode);
    bool transparent = false;
    if (from->FindBool("Transparent", &transparent) == B_OK)
        SetTransparent(transparent);
    from->FindBool("Vertical", &fVertical);

    LoadSourcesFrom(*from);
    LoadColorsFrom(*from);
}

void ChartView::LoadCaptionsFrom(const BMessage& from)
{
    FFont font(be_plain_font);
    if (from.FindFlat("ValueFont", &font) == B_OK)
        SetValueFont(&font);
    font = FFont(be_plain_font);
    if (from.FindFlat("TitleFont", &font) == B_OK)
        SetTitleFont(&font);

    FindInRange(from, "ValueAATarget", &fValueCaption.aaTarget);
    FindInRange(from, "TitleAATarget", &fTitleCaption.aaTarget);
    // A stored 0 (antialiasing off) is not taken: it comes with the font's flags.
    float value = 0;
    if (FindInRange(from, "ValueAAValue", &value) && value != 0)
        fValueCaption.aaValue = value;
    value = 0;
    if (FindInRange(from, "TitleAAValue", &value) && value != 0)
        fTitleCaption.aaValue = value;

    from.FindBool("ShowTitle", &fTitleCaption.shown);
    from.FindBool("ShowValue", &fValueCaption.shown);
    FindInRange(from, "ValueCoord", &fValueCaption.where);
    FindInRange(from, "TitleCoord", &fTitleCaption.where);
}

void ChartView::LoadSourcesFrom(const BMessage& from)
{
    BMessage archive;
    if (from.FindMessage("ValueVP", &archive) == B_OK && IsSourceArchive(archive, true))
        fValueVP = std::make_unique<ValueProvider>(&archive);

    if (!from.HasMessage("ValueProviders"))
        return;
    RemoveValueProvider(-1);
    for (int32 i = 0; i < kMaxSources && from.FindMessage("ValueProviders", i, &archive) == B_OK; i++)
        if (IsSourceArchive(archive, false))
            AddValueProvider(&archive, -1);
}

void ChartView::LoadColorsFrom(const BMessage& from)
{
    rgb_color color;
    for (int32 i = 0; i < kMaxSources; i++)
        if (FindColor(from, "ChartColor", i, &color))
            SetChartColor(color, i);
    if (FindColor(from, "BackgroundColor", 0, &color))
        SetBackgroundColor(color);
    if (FindColor(from, "ValueColor", 0, &color))
        SetValueColor(color);
    if (FindColor(from, "TitleColor", 0, &color))
        SetTitleColor(color);
    if (FindColor(from, "BorderColor", 0, &color))
        SetBorderColor(color);
    bool lock = false;
    if (from.FindBool("LockBgColor", &lock) == B_OK)
        SetLockBgColor(lock);
}
