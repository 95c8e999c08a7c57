// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Field.h"
#include "kits/kernel/SystemInfo.h"
#include "kits/kernel/Types.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstring>
#include <vector>

/// The records in which a sample travels to another process. Both ends are the same program on the same machine, but
/// not always of the same version: the layout is fixed for good, little-endian and without gaps, and a reader treats it
/// as unchecked bytes.

static_assert(std::endian::native == std::endian::little, "the records are written as they lie in memory");

#pragma pack(push, 1)

/// "si:Body": the sampler.
struct SysinfoBody {
    bigtime_t delay;
    bigtime_t sumElapsed;
    bigtime_t sumTotalActive;
    /// In an earlier version the addresses of four objects of the sender. Written as 0, never read.
    uint32 addresses[4];
    std::array<int32, 6> sumCounters;
    system_info info;
    int16 nodesToKeep;
};

/// "sn:Body": its newest sample.
struct SysinfoNodeBody {
    bigtime_t time;
    bigtime_t elapsed;
    bigtime_t totalActive;
    /// As above.
    uint32 address;
    std::array<int32, 6> counters;
    system_info info;
};

/// "sn:Memory": the number of pages, only if it does not fit in the sample's record (more than 8 TiB of memory).
struct MemoryBody {
    int64 maxPages;
    int64 usedPages;
};

/// "sn:More": the figure of a source that has a file of its own; one for each such source.
struct FigureRecord {
    int32 target;
    int64 count;
    int64 maximum;
};

#pragma pack(pop)

static_assert(sizeof(system_info) == 508);
static_assert(sizeof(SysinfoBody) == 574);
static_assert(sizeof(SysinfoNodeBody) == 560);
static_assert(sizeof(MemoryBody) == 16);
static_assert(sizeof(FigureRecord) == 20);

/// The most figures that a sample has in "sn:More".
inline constexpr size_t kMostFigures = 64;

/// A field of the sample message to another process.
using RecordField = kits::Field<std::string_view, B_RAW_TYPE>;

// A longer record, from another version, is cut.
inline const RecordField kSysinfoBodyField("si:Body", sizeof(SysinfoBody), kits::kMostNumber);
inline const RecordField kNodeBodyField("sn:Body", sizeof(SysinfoNodeBody), kits::kMostNumber);
inline const RecordField kMemoryField("sn:Memory", sizeof(MemoryBody), sizeof(MemoryBody));
inline const RecordField kSumActiveField("si:TRCPUTD", 0, sizeof(bigtime_t) * kits::kMaxProcessors,
                                         kits::Outside::kHeld);
inline const RecordField kActiveDeltasField("sn:RCPUTD", 0, sizeof(bigtime_t) * kits::kMaxProcessors,
                                            kits::Outside::kHeld);
inline const RecordField kMoreField("sn:More", 0, sizeof(FigureRecord) * kMostFigures, kits::Outside::kHeld);

/// Copies the record in a field.
/// @return false, and nothing changes, if the field has no whole record
template <class Record> bool FindRecord(const BMessage* message, const RecordField& field, Record* record)
{
    std::string_view bytes;
    if (!field.Find(*message, &bytes))
        return false;
    memcpy(record, bytes.data(), sizeof(Record));
    return true;
}

/// One int64 a processor, at most kits::kMaxProcessors; a missing field gives none.
std::vector<bigtime_t> FindTimes(const BMessage* message, const RecordField& field);

/// Finds the number of pages of a sample: in kMemoryField if it is there, else in the record.
/// @param info    held to its range already
/// @param memory  set to values that a sampler can have sent: 1 to kits::kMaxPages pages, no more of them used
/// @return false, and nothing is set, if the field has another length
bool FindMemory(const BMessage* message, const system_info& info, MemoryBody* memory);

/// Returns the figures of a sample in kMoreField, at most kMostFigures, each held to its range; a missing field gives
/// none.
std::vector<FigureRecord> FindMore(const BMessage* message);

void AddRecord(BMessage* message, const RecordField& field, const void* record, size_t recordSize);
void AddTimes(BMessage* message, const RecordField& field, const std::vector<bigtime_t>& times);

/// Holds received values to those that a sampler can have sent, so that every share computed from them lies in 0..1: at
/// least one processor, maxima at least 1, counts within their maximum.
void HoldToRange(system_info* info);
/// Does the same for the times of `processors` processors: a period of at least 1 microsecond, and no processor busy
/// for longer than that.
void HoldToRange(int32 processors, bigtime_t* elapsed, bigtime_t* totalActive, std::vector<bigtime_t>* active);
