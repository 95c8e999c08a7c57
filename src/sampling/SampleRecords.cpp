// SPDX-License-Identifier: MIT
#include "src/sampling/SampleRecords.h"

#include "kits/application/Message.h"
#include "kits/kernel/FigureFile.h"
#include "kits/support/TypeConstants.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

bool FindRecord(const BMessage* message, const char* field, void* record, size_t recordSize)
{
    const void* data = nullptr;
    ssize_t size = 0;
    if (message->FindData(field, B_RAW_TYPE, &data, &size) != B_OK || size <= 0)
        return false;
    const size_t found = static_cast<size_t>(size);
    memcpy(record, data, std::min(found, recordSize));
    return found >= recordSize;
}

namespace {

/// Returns as many whole records as the field has, up to a limit.
template <class Record> std::vector<Record> FindAll(const BMessage* message, const char* field, size_t most)
{
    const void* data = nullptr;
    ssize_t size = 0;
    if (message->FindData(field, B_RAW_TYPE, &data, &size) != B_OK || size <= 0)
        return {};
    std::vector<Record> records(std::min(static_cast<size_t>(size) / sizeof(Record), most));
    if (!records.empty())
        memcpy(records.data(), data, records.size() * sizeof(Record));
    return records;
}

} // namespace

std::vector<bigtime_t> FindTimes(const BMessage* message, const char* field)
{
    return FindAll<bigtime_t>(message, field, kits::kMaxProcessors);
}

std::vector<FigureRecord> FindMore(const BMessage* message)
{
    std::vector<FigureRecord> records = FindAll<FigureRecord>(message, kMoreField, kMostFigures);
    for (FigureRecord& record : records) {
        const kits::Figure figure = kits::HoldToRange({record.count, record.maximum});
        record = {record.target, figure.count, figure.maximum};
    }
    return records;
}

bool FindMemory(const BMessage* message, const system_info& info, MemoryBody* memory)
{
    MemoryBody found = {info.max_pages, info.used_pages};
    const void* data = nullptr;
    ssize_t size = 0;
    if (message->FindData(kMemoryField, B_RAW_TYPE, &data, &size) == B_OK) {
        if (size != sizeof(found))
            return false;
        memcpy(&found, data, sizeof(found));
    }
    memory->maxPages = std::clamp<int64>(found.maxPages, 1, kits::kMaxPages);
    memory->usedPages = std::clamp<int64>(found.usedPages, 0, memory->maxPages);
    return true;
}

void AddRecord(BMessage* message, const char* field, const void* record, size_t recordSize)
{
    message->AddData(field, B_RAW_TYPE, record, static_cast<ssize_t>(recordSize), true, 1);
}

void AddTimes(BMessage* message, const char* field, const std::vector<bigtime_t>& times)
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
