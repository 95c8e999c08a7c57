// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Types.h"

#include <string>
#include <vector>

class ChartHistory;

/// What leaves a chart as a file. Texts and numbers look the same in every language, for programs to read.

/// A moment as ISO 8601 in UTC with milliseconds: "2026-05-01T12:00:00.250Z". Moments before 1970 and after the year
/// 9999 are held to these.
/// @param time  microseconds since 1970
std::string IsoTime(bigtime_t time);

/// A table with a line for each column of a chart, oldest first: the moment, then the share of each source from 0 to 1,
/// with six digits; an empty field where the chart had no such source yet. The first line has the names, "time" and
/// the sources'. Fields are quoted where they must be; lines end with a line feed.
/// @param names   of the sources, in their order
/// @param toWall  what makes real time of system time, microseconds
std::string ValuesAsCsv(const ChartHistory& history, const std::vector<std::string>& names, bigtime_t toWall);

/// A name for a file that is recognised as the title: without what file systems, also others' than Linux's, don't take,
/// not hidden and not too long. "Chart" when nothing is left of it.
/// @param suffix  without the point
std::string FileNameOf(const std::string& title, const char* suffix);
