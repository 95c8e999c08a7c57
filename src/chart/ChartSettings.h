// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Field.h"
#include "kits/application/Message.h"
#include "kits/support/Color.h"
#include "kits/support/Point.h"
#include "src/chart/ChartHistory.h"
#include "src/support/FFont.h"
#include "src/support/MessageFields.h"

#include <array>
#include <string>

/// What a chart shows its sources as.
enum : int16 { kChartMode = 1, kGaugeMode = 2 };

/// How a column of a chart looks.
enum : int16 { kSolidChart = 1, kLineChart = 2, kPointChart = 3 };

/// What a caption's antialiasing goes towards: the first chart colour, the background, their average.
enum : int16 { kAATargetChart = 1, kAATargetBackground = 2, kAATargetAverage = 3 };

/// Longer titles are cut, at a character. Bytes.
inline constexpr int32 kMaxTitleLength = 1024;
/// Captions have no larger or smaller fonts than these. Logical pixels.
inline constexpr float kMinFontSize = 4;
inline constexpr float kMaxFontSize = 200;

/// The settings of a chart as fields of a message. Each stands there under the same name whether it is stored, dragged,
/// or kept by a page of the preferences to be put back.
/// @{
inline const kits::Field<int16> kValueAATargetField("ValueAATarget", kAATargetChart, kAATargetAverage);
inline const kits::Field<int16> kTitleAATargetField("TitleAATarget", kAATargetChart, kAATargetAverage);
inline const kits::Field<float> kValueAAValueField("ValueAAValue", 0, 1);
inline const kits::Field<float> kTitleAAValueField("TitleAAValue", 0, 1);
inline const kits::Field<rgb_color> kChartColorField("ChartColor", kMaxSources);
inline const kits::Field<rgb_color> kBackgroundColorField("BackgroundColor");
inline const kits::Field<rgb_color> kValueColorField("ValueColor");
inline const kits::Field<rgb_color> kTitleColorField("TitleColor");
inline const kits::Field<rgb_color> kBorderColorField("BorderColor");
inline const kits::Field<int16> kSkipValueField("SkipValue", 0, 50);
inline const kits::Field<int16> kValueSkipValueField("ValueSkipValue", 0, 50);
inline const kits::Field<int16> kChartTypeField("ChartType", kSolidChart, kPointChart);
inline const kits::Field<float> kPageSizeField("PageSize", 0, 1);
inline const kits::Field<bool> kShowValueField("ShowValue");
inline const kits::Field<bool> kShowTitleField("ShowTitle");
inline const kits::Field<bool> kShowBorderField("ShowBorder");
inline const kits::Field<BPoint> kValueCoordField("ValueCoord", -kFarthestInChart, kFarthestInChart);
inline const kits::Field<BPoint> kTitleCoordField("TitleCoord", -kFarthestInChart, kFarthestInChart);
inline const kits::Field<BMessage> kPrefsWindowField("PrefsWindowArchive");
inline const kits::Field<bool> kLockBgColorField("LockBgColor");
inline const kits::Field<std::string> kTitleField("Title", 0, kMaxTitleLength, kits::Outside::kHeld);
inline const kits::Field<int16> kModeField("Mode", kChartMode, kGaugeMode);
inline const kits::Field<bool> kTransparentField("Transparent");
inline const kits::Field<bool> kVerticalField("Vertical");
inline const kits::Field<FFont, FFont::kTypeCode> kValueFontField("ValueFont", kMinFontSize, kMaxFontSize);
inline const kits::Field<FFont, FFont::kTypeCode> kTitleFontField("TitleFont", kMinFontSize, kMaxFontSize);
inline const kits::Field<BMessage> kValueSourceField("ValueVP");
inline const kits::Field<BMessage> kSourcesField("ValueProviders", kMaxSources);
/// @}

/// Sets what the field's range holds; anything else is ignored.
template <class T> void SetInRange(const kits::Field<T>& field, T value, T* setting)
{
    if (field.Holds(value))
        *setting = value;
}

/// How one caption of a chart looks and where it is: the value and the title have one each.
struct CaptionSettings {
    FFont font;   ///< at first the plain one of the system, in size 15
    BPoint where; ///< the origin of the base line, in the chart's coordinates
    rgb_color color{216, 216, 216, 0};
    float aaValue = 0.25f; ///< how strong the antialiasing is, 0.0 (none) to 1.0
    int16 aaTarget = kAATargetAverage;
    bool shown = true;
};

/// All that a user can set of a chart, but for its sources. A plain value, not shared between threads; whoever changes
/// it draws what looks different then.
struct ChartSettings {
    ChartSettings();

    CaptionSettings value;
    CaptionSettings title;
    std::string titleText;

    std::array<rgb_color, kMaxSources> chartColors{};
    rgb_color backgroundColor{};
    rgb_color borderColor{255, 255, 255, 0};

    /// Of the preferences window, to open it where it was. Brought up to date when it is saved.
    mutable BMessage prefsWindow;
    float pageSize = 0.75f; ///< the part of the width that stays when the chart is full; above 0.99 it scrolls
    int16 mode = kChartMode;
    int16 chartType = kSolidChart;
    int16 skip = 0;      ///< how many samples are left out between two that are drawn
    int16 valueSkip = 0; ///< how many refreshes keep the value caption
    bool showBorder = false;
    bool lockBgColor = false; ///< the background follows the desktop's colour
    bool transparent = false;
    bool vertical = false; ///< the gauge runs from bottom to top, not from left to right

    /// What a caption's text fades to: `aaValue` 1.0 gives the text's own colour, 0.0 the target's.
    rgb_color CalcAA(rgb_color text, int16 target, float aaValue) const;

    /// Adds the fields of a group.
    /// @return the statuses of all fields, or-ed
    status_t SaveColors(BMessage* into) const;
    status_t SaveGeneral(BMessage* into) const;

    /// Takes what needs no drawing at once. What is missing, or out of its range, stays as it is; but without a
    /// preferences window in it, that is forgotten.
    void Load(const BMessage& from);
};
