// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Field.h"
#include "kits/application/Message.h"
#include "kits/support/Color.h"
#include "kits/support/Point.h"
#include "src/chart/ChartHistory.h"
#include "src/support/Changes.h"
#include "src/support/FFont.h"
#include "src/support/MessageFields.h"

#include <array>
#include <string>

/// How a chart shows its sources.
enum : int16 { kChartMode = 1, kGaugeMode = 2 };

/// How a column of a chart looks.
enum : int16 { kSolidChart = 1, kLineChart = 2, kPointChart = 3 };

/// The colour towards which a caption's antialiasing fades: the first chart colour, the background, or their average.
enum : int16 { kAATargetChart = 1, kAATargetBackground = 2, kAATargetAverage = 3 };

/// In bytes. Longer titles are cut at a character.
inline constexpr int32 kMaxTitleLength = 1024;
/// The smallest width and height, in pixels, to which the user can resize a chart on the desktop.
inline constexpr float kSmallestReplicant = 20;
/// The smallest and largest font sizes of captions, in logical pixels.
inline constexpr float kMinFontSize = 4;
inline constexpr float kMaxFontSize = 200;

/// The settings of a chart as fields of a message. A setting has the same name in the settings file, in a drag, and in
/// the snapshot from which a page of the preferences reverts.
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

/// Of a drag of a font.
inline const kits::Field<FFont, FFont::kTypeCode> kDraggedFontField("font", kMinFontSize, kMaxFontSize);

/// Sets the member if the field's range holds the value; ignores any other value.
template <class T> void SetInRange(const kits::Field<T>& field, T value, T* setting)
{
    if (!field.Holds(value))
        return;
    *setting = value;
    Changes::Note();
}

/// Look and place of one caption of a chart; the value and the title have one each.
struct CaptionSettings {
    FFont font;   ///< initially the system's plain font in size 15
    BPoint where; ///< the origin of the base line, in the chart's coordinates
    rgb_color color{216, 216, 216, 0};
    float aaValue = 0.25f; ///< strength of the antialiasing, 0.0 (none) to 1.0
    int16 aaTarget = kAATargetAverage;
    bool shown = true;
};

/// Everything that a user can set of a chart except its sources. A plain value, not shared between threads; a caller
/// that changes it draws what then looks different.
struct ChartSettings {
    ChartSettings();

    CaptionSettings value;
    CaptionSettings title;
    std::string titleText;

    std::array<rgb_color, kMaxSources> chartColors{};
    rgb_color backgroundColor{};
    rgb_color borderColor{255, 255, 255, 0};

    /// State of the preferences window, which reopens at the same place. Updated when the settings are saved.
    mutable BMessage prefsWindow;
    float pageSize = 0.75f; ///< the part of the width that stays when the chart is full; above 0.99 it scrolls
    int16 mode = kChartMode;
    int16 chartType = kSolidChart;
    int16 skip = 0;      ///< number of samples left out between two that are drawn
    int16 valueSkip = 0; ///< number of refreshes for which the value caption stays
    bool showBorder = false;
    bool lockBgColor = false; ///< the background follows the desktop's colour
    bool transparent = false;
    bool vertical = false; ///< the gauge runs from bottom to top, not from left to right

    /// Returns the colour to which a caption's text fades: 1.0 for `aaValue` gives the text's own colour, 0.0 the
    /// target's.
    rgb_color CalcAA(rgb_color text, int16 target, float aaValue) const;

    /// Adds the fields of a group.
    /// @return the statuses of all fields, or-ed
    status_t SaveColors(BMessage* into) const;
    status_t SaveGeneral(BMessage* into) const;

    /// Takes the settings that cause no drawing at once. A setting that is missing or out of its range keeps its value,
    /// except that a missing preferences window is forgotten.
    void Load(const BMessage& from);
};
