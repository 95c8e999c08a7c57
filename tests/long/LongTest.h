// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/Window.h"
#include "src/chart/ChartView.h"
#include "src/chart/ChartViewHolder.h"
#include "src/sampling/Sysinfo.h"

#include <gtest/gtest.h>

#include <memory>

/// What the long runs share: a sampler that reads this machine, and a window of charts that listen to it.
class LongTest : public testing::Test {
public:
    /// True when QEL_LONG is set: the full form.
    static bool IsFull();

protected:
    static constexpr int32 kCharts = 10;

    void SetUp() override;
    void TearDown() override;

    /// Adds a chart with sources and connects it.
    ChartView* AddChart();

    /// Bytes that the program has in use and has not given back, and what of the process is in memory.
    struct Memory {
        int64 used = 0;
        int64 resident = 0;
    };
    static Memory MeasureMemory();
    /// False under a sanitizer, which keeps what was freed.
    static bool MemoryCounts();

    std::unique_ptr<Sysinfo> fSampler;
    BWindow* fWindow = nullptr;
    ChartViewHolder* fHolder = nullptr;
};
