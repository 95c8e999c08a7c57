// SPDX-License-Identifier: MIT
#include "src/sampling/SysinfoNode.h"

#include "kits/application/Message.h"
#include "src/sampling/Source.h"

#include <algorithm>
#include <bit>
#include <functional>

namespace {

/// Combines each counter of one with the same of the other. The counters are unsigned here, so a result wraps.
template <class Operation>
CounterDeltas Combined(const CounterDeltas& one, const CounterDeltas& other, Operation operation)
{
    using Counters = std::array<uint32, sizeof(CounterDeltas) / sizeof(uint32)>;
    auto counters = std::bit_cast<Counters>(one);
    const auto others = std::bit_cast<Counters>(other);
    std::transform(counters.begin(), counters.end(), others.begin(), counters.begin(), operation);
    return std::bit_cast<CounterDeltas>(counters);
}

CounterDeltas CountersOf(const system_info& info)
{
    return {info.page_faults, info.used_pages, info.used_sems, info.used_threads, info.used_teams, info.used_ports};
}

/// Returns a sample's share of a processor's active time in a period that ended with the sample.
/// @param period   may be longer than the sample, if samples before could not read the processors
/// @param elapsed  the sample's length
bigtime_t ActiveInSample(bigtime_t active, bigtime_t period, bigtime_t elapsed)
{
    if (period > elapsed)
        active = static_cast<bigtime_t>(static_cast<double>(active) * static_cast<double>(elapsed) /
                                        static_cast<double>(period));
    return std::max<bigtime_t>(std::min(active, elapsed), 0);
}

} // namespace

CounterDeltas& CounterDeltas::operator+=(const CounterDeltas& other)
{
    return *this = Combined(*this, other, std::plus<>());
}

CounterDeltas& CounterDeltas::operator-=(const CounterDeltas& other)
{
    return *this = Combined(*this, other, std::minus<>());
}

SysinfoNode::SysinfoNode()
    : fInfo()
    , fInitStatus(B_OK)
{
}

SysinfoNode::SysinfoNode(const BMessage* ghostArchive)
    : fInfo()
    , fInitStatus(B_BAD_VALUE)
{
    SysinfoNodeBody body = {};
    if (!FindRecord(ghostArchive, kNodeBodyField, &body))
        return;
    fInitStatus = B_OK;
    fTime = body.time;
    fElapsed = body.elapsed;
    fTotalActive = body.totalActive;
    fCounters = std::bit_cast<CounterDeltas>(body.counters);
    fInfo = body.info;
    fActiveDeltas = FindTimes(ghostArchive, kActiveDeltasField);
    HoldToRange(&fInfo);
    MemoryBody memory = {};
    if (!FindMemory(ghostArchive, fInfo, &memory))
        fInitStatus = B_BAD_VALUE;
    fMaxPages = memory.maxPages;
    fUsedPages = memory.usedPages;
    fMore = FindMore(ghostArchive);
    HoldToRange(fInfo.cpu_count, &fElapsed, &fTotalActive, &fActiveDeltas);
}

void SysinfoNode::Update(const SysinfoNode* previous)
{
    kits::SystemFigures figures;
    if (fActiveTimes.empty()) {
        fActiveTimes.resize(kits::kMaxProcessors);
        kits::ReadSystem(&fInfo, &figures, fActiveTimes.data(), kits::kMaxProcessors);
        fActiveTimes.resize(static_cast<size_t>(fInfo.cpu_count));
        fActiveTimes.shrink_to_fit();
        fActiveDeltas.resize(fActiveTimes.size());
    } else {
        kits::ReadSystem(&fInfo, &figures, fActiveTimes.data(), static_cast<int32>(fActiveTimes.size()));
    }
    fTime = figures.time;
    fActiveUntil = figures.activeUntil;
    fMaxPages = figures.maxPages;
    fUsedPages = figures.usedPages;
    fMore.clear();
    ReadFiles(Sources(), &fMore);

    fElapsed = 0;
    fTotalActive = 0;
    fCounters = {};
    if (previous == nullptr) {
        fActiveDeltas.assign(fActiveDeltas.size(), 0);
        return;
    }
    fElapsed = fTime - previous->fTime;
    fCounters = CountersOf(fInfo);
    fCounters -= CountersOf(previous->fInfo);
    const bigtime_t period = fActiveUntil - previous->fActiveUntil;
    for (size_t i = 0; i < fActiveDeltas.size(); i++) {
        fActiveDeltas[i] = ActiveInSample(fActiveTimes[i] - previous->fActiveTimes[i], period, fElapsed);
        fTotalActive += fActiveDeltas[i];
    }
}

void SysinfoNode::GhostArchive(BMessage* archive) const
{
    SysinfoNodeBody body = {};
    body.time = fTime;
    body.elapsed = fElapsed;
    body.totalActive = fTotalActive;
    body.counters = std::bit_cast<std::array<int32, 6>>(fCounters);
    body.info = fInfo;
    AddRecord(archive, kNodeBodyField, &body, sizeof(body));
    AddTimes(archive, kActiveDeltasField, fActiveDeltas);
    if (fMaxPages != fInfo.max_pages || fUsedPages != fInfo.used_pages) {
        const MemoryBody memory = {fMaxPages, fUsedPages};
        AddRecord(archive, kMemoryField, &memory, sizeof(memory));
    }
    if (!fMore.empty())
        AddRecord(archive, kMoreField, fMore.data(), fMore.size() * sizeof(FigureRecord));
}

kits::Figure SysinfoNode::FigureOf(int32 target) const
{
    for (const FigureRecord& record : fMore)
        if (record.target == target)
            return {record.count, record.maximum};
    return {};
}

bigtime_t SysinfoNode::ActiveDelta(int32 processor) const
{
    return processor >= 0 && processor < CountActiveDeltas() ? fActiveDeltas[static_cast<size_t>(processor)] : 0;
}
