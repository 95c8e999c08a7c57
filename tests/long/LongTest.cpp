// SPDX-License-Identifier: MIT
#include "tests/long/LongTest.h"

#include "kits/application/Message.h"
#include "tests/support/GuiTest.h"

#include <malloc.h>

#include <cstdio>
#include <cstdlib>

namespace {

constexpr vptarget_t kSources[] = {VP_ALL_CPUS, VP_USED_MEMORY, VP_ALLOCATED_TEAMS, VP_ALLOCATED_THREADS};
constexpr float kWidth = 400;
constexpr float kHeight = 500;

} // namespace

void LongTest::SetUp()
{
    fSampler = std::make_unique<Sysinfo>(10);
    application_sampler = fSampler.get();
    fWindow = new BWindow(BRect(0, 0, kWidth, kHeight), "", B_TITLED_WINDOW, 0);
    BMessage empty;
    fHolder = new ChartViewHolder(&empty);
    fWindow->Lock();
    fWindow->AddChild(fHolder);
    fWindow->Unlock();
    fHolder->ResizeTo(kWidth, kHeight);
    for (int32 i = 0; i < kCharts; i++)
        AddChart();
    test::Show(fWindow);
}

void LongTest::TearDown()
{
    application_sampler = nullptr;
    fSampler.reset();
    if (fWindow != nullptr && fWindow->Lock())
        fWindow->Quit();
    test::Turn();
}

bool LongTest::IsFull()
{
    return std::getenv("QEL_LONG") != nullptr;
}

ChartView* LongTest::AddChart()
{
    auto* const chart = new ChartView;
    const auto count = static_cast<size_t>(fHolder->CountCharts());
    for (size_t i = 0; i <= count % std::size(kSources); i++) {
        BMessage source;
        ValueProvider(kSources[i], 0).Archive(&source);
        chart->AddValueProvider(&source, -1);
    }
    fHolder->AddChartView(chart);
    fHolder->Rerender();
    fSampler->AddMessenger(BMessenger(chart));
    return chart;
}

LongTest::Memory LongTest::MeasureMemory()
{
    malloc_trim(0);
    Memory memory;
    const struct mallinfo2 info = mallinfo2();
    memory.used = static_cast<int64>(info.uordblks + info.hblkhd);
    if (FILE* file = std::fopen("/proc/self/statm", "r")) {
        long pages = 0;
        if (std::fscanf(file, "%*d %ld", &pages) == 1)
            memory.resident = pages * 4096;
        std::fclose(file);
    }
    return memory;
}

bool LongTest::MemoryCounts()
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    return false;
#else
    return true;
#endif
}
