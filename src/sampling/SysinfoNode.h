// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/FigureFile.h"
#include "kits/kernel/SystemInfo.h"
#include "kits/kernel/Types.h"
#include "src/sampling/SampleRecords.h"

#include <vector>

class BMessage;

/// Six counters: a sample keeps their changes, and the sampler the sums of the changes. All arithmetic on them wraps in
/// 32 bits, as the counters themselves do.
struct CounterDeltas {
    int32 pageFaults = 0;
    int32 usedPages = 0;
    int32 usedSems = 0;
    int32 usedThreads = 0;
    int32 usedTeams = 0;
    int32 usedPorts = 0;

    CounterDeltas& operator+=(const CounterDeltas& other);
    CounterDeltas& operator-=(const CounterDeltas& other);
    bool operator==(const CounterDeltas& other) const = default;
};

/// One sample of the machine: the figures read, and their changes since the previous sample.
///
/// A node of the history belongs to its sampler, which writes it under its lock; read it only under that lock. A ghost,
/// rebuilt from a message, belongs to its creator.
class SysinfoNode {
public:
    /// A node with everything zero.
    SysinfoNode();

    /// A ghost: the sample that GhostArchive() of another process wrote. The message may contain anything: missing
    /// fields leave zeros, short ones zeros at their end, long ones are truncated. Values that no sampler produces are
    /// held to possible ones, so that every share computed from a ghost lies in 0..1. An "sn:Memory" that is not 16
    /// bytes long is refused. Use it only if InitCheck() is B_OK.
    explicit SysinfoNode(const BMessage* ghostArchive);

    /// B_OK, except for a ghost whose message had no whole "sn:Body" or was refused: B_BAD_VALUE.
    status_t InitCheck() const { return fInitStatus; }

    /// Takes a sample: reads the machine now and computes the changes. Allocates only at the first call.
    /// @param previous  the previous sample; null for a first one, which has no changes. It may be this node itself:
    ///                  then all changes are 0.
    void Update(const SysinfoNode* previous);

    /// Adds the fields "sn:Body" (560 bytes) and "sn:RCPUTD" (8 bytes a processor), and, if the number of pages does
    /// not fit in the record, "sn:Memory" (16 bytes). Figures of sources with files of their own are in "sn:More" (20
    /// bytes each), which is omitted if there are none.
    void GhostArchive(BMessage* archive) const;

    /// system_time() of the sample, microseconds.
    bigtime_t Time() const { return fTime; }
    /// Time since the previous sample, microseconds; 0 for a first sample.
    bigtime_t Elapsed() const { return fElapsed; }
    /// Sum of ActiveDelta() over all processors, microseconds; at most Elapsed() times their number.
    bigtime_t TotalActive() const { return fTotalActive; }
    /// How long a processor was busy since the previous sample, microseconds, at most Elapsed(). After samples that
    /// could not read the processors, it is their proportional part of the whole time since they were last read. 0 for
    /// an unknown processor.
    bigtime_t ActiveDelta(int32 processor) const;
    /// Number of processors for which ActiveDelta() is known, at most kits::kMaxProcessors.
    int32 CountActiveDeltas() const { return static_cast<int32>(fActiveDeltas.size()); }
    const CounterDeltas& Counters() const { return fCounters; }
    /// The figures as read. The record has room for the active times of the first eight processors.
    const system_info& Info() const { return fInfo; }
    /// Returns the figure of a source that has a file of its own (Source::file); 0 of 1 if the sample has none.
    kits::Figure FigureOf(int32 target) const;
    /// The memory in pages of 4096 bytes, 1 to kits::kMaxPages once there is a sample. The record holds no more than
    /// INT32_MAX of them.
    int64 MaxPages() const { return fMaxPages; }
    /// At most MaxPages().
    int64 UsedPages() const { return fUsedPages; }

private:
    bigtime_t fTime = 0;
    bigtime_t fElapsed = 0;
    bigtime_t fTotalActive = 0;
    /// The moment up to which the active times count; before fTime if this sample could not read them.
    bigtime_t fActiveUntil = 0;
    int64 fMaxPages = 0;
    int64 fUsedPages = 0;
    std::vector<FigureRecord> fMore; ///< of sources with files of their own
    std::vector<bigtime_t> fActiveDeltas;
    CounterDeltas fCounters;
    system_info fInfo;
    /// The absolute active times of all processors: the record above has room for eight.
    std::vector<bigtime_t> fActiveTimes;
    status_t fInitStatus;
};
