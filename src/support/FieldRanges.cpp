// SPDX-License-Identifier: MIT
#include "src/support/FieldRanges.h"

#include "kits/kernel/Bounds.h"
#include "kits/kernel/SystemInfo.h"
#include "kits/support/Identity.h"
#include "src/chart/ChartHistory.h"
#include "src/chart/ChartViewHolder.h"
#include "src/sampling/SampleRecords.h"
#include "src/sampling/ValueProvider.h"
#include "src/support/FFont.h"

#include <limits>

using kits::Outside;

namespace {

// Coordinates may lie left of and above the view: a caption wider than its chart does.
constexpr double kFarthest = 32767;
constexpr double kColorBytes = 4;
constexpr double kMostNumber = std::numeric_limits<int32>::max();
constexpr double kLongestText = 1 << 20;
constexpr double kTimesBytes = 8.0 * kits::kMaxProcessors;

constexpr kits::FieldRange kRanges[] = {
    // A chart's settings.
    {"ValueAATarget", B_INT16_TYPE, 1, 3},
    {"TitleAATarget", B_INT16_TYPE, 1, 3},
    {"ValueAAValue", B_FLOAT_TYPE, 0, 1},
    {"TitleAAValue", B_FLOAT_TYPE, 0, 1},
    {"ChartColor", B_RAW_TYPE, kColorBytes, kColorBytes}, // up to kMaxSources of them
    {"BackgroundColor", B_RAW_TYPE, kColorBytes, kColorBytes},
    {"ValueColor", B_RAW_TYPE, kColorBytes, kColorBytes},
    {"TitleColor", B_RAW_TYPE, kColorBytes, kColorBytes},
    {"BorderColor", B_RAW_TYPE, kColorBytes, kColorBytes},
    {"SkipValue", B_INT16_TYPE, 0, 50},
    {"ValueSkipValue", B_INT16_TYPE, 0, 50},
    {"ChartType", B_INT16_TYPE, 1, 3},
    {"PageSize", B_FLOAT_TYPE, 0, 1},
    {"ShowValue", B_BOOL_TYPE, 0, 1},
    {"ShowTitle", B_BOOL_TYPE, 0, 1},
    {"ShowBorder", B_BOOL_TYPE, 0, 1},
    {"ValueCoord", B_POINT_TYPE, -kFarthest, kFarthest},
    {"TitleCoord", B_POINT_TYPE, -kFarthest, kFarthest},
    {"PrefsWindowArchive", B_MESSAGE_TYPE, 0, 1},
    {"LockBgColor", B_BOOL_TYPE, 0, 1},
    {"Title", B_STRING_TYPE, 0, 1024, Outside::kHeld},
    {"Mode", B_INT16_TYPE, 1, 2},
    {"Transparent", B_BOOL_TYPE, 0, 1},
    {"Vertical", B_BOOL_TYPE, 0, 1},
    {"ValueFont", FFont::kTypeCode, 4, 200},
    {"TitleFont", FFont::kTypeCode, 4, 200},
    {"ValueVP", B_MESSAGE_TYPE, 0, 1},
    {"ValueProviders", B_MESSAGE_TYPE, 0, kMaxSources},
    // A source.
    {"Target", B_INT32_TYPE, VP_FIRST_CPU_IDLE, VP_ALLOCATED_PORTS},
    {"Flags", B_INT32_TYPE, 0, VP_AVERAGE | VP_EXP_AVERAGE},
    // A holder.
    {"Rect", B_RECT_TYPE, 0, kMaxSide},
    {"Chart", B_MESSAGE_TYPE, 0, kMaxCharts},
    // Commands and drops.
    {"Coord", B_POINT_TYPE, -kFarthest, kFarthest},
    {"Pos", B_FLOAT_TYPE, 0, kFarthest},
    {"ValueProvider", B_MESSAGE_TYPE, 0, kMaxSources},
    {"text/plain", B_MIME_TYPE, 1, kLongestText}, // cut to a title
    {"font", FFont::kTypeCode, 4, 200},
    {"RGBColor", B_RGB_COLOR_TYPE, kColorBytes, kColorBytes},
    // The sampler, stored and by message.
    {"Delay", B_INT64_TYPE, kMinSamplingDelay, kMaxSamplingDelay, Outside::kHeld},
    {"NodesToKeep", B_INT16_TYPE, 1, kMaxHistory, Outside::kHeld}, // but nothing below 1, and none below 2 by message
    {"Messenger", B_MESSENGER_TYPE, 0, 1},
    // A sample of another process.
    {kSysinfoBodyField, B_RAW_TYPE, sizeof(SysinfoBody), kLongestText},
    {kNodeBodyField, B_RAW_TYPE, sizeof(SysinfoNodeBody), kLongestText},
    {kSumActiveField, B_RAW_TYPE, 0, kTimesBytes, Outside::kHeld},
    {kActiveDeltasField, B_RAW_TYPE, 0, kTimesBytes, Outside::kHeld},
    {kMemoryField, B_RAW_TYPE, sizeof(MemoryBody), sizeof(MemoryBody)}, // of another length it spoils the sample
    {kMoreField, B_RAW_TYPE, 0, sizeof(FigureRecord) * kMostFigures, Outside::kHeld},
    // A request to quit behind all that waited.
    {"LastRequest", B_BOOL_TYPE, 0, 1},
    // Windows.
    {"WindowFrame", B_RECT_TYPE, kMinWindowSide, kMaxWindowSide, Outside::kHeld},
    {"WindowFrameWithCharts", B_RECT_TYPE, kMinWindowSide, kMaxWindowSide, Outside::kHeld},
    {"Selection", B_INT32_TYPE, 0, 1},
    {"sw:flags", B_INT32_TYPE, -kMostNumber - 1, kMostNumber},
    {"ChartViewHolder", B_MESSAGE_TYPE, 0, 1},
    // The stores.
    {"Version", B_STRING_TYPE, 0, kLongestText},
    {"MainWindow", B_MESSAGE_TYPE, 0, 1},
    {"GlobalPrefsWindow", B_MESSAGE_TYPE, 0, 1},
    {"Sysinfo", B_MESSAGE_TYPE, 0, 1},
    {"CWOpen", B_BOOL_TYPE, 0, 1},
    {"Uptimes", B_RAW_TYPE, 0, 160, Outside::kHeld},
    {"BootCount", B_INT32_TYPE, 0, kMostNumber},
    {"UptimeSum", B_INT64_TYPE, 0, kLongestUptime, Outside::kHeld},
    {"USLastBoot", B_INT64_TYPE, 0, kLongestUptime, Outside::kHeld},
    {"USLastUptime", B_INT64_TYPE, 0, kLongestUptime, Outside::kHeld},
    // Charts on the desktop.
    {"Replicant", B_MESSAGE_TYPE, 0, kits::bounds::kMostReplicants},
    {"Archive", B_MESSAGE_TYPE, 0, 1},
    {"Place", B_MESSAGE_TYPE, 0, 8},
    {"Screens", B_STRING_TYPE, 0, 1024},
    {"Request", B_STRING_TYPE, 1, kits::Identities::kLongest},
    {"Identity", B_STRING_TYPE, 1, kits::Identities::kLongest},
    {"Taken", B_STRING_TYPE, 1, kits::Identities::kLongest},
    {"Refused", B_BOOL_TYPE, 0, 1},
    {"Frame", B_RECT_TYPE, 0, kits::kFarthestPlace},
    {"Where", B_POINT_TYPE, -kits::kFarthestPlace, kits::kFarthestPlace},
    {"By", B_POINT_TYPE, -kits::kFarthestPlace, kits::kFarthestPlace},
    {"Back", B_BOOL_TYPE, 0, 1},
    // Among the objects of one program.
    {"Type", B_INT32_TYPE, 1, 3}, // or 0 for the one that it has
    {"Window", B_POINTER_TYPE, 0, 1},
    {"Name", B_STRING_TYPE, 0, kLongestText},
    {"Container", B_POINTER_TYPE, 0, 1},
    {"CView", B_POINTER_TYPE, 0, 1},
    {"Msg", B_MESSAGE_TYPE, 0, 1},
    {"Sysinfo*", B_POINTER_TYPE, 0, 1},
};

} // namespace

constinit const kits::FieldRanges kFields(kRanges);
