// SPDX-License-Identifier: MIT
#include "kits/application/FieldRanges.h"

#include <limits>

namespace kits {

namespace {

constexpr double kMostNumber = std::numeric_limits<int32>::max();
constexpr double kLongestTime = 1e18;
/// Of a view or a window; an empty view is one pixel less than none.
constexpr double kLargestSide = 32766;
constexpr double kLongestName = 1024;
constexpr double kLongestText = 1 << 20;

constexpr FieldRange kRows[] = {
    // What every object archives, and who can make one of it.
    {"class", B_STRING_TYPE, 0, kLongestName},
    {"add_on", B_STRING_TYPE, 0, kLongestName},
    // Views and windows.
    {"_frame", B_RECT_TYPE, -1, kLargestSide},
    {"_name", B_STRING_TYPE, 0, kLongestName},
    {"_flags", B_INT32_TYPE, -kMostNumber - 1, kMostNumber},
    {"_resize_mode", B_INT32_TYPE, 0, 0x77},
    {"_color", B_INT32_TYPE, -kMostNumber - 1, kMostNumber}, // three
    {"_views", B_MESSAGE_TYPE, 0, kMostNumber},              // nothing reads them
    {"_title", B_STRING_TYPE, 0, kLongestName},
    {"_type", B_INT32_TYPE, 0, 5},
    {"_wlook", B_INT32_TYPE, 0, 5},
    {"_wfeel", B_INT32_TYPE, 0, 2}, // none becomes a part of the desktop
    {"_wspace", B_INT32_TYPE, -kMostNumber - 1, kMostNumber},
    {"_zoom", B_STRING_TYPE, 0, kLongestName},
    {"_pulse", B_INT64_TYPE, 0, 3'600'000'000},   // and nothing between 0 and 20 ms
    {"_limits", B_FLOAT_TYPE, 0, kFarthestPlace}, // four
    // What the pointer and the keyboard do.
    {"where", B_POINT_TYPE, -kFarthestPlace, kFarthestPlace},
    {"offset", B_POINT_TYPE, -kFarthestPlace, kFarthestPlace},
    {"buttons", B_INT32_TYPE, 0, kMostNumber},
    {"modifiers", B_INT32_TYPE, 0, kMostNumber},
    {"clicks", B_INT32_TYPE, 1, kMostNumber},
    {"transit", B_INT32_TYPE, 0, 3},
    {"when", B_INT64_TYPE, 0, kLongestTime},
    {"drag", B_POINTER_TYPE, 0, 1},
    {"bytes", B_STRING_TYPE, 1, kLongestText},
    {"key", B_INT32_TYPE, -kMostNumber - 1, kMostNumber},
    // What controls, lists, alerts and windows tell.
    {"source", B_POINTER_TYPE, 0, 1},
    {"index", B_INT32_TYPE, -1, kMostNumber},
    {"which", B_INT32_TYPE, 0, 2},
    {"minimize", B_BOOL_TYPE, 0, 1},
    {"active", B_BOOL_TYPE, 0, 1},
    {"shortcut", B_BOOL_TYPE, 0, 1},
    // Between programs.
    {"argv", B_STRING_TYPE, 0, kLongestText},
    {"team", B_INT32_TYPE, 0, kMostNumber},
    {"signature", B_STRING_TYPE, 0, kLongestName},
    {"only_asks", B_BOOL_TYPE, 0, 1},
    {"is_ready", B_BOOL_TYPE, 0, 1},
};

} // namespace

constinit const FieldRanges kKitFields(kRows);

} // namespace kits
