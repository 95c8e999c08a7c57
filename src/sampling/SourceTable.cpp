// SPDX-License-Identifier: MIT
#include "src/sampling/SourceTable.h"

#include "src/support/Tr.h"

std::span<const SourceKey> MachineSources()
{
    static constexpr int32 kBoth = VP_AVERAGE | VP_EXP_AVERAGE;
    static constexpr SourceKey kSources[] = {
        {VP_ALL_CPUS, 0},
        {VP_ALL_CPUS, VP_EXP_AVERAGE},
        {VP_ALL_CPUS, VP_AVERAGE},
        {VP_ALL_CPUS, kBoth},
        {VP_ALL_CPUS_IDLE, 0},
        {VP_ALL_CPUS_IDLE, VP_EXP_AVERAGE},
        {VP_ALL_CPUS_IDLE, VP_AVERAGE},
        {VP_ALL_CPUS_IDLE, kBoth},
        {VP_FREE_MEMORY, 0},
        {VP_FREE_MEMORY, VP_EXP_AVERAGE},
        {VP_USED_MEMORY, 0},
        {VP_USED_MEMORY, VP_EXP_AVERAGE},
        {VP_AVAILABLE_TEAMS, 0},
        {VP_ALLOCATED_TEAMS, 0},
        {VP_AVAILABLE_THREADS, 0},
        {VP_ALLOCATED_THREADS, 0},
        {VP_AVAILABLE_SEMS, 0},
        {VP_ALLOCATED_SEMS, 0},
        {VP_AVAILABLE_PORTS, 0},
        {VP_ALLOCATED_PORTS, 0},
    };
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
