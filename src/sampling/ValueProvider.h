// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Field.h"
#include "kits/kernel/Types.h"

#include <cstddef>
#include <string>

class BMessage;
class Sysinfo;
class SysinfoNode;
struct Source;

/// The number of a source. Processor i (from 0) idle is 2i+1 and its load 2i+2, up to 2049; the others are those of
/// Source::target. Any other number is unassigned: it has no name and its value is 0.
typedef int32 vptarget_t;

enum : vptarget_t {
    VP_NONE = 0, ///< no source; marks the group rows of the source list
    VP_FIRST_CPU_IDLE = 1,
    VP_FIRST_CPU = 2,
    VP_LAST_CPU_TARGET = 2049,
    VP_ALL_CPUS_IDLE = 2050,
    VP_ALL_CPUS = 2051,
    VP_FREE_MEMORY = 2052,
    VP_USED_MEMORY = 2053,
    VP_AVAILABLE_SEMS = 2055,
    VP_ALLOCATED_SEMS = 2056,
    VP_AVAILABLE_TEAMS = 2058,
    VP_ALLOCATED_TEAMS = 2059,
    VP_AVAILABLE_THREADS = 2061,
    VP_ALLOCATED_THREADS = 2062,
    VP_AVAILABLE_PORTS = 2064,
    VP_ALLOCATED_PORTS = 2065
};

inline bool IsProcessorTarget(vptarget_t target)
{
    return target >= VP_FIRST_CPU_IDLE && target <= VP_LAST_CPU_TARGET;
}

/// Returns the processor of a processor's target; from 0.
inline int32 ProcessorOf(vptarget_t target)
{
    return (target - 1) / 2;
}

/// Flags of a source.
enum : int32 {
    VP_AVERAGE = 1,    ///< processors: over the sampler's whole history instead of its newest sample
    VP_EXP_AVERAGE = 2 ///< smoothed: each new value counts for a sixth
};

// The fields of a source that is stored or dragged.

/// The field accepts any number; IsKnownSource() rejects unknown ones.
inline const kits::Field<vptarget_t> kTargetField("Target", -kits::kMostNumber - 1.0, kits::kMostNumber, VP_FIRST_CPU);
inline const kits::Field<int32> kSourceFlagsField("Flags", 0, VP_AVERAGE | VP_EXP_AVERAGE);

/// Returns whether a chart can make a source of an archive: its target and its flags are known.
/// @param mayBeNone  accepts VP_NONE, too, for a caption
bool IsSourceArchive(const BMessage& archive, bool mayBeNone);

/// In a drag of sources: one for each source.
inline const kits::Field<BMessage> kDraggedSourceField("ValueProvider", kits::kMostNumber);

/// Returns a source's name in the user's language, for display. Other programs get ValueProvider::Name().
std::string SourceName(vptarget_t target, int32 flags);

/// One source of a chart: names a quantity of the machine, computes it from a sample, prints it.
/// A plain value of its chart; not shared between threads.
class ValueProvider {
public:
    /// Room that GetValueString() and PrintMemory() need at most, including the terminating zero.
    static constexpr size_t kValueStringLength = 64;

    ValueProvider(vptarget_t target, int32 flags);

    /// From "Target" and "Flags" (int32 each); a missing field gives the first processor's load, or no flags.
    explicit ValueProvider(const BMessage* archive);

    /// Adds "Flags", then "Target".
    /// @return both results, or-ed
    status_t Archive(BMessage* archive) const;

    vptarget_t Target() const { return fTarget; }
    int32 Flags() const { return fFlags; }

    /// Returns the source's name, in English as for other programs; empty for an unassigned target. Users see
    /// SourceName().
    /// @param inLanguage  translates a sentence; null for no translation
    static std::string Name(vptarget_t target, int32 flags, const char* (*inLanguage)(const char*) = nullptr);

    /// Returns the quantity as a fraction, at most 1.0; 0 for a processor that this machine lacks. A sample with no
    /// length or a maximum of 0, which a sampler never sends and a ghost never has, gives the result of the division:
    /// NaN, or 1.0 for an infinity. Such a value does not enter the smoothing. Advances the smoothing: call it exactly
    /// once per sample.
    /// @param sampler  the running sums over the history, in microseconds; not null
    /// @param sample   the newest sample, not null; the caller holds the sampler's lock
    double Value(const Sysinfo* sampler, const SysinfoNode* sample);

    /// Writes the caption of the value: memory as PrintMemory() does, counts with their unit, anything else in percent.
    /// For values in percent it calls Value() and so advances the smoothing.
    /// @param buffer  with room for kValueStringLength characters
    void GetValueString(char* buffer, const Sysinfo* sampler, const SysinfoNode* sample);

    /// Writes a share in percent: "12.3 %", never "-0.0 %". The decimal point is a point in every language.
    /// @param buffer  with room for kValueStringLength characters
    static void PrintPercent(char* buffer, double share);

    /// Writes the size of that many pages of 4096 bytes: "nothing", "4.0 kB", "1.5 MB". The decimal point is a point in
    /// every language.
    /// @param buffer  with room for kValueStringLength characters
    static void PrintMemory(char* buffer, int64 pages);

private:
    double Fraction(const Sysinfo* sampler, const SysinfoNode* sample) const;
    double Smooth(double value);

    vptarget_t fTarget;
    int32 fFlags;
    const Source* fSource; ///< null for an unassigned target
    float fAccumulator = 0;
    int32 fCount = 0;
};
