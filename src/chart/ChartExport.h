// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Types.h"

#include <string>
#include <vector>

class ChartHistory;

/// A chart's data as files. Programs read them, so texts and numbers look the same in every language.

/// Returns a moment as ISO 8601 in UTC with milliseconds: "2026-05-01T12:00:00.250Z". Moments before 1970 and after the
/// year 9999 are clamped.
/// @param time  microseconds since 1970
std::string IsoTime(bigtime_t time);

/// Returns a table with a line for each column of a chart, oldest first: the moment, then the share of each source from
/// 0 to 1 with six digits. A field is empty where the chart did not have the source yet. The first line holds the
/// names: "time" and those of the sources. Fields are quoted where necessary; lines end with a line feed.
/// @param names   of the sources, in their order
/// @param toWall  what to add to system time to get real time, in microseconds
std::string ValuesAsCsv(const ChartHistory& history, const std::vector<std::string>& names, bigtime_t toWall);

/// Returns a file name that resembles the title: without characters that file systems reject, also those of other
/// systems, not hidden and not too long; "Chart" when nothing of the title is left.
/// @param suffix  the extension, without the point
std::string FileNameOf(const std::string& title, const char* suffix);
