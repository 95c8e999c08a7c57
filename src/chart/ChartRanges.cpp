#include "src/chart/ChartRanges.h"

#include "kits/application/Message.h"
#include "kits/support/TypeConstants.h"
#include "src/chart/ChartView.h"
#include "src/chart/ChartViewHolder.h"

#include <cmath>
#include <cstring>

namespace {

// Coordinates may lie left of and above the view: a caption wider than its chart does.
constexpr double kFarthest = 32767;
constexpr double kAnyByte = 255;

constexpr FieldRange kRanges[] = {
    // A chart's settings.
    {"ValueAATarget", kAATargetChart, kAATargetAverage},
    {"TitleAATarget", kAATargetChart, kAATargetAverage},
    {"ValueAAValue", 0, 1},
    {"TitleAAValue", 0, 1},
    {"ChartColor", 0, kMaxSources},
    {"BackgroundColor", 0, kAnyByte},
    {"ValueColor", 0, kAnyByte},
    {"TitleColor", 0, kAnyByte},
    {"BorderColor", 0, kAnyByte},
    {"SkipValue", 0, 50},
    {"ValueSkipValue", 0, 50},
    {"ChartType", kSolidChart, kPointChart},
    {"PageSize", 0, 1},
    {"ShowValue", 0, 1},
    {"ShowTitle", 0, 1},
    {"ShowBorder", 0, 1},
    {"ValueCoord", -kFarthest, kFarthest},
    {"TitleCoord", -kFarthest, kFarthest},
    {"PrefsWindowArchive", 0, 1},
    {"LockBgColor", 0, 1},
    {"Title", 0, kMaxTitleLength},
    {"Mode", kChartMode, kGaugeMode},
    {"Transparent", 0, 1},
    {"Vertical", 0, 1},
    {"ValueFont", kMinFontSize, kMaxFontSize},
    {"TitleFont", kMinFontSize, kMaxFontSize},
    {"ValueVP", 0, 1},
    {"ValueProviders", 0, kMaxSources},
    // A source.
    {"Target", VP_FIRST_CPU_IDLE, VP_ALLOCATED_PORTS},
    {"Flags", 0, VP_AVERAGE | VP_EXP_AVERAGE},
    // A holder.
    {"Rect", 0, kMaxSide},
    {"Chart", 0, kMaxCharts},
    // Commands and drops.
    {"Coord", -kFarthest, kFarthest},
    {"Pos", 0, kFarthest},
    {"ValueProvider", 0, kMaxSources},
    {"text/plain", 0, kMaxTitleLength},
    {"font", kMinFontSize, kMaxFontSize},
    {nullptr, 0, 0}};

template <typename T> bool Take(status_t found, const char* key, T candidate, T* value)
{
    if (found != B_OK || !InRange(key, candidate))
        return false;
    *value = candidate;
    return true;
}

} // namespace

const FieldRange* AllRanges()
{
    return kRanges;
}

const FieldRange* RangeOf(const char* key)
{
    for (const FieldRange* range = kRanges; range->key != nullptr; range++) {
        if (std::strcmp(range->key, key) == 0)
            return range;
    }
    return nullptr;
}

bool InRange(const char* key, double value)
{
    const FieldRange* range = RangeOf(key);
    return range != nullptr && value >= range->low && value <= range->high;
}

bool FindInRange(const BMessage& from, const char* key, int16* value)
{
    int16 found = 0;
    const status_t status = from.FindInt16(key, &found);
    return Take(status, key, found, value);
}

bool FindInRange(const BMessage& from, const char* key, int32* value)
{
    int32 found = 0;
    const status_t status = from.FindInt32(key, &found);
    return Take(status, key, found, value);
}

bool FindInRange(const BMessage& from, const char* key, float* value)
{
    float found = 0;
    const status_t status = from.FindFloat(key, &found);
    return Take(status, key, found, value);
}

bool FindInRange(const BMessage& from, const char* key, BPoint* value)
{
    BPoint found;
    if (from.FindPoint(key, &found) != B_OK || !InRange(key, found.x) || !InRange(key, found.y))
        return false;
    *value = found;
    return true;
}

bool FindInRange(const BMessage& from, const char* key, BRect* value)
{
    BRect found;
    if (from.FindRect(key, &found) != B_OK || !InRange(key, found.right - found.left) ||
        !InRange(key, found.bottom - found.top))
        return false;
    *value = found;
    return true;
}

bool FindColor(const BMessage& from, const char* key, int32 index, rgb_color* value)
{
    const void* bytes = nullptr;
    ssize_t size = 0;
    if (from.FindData(key, B_RAW_TYPE, index, &bytes, &size) != B_OK || size != 4)
        return false;
    const auto* channels = static_cast<const uint8*>(bytes);
    *value = rgb_color{channels[0], channels[1], channels[2], channels[3]};
    return true;
}

bool IsSourceArchive(const BMessage& archive, bool none)
{
    int32 target = VP_FIRST_CPU;
    int32 flags = 0;
    archive.FindInt32("Target", &target);
    archive.FindInt32("Flags", &flags);
    return (InRange("Target", target) || (none && target == VP_NONE)) && InRange("Flags", flags);
}
