// SPDX-License-Identifier: MIT
#pragma once

#include "kits/support/SupportDefs.h"

#include <string>
#include <vector>

/// One source at one moment, as `--read` prints it.
struct Reading {
    int32 target = 0;
    int32 flags = 0;
    std::string name;
    double fraction = 0; ///< 0 to 1
    std::string caption; ///< the value as a chart shows it
};

/// One line of JSON, with its newline. Text is escaped, bytes that are no UTF-8 become U+FFFD; a fraction that is
/// not a number is null.
/// @param time  of the sample, microseconds since boot
std::string ReadingsAsJson(bigtime_t time, const std::vector<Reading>& readings);

/// A table of three columns, name, share in percent and caption, with a heading and a newline after each row. Only
/// plain sources: averages are the same as those in a single sample.
std::string ReadingsAsTable(const std::vector<Reading>& readings);
