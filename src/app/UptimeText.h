// SPDX-License-Identifier: MIT
#pragma once

#include "src/app/Uptimes.h"

#include <string>

/// Writes a duration, for example "one month 2 days 01:02:03", and a terminating zero. Years are twelve months of four
/// weeks each, so that no calendar is needed. This form allocates nothing; the program itself uses strings.
/// @param out  has room for at least 96 characters
/// @return the end of the text, where the zero is
char* PrintTimeInterval(char* out, int32 seconds);

/// All figures in the text of the uptimes.
struct UptimeFigures {
    int64 wallClock = 0;  ///< seconds since the epoch
    bigtime_t uptime = 0; ///< time since boot, microseconds
    bigtime_t total = 0;  ///< of all boots, microseconds
    int32 boots = 0;      ///< 0 counts as 1
    UptimeTable table;
};

/// Returns the text: figures in two columns, aligned by tabs and by padding to fixed places, then the ten best. Dates
/// are in the local time zone.
std::string UptimeText(const UptimeFigures& figures);
