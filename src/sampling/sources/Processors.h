// SPDX-License-Identifier: MIT
#pragma once

#include "src/sampling/Source.h"
#include "src/sampling/Sysinfo.h"

/// The load and the idle time of all processors together, and of each.

inline double ShareOfAll(const Sysinfo& sampler, const SysinfoNode& sample, vptarget_t target, bool average)
{
    const bigtime_t elapsed = average ? sampler.SumElapsed() : sample.Elapsed();
    const bigtime_t active = average ? sampler.SumTotalActive() : sample.TotalActive();
    const int32 count = average ? sampler.Info().cpu_count : sample.Info().cpu_count;
    if (count <= 0)
        return 0;
    if (target == VP_ALL_CPUS)
        return static_cast<double>(active) / count / static_cast<double>(elapsed);
    // Single precision and a whole number of microseconds: what charts of this source have always shown.
    const double rounded = static_cast<float>(elapsed);
    return (rounded - static_cast<double>(active / count)) / rounded;
}

inline double ShareOfOne(const Sysinfo& sampler, const SysinfoNode& sample, vptarget_t target, bool average)
{
    const bigtime_t elapsed = average ? sampler.SumElapsed() : sample.Elapsed();
    const int32 processor = ProcessorOf(target);
    const bigtime_t active = average ? sampler.SumActive(processor) : sample.ActiveDelta(processor);
    const bigtime_t share = target % 2 == VP_FIRST_CPU_IDLE ? elapsed - active : active;
    return static_cast<double>(share) / static_cast<double>(elapsed);
}

constexpr Source Share(vptarget_t target, const char* name, const char* averageName, decltype(Source::share) share)
{
    return {target, name, nullptr, nullptr, VP_AVERAGE | VP_EXP_AVERAGE, averageName, share};
}

inline constexpr Source kAllProcessors[] = {
    Share(VP_ALL_CPUS, TrLater("All CPUs"), TrLater("All CPUs average"), ShareOfAll),
    Share(VP_ALL_CPUS_IDLE, TrLater("All CPUs idle"), TrLater("All CPUs average idle"), ShareOfAll),
};
template <> inline constexpr std::span<const Source> kFamily<0> = kAllProcessors;

/// For each processor; offered in groups of their own (see ProcessorGroups).
inline constexpr Source kProcessor = Share(VP_FIRST_CPU, TrLater("CPU %1"), TrLater("CPU %1 average"), ShareOfOne);
inline constexpr Source kIdleProcessor =
    Share(VP_FIRST_CPU_IDLE, TrLater("CPU %1 idle"), TrLater("CPU %1 average idle"), ShareOfOne);
