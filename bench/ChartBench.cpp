// SPDX-License-Identifier: MIT
#include "bench/ChartBench.h"

#include "kits/application/Message.h"
#include "kits/interface/InterfaceKit.h"
#include "kits/interface/Shortcuts.h"
#include "src/sampling/SampleRecords.h"
#include "src/support/MessageCodes.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>

namespace {

constexpr int32 kMaximum = 1000;
constexpr int32 kCountValues = 64;

/// Returns a sample as a sampler in another process sends it.
BMessage SampleOf(int32 usedPages)
{
    SysinfoBody sampler{};
    sampler.delay = sampler.sumElapsed = 200000;
    sampler.nodesToKeep = 10;
    sampler.info.cpu_count = 1;
    SysinfoNodeBody node{};
    node.elapsed = 200000;
    node.info.cpu_count = 1;
    node.info.max_pages = kMaximum;
    node.info.used_pages = usedPages;
    BMessage message(MSG_SYSINFO_SAMPLE);
    AddRecord(&message, kSysinfoBodyField, &sampler, sizeof(sampler));
    AddTimes(&message, kSumActiveField, {0});
    AddRecord(&message, kNodeBodyField, &node, sizeof(node));
    AddTimes(&message, kActiveDeltasField, {0});
    return message;
}

} // namespace

ChartBench::ChartBench(int sources, int width, int height)
    : fWindow(new BWindow(BRect(0, 0, static_cast<float>(width - 1), static_cast<float>(height - 1)), "",
                          B_TITLED_WINDOW, 0))
    , fChart(new ChartView)
{
    for (int32 i = 0; i < kCountValues; i++) {
        const BMessage message = SampleOf(i * 37 % kCountValues * kMaximum / kCountValues);
        fNodes.push_back(std::make_unique<SysinfoNode>(&message));
        if (i == 0)
            fSampler = std::make_unique<Sysinfo>(&message);
    }
    for (int i = 0; i < sources; i++) {
        BMessage source;
        ValueProvider(VP_USED_MEMORY, 0).Archive(&source);
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
