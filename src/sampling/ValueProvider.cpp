// SPDX-License-Identifier: MIT
#include "src/sampling/ValueProvider.h"

#include "kits/application/Message.h"
#include "src/sampling/Sysinfo.h"
#include "src/sampling/SysinfoNode.h"
#include "src/support/Tr.h"

#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstring>

namespace {

bool IsProcessorTarget(vptarget_t target)
{
    return target >= VP_FIRST_CPU_IDLE && target <= VP_LAST_CPU_TARGET;
}

int32 ProcessorOf(vptarget_t target)
{
    return (target - 1) / 2;
}

/// One counted quantity of the machine with the two targets that show it.
struct CountedTarget {
    vptarget_t available;
    vptarget_t used;
    const char* availableName;
    const char* usedName;
    const char* unit;
    int64 (*maximum)(const SysinfoNode& sample);
    int64 (*inUse)(const SysinfoNode& sample);

    int64 Count(vptarget_t target, const SysinfoNode& sample) const
    {
        return target == used ? inUse(sample) : maximum(sample) - inUse(sample);
    }
};

constexpr CountedTarget kCountedTargets[] = {
    {VP_FREE_MEMORY, VP_USED_MEMORY, TrLater("Free memory"), TrLater("Used memory"), nullptr,
     [](const SysinfoNode& sample) { return sample.MaxPages(); },
     [](const SysinfoNode& sample) { return sample.UsedPages(); }},
    {VP_AVAILABLE_SEMS, VP_ALLOCATED_SEMS, TrLater("Available semaphores"), TrLater("Allocated semaphores"), "sems",
     [](const SysinfoNode& sample) -> int64 { return sample.Info().max_sems; },
     [](const SysinfoNode& sample) -> int64 { return sample.Info().used_sems; }},
    {VP_AVAILABLE_TEAMS, VP_ALLOCATED_TEAMS, TrLater("Available teams"), TrLater("Allocated teams"), "teams",
     [](const SysinfoNode& sample) -> int64 { return sample.Info().max_teams; },
     [](const SysinfoNode& sample) -> int64 { return sample.Info().used_teams; }},
    {VP_AVAILABLE_THREADS, VP_ALLOCATED_THREADS, TrLater("Available threads"), TrLater("Allocated threads"), "threads",
     [](const SysinfoNode& sample) -> int64 { return sample.Info().max_threads; },
     [](const SysinfoNode& sample) -> int64 { return sample.Info().used_threads; }},
    {VP_AVAILABLE_PORTS, VP_ALLOCATED_PORTS, TrLater("Available ports"), TrLater("Allocated ports"), "ports",
     [](const SysinfoNode& sample) -> int64 { return sample.Info().max_ports; },
     [](const SysinfoNode& sample) -> int64 { return sample.Info().used_ports; }},
};

const CountedTarget* FindCounted(vptarget_t target)
{
    for (const CountedTarget& counted : kCountedTargets)
        if (target == counted.available || target == counted.used)
            return &counted;
    return nullptr;
}

std::string PlainName(vptarget_t target, bool average)
{
    const std::string inMiddle = average ? " average" : "";
    if (IsProcessorTarget(target)) {
        const std::string name = "CPU " + std::to_string(ProcessorOf(target) + 1) + inMiddle;
        return target % 2 == 1 ? name + " idle" : name;
    }
    if (target == VP_ALL_CPUS)
        return "All CPUs" + inMiddle;
    if (target == VP_ALL_CPUS_IDLE)
        return "All CPUs" + inMiddle + " idle";
    if (const CountedTarget* counted = FindCounted(target))
        return target == counted->used ? counted->usedName : counted->availableName;
    return {};
}

/// Prints with one decimal and a point, whatever the language.
void PrintDecimal(char* buffer, double value, const char* unit)
{
    char* const end = buffer + ValueProvider::kValueStringLength;
    const auto result = std::to_chars(buffer, end, value, std::chars_format::fixed, 1);
    std::snprintf(result.ptr, static_cast<size_t>(end - result.ptr), " %s", unit);
}

void PrintCount(char* buffer, int64 count, const char* unit)
{
    std::snprintf(buffer, ValueProvider::kValueStringLength, "%lld %s", static_cast<long long>(count), unit);
}

} // namespace

ValueProvider::ValueProvider(vptarget_t target, int32 flags)
    : fTarget(target)
    , fFlags(flags)
{
}

ValueProvider::ValueProvider(const BMessage* archive)
    : ValueProvider(VP_FIRST_CPU, 0)
{
    int32 value = 0;
    if (archive->FindInt32("Target", &value) == B_OK)
        fTarget = value;
    if (archive->FindInt32("Flags", &value) == B_OK)
        fFlags = value;
}

status_t ValueProvider::Archive(BMessage* archive) const
{
    const status_t flags = archive->AddInt32("Flags", fFlags);
    return flags | archive->AddInt32("Target", fTarget);
}

std::string ValueProvider::Name(vptarget_t target, int32 flags)
{
    const std::string name = PlainName(target, (flags & VP_AVERAGE) != 0);
    return (flags & VP_EXP_AVERAGE) != 0 && !name.empty() ? name + " (exp. averaged)" : name;
}

double ValueProvider::Value(const Sysinfo* sampler, const SysinfoNode* sample)
{
    if (IsProcessorTarget(fTarget) && ProcessorOf(fTarget) >= sample->Info().cpu_count)
        return 0;
    double value = Fraction(sampler, sample);
    if ((fFlags & VP_EXP_AVERAGE) != 0)
        value = Smooth(value);
    return value > 1.0 ? 1.0 : value;
}

double ValueProvider::Fraction(const Sysinfo* sampler, const SysinfoNode* sample) const
{
    if (const CountedTarget* counted = FindCounted(fTarget))
        return static_cast<double>(counted->Count(fTarget, *sample)) / static_cast<double>(counted->maximum(*sample));

    const bool average = (fFlags & VP_AVERAGE) != 0;
    const bigtime_t elapsed = average ? sampler->SumElapsed() : sample->Elapsed();
    if (IsProcessorTarget(fTarget)) {
        const int32 processor = ProcessorOf(fTarget);
        const bigtime_t active = average ? sampler->SumActive(processor) : sample->ActiveDelta(processor);
        const bigtime_t share = fTarget % 2 == 1 ? elapsed - active : active;
        return static_cast<double>(share) / static_cast<double>(elapsed);
    }

    const bigtime_t totalActive = average ? sampler->SumTotalActive() : sample->TotalActive();
    const int32 processors = average ? sampler->Info().cpu_count : sample->Info().cpu_count;
    if (processors <= 0)
        return 0;
    if (fTarget == VP_ALL_CPUS)
        return static_cast<double>(totalActive) / processors / static_cast<double>(elapsed);
    if (fTarget == VP_ALL_CPUS_IDLE) {
        // Single precision and a whole number of microseconds: what charts of this source have always shown.
        const double rounded = static_cast<float>(elapsed);
        return (rounded - static_cast<double>(totalActive / processors)) / rounded;
    }
    return 0;
}

/// The first five results are plain running means; from then on each value enters with a sixth.
double ValueProvider::Smooth(double value)
{
    // One value that is none would otherwise stay in the average for good.
    if (!std::isfinite(value))
        return value;
    fAccumulator = static_cast<float>(fAccumulator + value);
    if (fCount > 4)
        fAccumulator = static_cast<float>(fAccumulator * 5.0 / 6.0);
    else
        fCount++;
    return static_cast<double>(fAccumulator) / fCount;
}

void ValueProvider::GetValueString(char* buffer, const Sysinfo* sampler, const SysinfoNode* sample)
{
    const CountedTarget* counted = FindCounted(fTarget);
    if (counted == nullptr)
        PrintPercent(buffer, Value(sampler, sample));
    else if (counted->unit == nullptr)
        PrintMemory(buffer, counted->Count(fTarget, *sample));
    else
        PrintCount(buffer, counted->Count(fTarget, *sample), counted->unit);
}

void ValueProvider::PrintPercent(char* buffer, double share)
{
    PrintDecimal(buffer, share * 100.0, "%");
    // An idle share of nothing may come out a little below: it is computed in single precision.
    if (std::strcmp(buffer, "-0.0 %") == 0)
        PrintDecimal(buffer, 0, "%");
}

void ValueProvider::PrintMemory(char* buffer, int64 pages)
{
    const int64 bytes = pages * 4096;
    if (pages == 0)
        std::snprintf(buffer, kValueStringLength, "nothing");
    else if (bytes >= 1048576)
        PrintDecimal(buffer, static_cast<double>(bytes) * 9.5367431640625e-07, "MB");
    else if (bytes >= 1024)
        PrintDecimal(buffer, static_cast<double>(bytes) * 0.0009765625, "kB");
    else
        PrintCount(buffer, bytes, "Bytes");
}
