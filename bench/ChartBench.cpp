// SPDX-License-Identifier: MIT
#include "bench/ChartBench.h"

#include "kits/application/Message.h"
#include "kits/interface/InterfaceKit.h"
#include "kits/interface/Shortcuts.h"
#include "tests/support/Samples.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>

namespace {

constexpr int32 kWhole = 1000; // of the memory
constexpr int32 kCountValues = 64;

} // namespace

ChartBench::ChartBench(int sources, int width, int height)
    : fWindow(new BWindow(BRect(0, 0, static_cast<float>(width - 1), static_cast<float>(height - 1)), "",
                          B_TITLED_WINDOW, 0))
    , fChart(new ChartView)
{
    for (int32 i = 0; i < kCountValues; i++) {
        const BMessage message = SampleMessage({.memory = i * 37 % kCountValues * kWhole / kCountValues});
        fNodes.push_back(std::make_unique<SysinfoNode>(&message));
        if (i == 0)
            fSampler = std::make_unique<Sysinfo>(&message);
    }
    for (int i = 0; i < sources; i++) {
        BMessage source = SourceArchive(VP_USED_MEMORY);
        fChart->AddValueProvider(&source, -1);
    }
    fChart->ResizeTo(static_cast<float>(width - 1), static_cast<float>(height - 1));
    fWindow->Lock();
    fWindow->AddChild(fChart);
    fWindow->Unlock();
    fWindow->Show();
}

ChartBench::~ChartBench()
{
    fWindow->Lock();
    fWindow->Quit();
}

void ChartBench::Sample()
{
    fChart->RefreshChart(fSampler.get(), fNodes[fNext].get());
    fNext = (fNext + 1) % fNodes.size();
}

int main(int argc, char** argv)
{
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    int count = 1;
    if (kits::InitInterface(count, argv) != B_OK) {
        std::fprintf(stderr, "%s\n", kits::InterfaceError());
        return 1;
    }
    kits::UseShortcuts();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    kits::ExitInterface();
    return 0;
}
