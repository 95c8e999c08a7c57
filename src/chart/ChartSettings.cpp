// SPDX-License-Identifier: MIT
#include "src/chart/ChartSettings.h"

#include "src/chart/ChartCaption.h"

#include <type_traits>

namespace {

constexpr float kCaptionSize = 15;

// Calls the action with each setting that causes no drawing at once, and its field, in the order in which they stand in
// messages. The action gets const references if the settings are const.

template <class Settings, class Action> void ForEachAntialiasing(Settings& settings, Action& action)
{
    action(kValueAATargetField, settings.value.aaTarget);
    action(kTitleAATargetField, settings.title.aaTarget);
    action(kValueAAValueField, settings.value.aaValue);
    action(kTitleAAValueField, settings.title.aaValue);
}

template <class Settings, class Action> void ForEachPlain(Settings& settings, Action& action)
{
    action(kSkipValueField, settings.skip);
    action(kValueSkipValueField, settings.valueSkip);
    action(kChartTypeField, settings.chartType);
    action(kPageSizeField, settings.pageSize);
    action(kShowValueField, settings.value.shown);
    action(kShowTitleField, settings.title.shown);
    action(kShowBorderField, settings.showBorder);
    action(kValueCoordField, settings.value.where);
    action(kTitleCoordField, settings.title.where);
}

} // namespace

ChartSettings::ChartSettings()
    : titleText("Def. title; d&d a source to the title")
{
    value.font.SetSize(kCaptionSize);
    title.font.SetSize(kCaptionSize);
    for (size_t i = 0; i < chartColors.size(); i++) {
        const auto step = static_cast<uint8>(8 * i);
        const auto grey = static_cast<uint8>(100 + step);
        // Eight bits a channel: the blue of the last three wraps round, so that they stand out.
        chartColors[i] = {grey, grey, static_cast<uint8>(220 + step), 255};
    }
    chartColors[0].alpha = 0;
}

status_t ChartSettings::SaveColors(BMessage* into) const
{
    status_t status = B_OK;
    const auto add = [&](const auto& field, const auto& setting) { status |= field.Add(into, setting); };
    ForEachAntialiasing(*this, add);
    for (const rgb_color color : chartColors)
        add(kChartColorField, color);
    add(kBackgroundColorField, backgroundColor);
    add(kValueColorField, value.color);
    add(kTitleColorField, title.color);
    add(kBorderColorField, borderColor);
    return status;
}

status_t ChartSettings::SaveGeneral(BMessage* into) const
{
    status_t status = B_OK;
    const auto add = [&](const auto& field, const auto& setting) { status |= field.Add(into, setting); };
    ForEachPlain(*this, add);
    add(kPrefsWindowField, prefsWindow);
    add(kLockBgColorField, lockBgColor);
    add(kTitleField, titleText);
    add(kModeField, mode);
    add(kTransparentField, transparent);
    add(kVerticalField, vertical);
    add(kValueFontField, value.font);
    add(kTitleFontField, title.font);
    return status;
}

void ChartSettings::Load(const BMessage& from)
{
    const auto take = [&from](const auto& field, auto& setting) {
        auto found = setting;
        if (!field.Find(from, &found))
            return;
        // A stored 0 counts as missing: the font's flags say that antialiasing is off.
        if constexpr (std::is_same_v<decltype(found), float>) {
            if (found == 0)
                return;
        }
        setting = found;
    };
    ForEachAntialiasing(*this, take);
    ForEachPlain(*this, take);
    prefsWindow = kPrefsWindowField.Get(from);
}

rgb_color ChartSettings::CalcAA(rgb_color text, int16 target, float aaValue) const
{
    rgb_color partner = AverageColor(chartColors[0], backgroundColor);
    if (target == kAATargetChart)
        partner = chartColors[0];
    else if (target == kAATargetBackground)
        partner = backgroundColor;
    return FadeColor(text, partner, aaValue);
}
