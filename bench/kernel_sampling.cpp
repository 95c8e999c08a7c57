// SPDX-License-Identifier: MIT
#include "bench/Measure.h"
#include "bench/kernel_machines.h"
#include "kits/kernel/Clock.h"
#include "kits/kernel/record/SystemReader.h"

#include <vector>

/// Measures what one sampling round costs, next to its floor: the bare reads of the same files. Both take turns, so
/// that other load on the machine affects both. Reports the time of a round, and as counters:
///   floor_ns   the bare reads
///   ratio      a round by the bare reads; at most 1.3 on this machine
///   beyond_ns  what a round takes beyond the bare reads; on recorded machines at most 30 a processor

namespace {

void BM_RoundOnThisMachine(benchmark::State& state)
{
    BareReads bare("");
    std::vector<bigtime_t> active(kits::kMaxProcessors);
    system_info info;
    kits::SystemFigures figures;
    Times floor;
    Times round;
    for (auto _ : state) {
        floor.Add(Nanoseconds([&] { bare.Read(); }));
        const double time =
            Nanoseconds([&] { kits::ReadSystem(&info, &figures, active.data(), static_cast<int32>(active.size())); });
        round.Add(time);
        state.SetIterationTime(time * 1e-9);
    }
    Report(state, floor, round);
}

void BM_RoundOnRecordedMachine(benchmark::State& state)
{
    BusyMachine machine(static_cast<int>(state.range(0)));
    BareReads bare(machine.Root());
    kits::SystemReader reader(machine.Root().c_str());
    std::vector<bigtime_t> active(kits::kMaxProcessors);
    system_info info;
    Times floor;
    Times round;
    bigtime_t now = 0;
    for (auto _ : state) {
        machine.Advance();
        bare.Read();
        floor.Add(Nanoseconds([&] { bare.Read(); }));
        // Within one second, so that the limits, which cost the same on all machines, do not count.
        now = (now + 1) % 900000;
        const double time =
            Nanoseconds([&] { reader.Read(now, &info, active.data(), static_cast<int32>(active.size())); });
        round.Add(time);
        state.SetIterationTime(time * 1e-9);
    }
    Report(state, floor, round);
}

} // namespace

BENCHMARK(BM_RoundOnThisMachine)->UseManualTime();
BENCHMARK(BM_RoundOnRecordedMachine)->RangeMultiplier(2)->Range(2, kits::kMaxProcessors)->UseManualTime();
