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

/// Returns one line of JSON, with its newline. Escapes text; invalid UTF-8 becomes U+FFFD, and a fraction that is NaN
/// becomes null.
/// @param time  of the sample, microseconds since boot
std::string ReadingsAsJson(bigtime_t time, const std::vector<Reading>& readings);

/// Returns a table of three columns, name, share in percent and caption, with a heading and a newline after each row.
/// Only plain sources: in a single sample, averages equal those.
std::string ReadingsAsTable(const std::vector<Reading>& readings);
