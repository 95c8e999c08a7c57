// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/Window.h"
#include "src/chart/ChartView.h"
#include "src/sampling/Sysinfo.h"

#include <memory>
#include <vector>

/// A chart in a window that is shown without a display, and samples for it. Main thread.
class ChartBench {
public:
    /// @param sources  1 to 8
    /// @param width    the chart's width in pixels
    ChartBench(int sources, int width, int height);
    ~ChartBench();

    ChartView& Chart() { return *fChart; }

    /// Draws one sample; the values go up and down.
    void Sample();

private:
    std::unique_ptr<Sysinfo> fSampler;
    std::vector<std::unique_ptr<SysinfoNode>> fNodes;
    BWindow* fWindow;
    ChartView* fChart;
    size_t fNext = 0;
};
