// SPDX-License-Identifier: MIT
#include "src/chart/ChartHistory.h"

#include <algorithm>
#include <limits>

namespace {

constexpr float kNone = std::numeric_limits<float>::quiet_NaN();

} // namespace

const ChartHistory::Row& ChartHistory::RowAt(int32 index) const
{
    return fRows[static_cast<size_t>(fFirst + index) % fRows.size()];
}

ChartHistory::Row& ChartHistory::At(int32 index)
{
    return fRows[static_cast<size_t>(fFirst + index) % fRows.size()];
}

void ChartHistory::SetCapacity(int32 columns)
{
    columns = std::max(columns, 0);
    if (fRows.size() == static_cast<size_t>(columns))
        return;
    KeepNewest(columns);
    std::vector<Row> rows(static_cast<size_t>(columns));
    for (int32 i = 0; i < fCount; i++)
        rows[static_cast<size_t>(i)] = RowAt(i);
    fRows.swap(rows);
    fFirst = 0;
}

void ChartHistory::Add(bigtime_t time, const std::array<double, kMaxSources>& shares, int32 count)
{
    const auto capacity = static_cast<int32>(fRows.size());
    if (capacity == 0)
        return;
    if (fCount == capacity)
        fFirst = (fFirst + 1) % capacity;
    else
        fCount++;
    Row& row = At(fCount - 1);
    row.time = time;
    for (int32 i = 0; i < kMaxSources; i++) {
        const auto slot = static_cast<size_t>(i);
        row.shares[slot] = i < count ? static_cast<float>(shares[slot]) : kNone;
    }
}

void ChartHistory::KeepNewest(int32 columns)
{
    const int32 lost = fCount - std::clamp(columns, 0, fCount);
    if (lost == 0)
        return;
    fFirst = (fFirst + lost) % static_cast<int32>(fRows.size());
    fCount -= lost;
}

void ChartHistory::InsertSource(int32 index)
{
    for (int32 i = 0; i < fCount; i++) {
        auto& shares = At(i).shares;
        std::move_backward(shares.begin() + index, shares.end() - 1, shares.end());
        shares[static_cast<size_t>(index)] = kNone;
    }
}

void ChartHistory::RemoveSource(int32 index)
{
    for (int32 i = 0; i < fCount; i++) {
        auto& shares = At(i).shares;
        std::move(shares.begin() + index + 1, shares.end(), shares.begin() + index);
        shares.back() = kNone;
    }
}
