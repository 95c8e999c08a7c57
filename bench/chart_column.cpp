// SPDX-License-Identifier: MIT
#include "bench/ChartBench.h"
#include "bench/Measure.h"

/// Measures what one sample costs a chart: a column for each source, in its picture and in its window's, without the
/// wraps. The cost grows with the sources and not with the width. The floor is writing the pixels of such columns,
/// twice.
///   chart_column/SOURCES/WIDTH

namespace {

constexpr int kHeight = 140;

void BM_ChartColumn(benchmark::State& state)
{
    const int sources = static_cast<int>(state.range(0));
    const int width = static_cast<int>(state.range(1));
    ChartBench bench(sources, width, kHeight);
    bench.Chart().SetPageSize(0); // a wrap only clears
    std::vector<uint32> words(static_cast<size_t>(width) * kHeight);
    Times floor;
    Times column;
    size_t place = 0;
    for (auto _ : state) {
        place = (place + 1) % static_cast<size_t>(width);
        floor.Add(Nanoseconds([&] {
            for (int turn = 0; turn < 2; turn++) {
                // Half of the height is filled on average.
                for (size_t at = place; at < words.size() / 2; at += static_cast<size_t>(width))
                    words[at] = static_cast<uint32>(at);
                benchmark::ClobberMemory();
            }
        }));
        const float before = bench.Chart().Picture().Column();
        const double time = Nanoseconds([&] { bench.Sample(); });
        state.SetIterationTime(time * 1e-9);
        if (bench.Chart().Picture().Column() > before)
            column.Add(time);
    }
    Report(state, floor, column);
}

} // namespace

BENCHMARK(BM_ChartColumn)->ArgsProduct({{1, 8}, {100, 2000}})->UseManualTime();
