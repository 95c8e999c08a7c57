// SPDX-License-Identifier: MIT
#include "src/app/Defaults.h"

#include "src/app/MainWindow.h"
#include "src/app/QelApp.h"
#include "src/chart/ChartSettings.h"
#include "src/chart/ChartViewHolder.h"
#include "src/sampling/ValueProvider.h"

#include <functional>

namespace {

/// The most processors that a chart shows one by one: it has no more colours.
constexpr int32 kMostSingleProcessors = 8;

/// Changes every message of a field.
void ForEach(BMessage& message, const kits::Field<BMessage>& field, const std::function<void(BMessage&)>& change)
{
    BMessage inner;
    for (int32 index = 0; field.Find(message, &inner, index); ++index) {
        change(inner);
        field.Set(&message, inner, index);
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
    for (; kSourcesField.Find(chart, &source, index); ++index)
        if (ProcessorOf(source) < 0)
            return false;
    return index > 0;
}

void ShowAllProcessorsTogether(BMessage& chart)
{
    kSourcesField.Remove(&chart);
    for (const int32 flags : {0, static_cast<int32>(VP_AVERAGE)}) {
        BMessage source;
        ValueProvider(VP_ALL_CPUS, flags).Archive(&source);
        kSourcesField.Add(&chart, source);
    }
}

void LeaveMissingProcessorsOut(BMessage& chart, int32 cpuCount)
{
    BMessage source;
    for (int32 index = 0; kSourcesField.Find(chart, &source, index);)
        if (ProcessorOf(source) >= cpuCount)
            chart.RemoveData(kSourcesField.Name(), index);
        else
            ++index;
}

} // namespace

void AdaptDefaultsToMachine(BMessage* defaults, int32 cpuCount)
{
    ForEach(
        *defaults, kMainWindowField,
        [=](BMessage& window) {
            ForEach(
                window, kHolderField,
                [=](BMessage& holder) {
                    ForEach(
                        holder, kChartField,
                        [=](BMessage& chart) {
                            if (cpuCount > kMostSingleProcessors && ShowsSingleProcessorsOnly(chart))
                                ShowAllProcessorsTogether(chart);
                            else
                                LeaveMissingProcessorsOut(chart, cpuCount);
                        });
                });
        });
}
