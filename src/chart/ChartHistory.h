// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Types.h"

#include <array>
#include <vector>

/// A chart draws as many sources as it has colours.
inline constexpr int32 kMaxSources = 8;

/// The figures behind a chart's picture: for each of its newest columns the time and the share of every source, as
/// drawn. A column that the picture loses is lost here, too. Adding a column touches one row of memory and nothing
/// else.
///
/// Belongs to its chart, whose lock guards it.
class ChartHistory {
public:
    struct Row {
        bigtime_t time = 0;                      ///< system_time() of the sample, microseconds
        std::array<float, kMaxSources> shares{}; ///< not a number where the source did not exist yet
    };

    /// Sets how many columns are kept at most; the newest stay. Allocates.
    void SetCapacity(int32 columns);

    /// Adds a column, and replaces the oldest one when there is no more room.
    /// @param shares  of the sources in their order, as drawn
    /// @param count   of the sources, at most kMaxSources
    void Add(bigtime_t time, const std::array<double, kMaxSources>& shares, int32 count);

    /// Forgets all but the newest columns; all of them with 0.
    void KeepNewest(int32 columns);

    /// Moves the sources from this one on up by one, up to index 7. The new source has no figures yet.
    void InsertSource(int32 index);
    /// Moves the sources behind this one down by one.
    void RemoveSource(int32 index);

    int32 CountRows() const { return fCount; }
    /// @param index  0 is the oldest
    const Row& RowAt(int32 index) const;

private:
    Row& At(int32 index);

    std::vector<Row> fRows;
    int32 fFirst = 0;
    int32 fCount = 0;
};
