// SPDX-License-Identifier: MIT
#include "src/sampling/SourceTable.h"

#include "src/sampling/Source.h"

std::span<const SourceKey> MachineSources()
{
    static const std::vector<SourceKey> kSources = [] {
        std::vector<SourceKey> sources;
        for (const Source& source : Sources()) {
            for (const int32 flags : {0, +VP_EXP_AVERAGE, +VP_AVERAGE, VP_AVERAGE | VP_EXP_AVERAGE})
                if ((flags & ~source.forms) == 0)
                    sources.push_back({source.target, flags});
        }
        return sources;
    }();
    return kSources;
}

std::span<const ProcessorGroup> ProcessorGroups()
{
    static constexpr ProcessorGroup kGroups[] = {
        {TrLater("CPUs"), false, 0},
        {TrLater("CPU averages"), false, VP_AVERAGE},
        {TrLater("CPU idles"), true, 0},
        {TrLater("CPU average idles"), true, VP_AVERAGE},
    };
    return kGroups;
}

std::vector<SourceKey> ProcessorGroup::Sources(int32 processor) const
{
    const vptarget_t target = 2 * processor + (idle ? VP_FIRST_CPU_IDLE : VP_FIRST_CPU);
    return {{target, flags}, {target, flags | VP_EXP_AVERAGE}};
}

std::vector<SourceKey> AllSources(int32 processorCount)
{
    const std::span<const SourceKey> machine = MachineSources();
    std::vector<SourceKey> sources(machine.begin(), machine.end());
    for (const ProcessorGroup& group : ProcessorGroups()) {
        for (int32 processor = 0; processor < processorCount; ++processor) {
            const std::vector<SourceKey> own = group.Sources(processor);
            sources.insert(sources.end(), own.begin(), own.end());
        }
    }
    return sources;
}
