// SPDX-License-Identifier: MIT
#include "src/sampling/SampleRecords.h"

#include "kits/kernel/FigureFile.h"

#include <algorithm>
#include <cstdint>

namespace {

/// Returns as many whole records as the field has.
template <class Record> std::vector<Record> FindAll(const BMessage* message, const RecordField& field)
{
    const std::string_view bytes = field.Get(*message);
    std::vector<Record> records(bytes.size() / sizeof(Record));
    if (!records.empty())
        memcpy(records.data(), bytes.data(), records.size() * sizeof(Record));
    return records;
}

} // namespace

std::vector<bigtime_t> FindTimes(const BMessage* message, const RecordField& field)
{
    return FindAll<bigtime_t>(message, field);
}

std::vector<FigureRecord> FindMore(const BMessage* message)
{
    std::vector<FigureRecord> records = FindAll<FigureRecord>(message, kMoreField);
    for (FigureRecord& record : records) {
        const kits::Figure figure = kits::HoldToRange({record.count, record.maximum});
        record = {record.target, figure.count, figure.maximum};
    }
    return records;
}

bool FindMemory(const BMessage* message, const system_info& info, MemoryBody* memory)
{
    MemoryBody found = {info.max_pages, info.used_pages};
    if (kMemoryField.IsIn(*message) && !FindRecord(message, kMemoryField, &found))
        return false;
    memory->maxPages = std::clamp<int64>(found.maxPages, 1, kits::kMaxPages);
    memory->usedPages = std::clamp<int64>(found.usedPages, 0, memory->maxPages);
    return true;
}

void AddRecord(BMessage* message, const RecordField& field, const void* record, size_t recordSize)
{
    field.Add(message, {static_cast<const char*>(record), recordSize});
}

void AddTimes(BMessage* message, const RecordField& field, const std::vector<bigtime_t>& times)
{
    AddRecord(message, field, times.data(), times.size() * sizeof(bigtime_t));
}

namespace {

int32 AtLeastOne(int32 value)
{
    return std::max<int32>(value, 1);
}

} // namespace

void HoldToRange(system_info* info)
{
    info->cpu_count = std::clamp<int32>(info->cpu_count, 1, kits::kMaxProcessors);
    info->max_pages = AtLeastOne(info->max_pages);
    info->max_sems = AtLeastOne(info->max_sems);
    info->max_ports = AtLeastOne(info->max_ports);
    info->max_threads = AtLeastOne(info->max_threads);
    info->max_teams = AtLeastOne(info->max_teams);
    // The record is packed: its members cannot be passed by reference.
    info->used_pages = std::clamp<int32>(+info->used_pages, 0, +info->max_pages);
    info->used_sems = std::clamp<int32>(+info->used_sems, 0, +info->max_sems);
    info->used_ports = std::clamp<int32>(+info->used_ports, 0, +info->max_ports);
    info->used_threads = std::clamp<int32>(+info->used_threads, 0, +info->max_threads);
    info->used_teams = std::clamp<int32>(+info->used_teams, 0, +info->max_teams);
}

void HoldToRange(int32 processors, bigtime_t* elapsed, bigtime_t* totalActive, std::vector<bigtime_t>* active)
{
    *elapsed = std::clamp<bigtime_t>(*elapsed, 1, INT64_MAX / kits::kMaxProcessors);
    *totalActive = std::clamp<bigtime_t>(*totalActive, 0, *elapsed * processors);
    for (bigtime_t& time : *active)
        time = std::clamp<bigtime_t>(time, 0, *elapsed);
}
