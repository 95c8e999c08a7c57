#include "src/sampling/SysinfoNode.h"

#include "kits/application/Message.h"
#include "kits/kernel/Clock.h"
#include "src/sampling/SampleRecords.h"

#include <bit>

namespace {

int32 WrappingSum(int32 a, int32 b)
{
    return static_cast<int32>(static_cast<uint32>(a) + static_cast<uint32>(b));
}

int32 WrappingDifference(int32 a, int32 b)
{
    return static_cast<int32>(static_cast<uint32>(a) - static_cast<uint32>(b));
}

CounterDeltas CountersOf(const system_info& info)
{
    return {info.page_faults, info.used_pages, info.used_sems, info.used_threads, info.used_teams, info.used_ports};
}

} // namespace

CounterDeltas& CounterDeltas::operator+=(const CounterDeltas& other)
{
    pageFaults = WrappingSum(pageFaults, other.pageFaults);
    usedPages = WrappingSum(usedPages, other.usedPages);
    usedSems = WrappingSum(usedSems, other.usedSems);
    usedThreads = WrappingSum(usedThreads, other.usedThreads);
    usedTeams = WrappingSum(usedTeams, other.usedTeams);
    usedPorts = WrappingSum(usedPorts, other.usedPorts);
    return *this;
}

CounterDeltas& CounterDeltas::operator-=(const CounterDeltas& other)
{
    pageFaults = WrappingDifference(pageFaults, other.pageFaults);
    usedPages = WrappingDifference(usedPages, other.usedPages);
    usedSems = WrappingDifference(usedSems, other.usedSems);
    usedThreads = WrappingDifference(usedThreads, other.usedThreads);
    usedTeams = WrappingDifference(usedTeams, other.usedTeams);
    usedPorts = WrappingDifference(usedPorts, other.usedPorts);
    return *this;
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
    if (!FindRecord(ghostArchive, kNodeBodyField, &body, sizeof(body)))
        return;
    fInitStatus = B_OK;
    fTime = body.time;
    fElapsed = body.elapsed;
    fTotalActive = body.totalActive;
    fCounters = std::bit_cast<CounterDeltas>(body.counters);
    fInfo = body.info;
    fActiveDeltas = FindTimes(ghostArchive, kActiveDeltasField);
    HoldToRange(&fInfo);
    HoldToRange(fInfo.cpu_count, &fElapsed, &fTotalActive, &fActiveDeltas);
}

void SysinfoNode::Update(const SysinfoNode* previous)
{
    // The machine is read for this very moment, so that nobody was active for longer than has elapsed.
    fTime = system_time();
    if (fActiveTimes.empty()) {
        fActiveTimes.resize(kits::kMaxProcessors);
        get_system_info_at(fTime, &fInfo, fActiveTimes.data(), kits::kMaxProcessors);
        fActiveTimes.resize(static_cast<size_t>(fInfo.cpu_count));
        fActiveTimes.shrink_to_fit();
        fActiveDeltas.resize(fActiveTimes.size());
    } else {
        get_system_info_at(fTime, &fInfo, fActiveTimes.data(), static_cast<int32>(fActiveTimes.size()));
    }

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
    for (size_t i = 0; i < fActiveDeltas.size(); i++) {
        fActiveDeltas[i] = fActiveTimes[i] - previous->fActiveTimes[i];
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
}

bigtime_t SysinfoNode::ActiveDelta(int32 processor) const
{
    return processor >= 0 && processor < CountActiveDeltas() ? fActiveDeltas[static_cast<size_t>(processor)] : 0;
}
