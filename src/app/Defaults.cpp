// SPDX-License-Identifier: MIT
#include "src/app/Defaults.h"

#include "kits/application/Message.h"
#include "src/sampling/ValueProvider.h"

#include <functional>

namespace {

/// The most processors that a chart shows one by one: it has no more colours.
constexpr int32 kMostSingleProcessors = 8;

constexpr const char* kSources = "ValueProviders";

/// Changes every message of a field.
void ForEach(BMessage& message, const char* name, const std::function<void(BMessage&)>& change)
{
    BMessage inner;
    for (int32 index = 0; message.FindMessage(name, index, &inner) == B_OK; ++index) {
        change(inner);
        message.ReplaceMessage(name, index, &inner);
    }
}

/// Returns the processor that a source shows, from 0; -1 if it shows no single one.
int32 ProcessorOf(const BMessage& source)
{
    const vptarget_t target = ValueProvider(&source).Target();
    return IsProcessorTarget(target) ? ::ProcessorOf(target) : -1;
}

bool ShowsSingleProcessorsOnly(const BMessage& chart)
{
    BMessage source;
    int32 index = 0;
    for (; chart.FindMessage(kSources, index, &source) == B_OK; ++index)
        if (ProcessorOf(source) < 0)
            return false;
    return index > 0;
}

void ShowAllProcessorsTogether(BMessage& chart)
{
    chart.RemoveName(kSources);
    for (const int32 flags : {0, static_cast<int32>(VP_AVERAGE)}) {
        BMessage source;
        ValueProvider(VP_ALL_CPUS, flags).Archive(&source);
        chart.AddMessage(kSources, &source);
    }
}

void LeaveMissingProcessorsOut(BMessage& chart, int32 cpuCount)
{
    BMessage source;
    for (int32 index = 0; chart.FindMessage(kSources, index, &source) == B_OK;)
        if (ProcessorOf(source) >= cpuCount)
            chart.RemoveData(kSources, index);
        else
            ++index;
}

} // namespace

void AdaptDefaultsToMachine(BMessage* defaults, int32 cpuCount)
{
    ForEach(
        *defaults, "MainWindow",
        [=](BMessage& window) {
            ForEach(
                window, "ChartViewHolder",
                [=](BMessage& holder) {
                    ForEach(
                        holder, "Chart",
                        [=](BMessage& chart) {
                            if (cpuCount > kMostSingleProcessors && ShowsSingleProcessorsOnly(chart))
                                ShowAllProcessorsTogether(chart);
                            else
                                LeaveMissingProcessorsOut(chart, cpuCount);
                        });
                });
        });
}
