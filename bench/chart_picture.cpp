// SPDX-License-Identifier: MIT
#include "bench/Measure.h"
#include "src/chart/ChartSteps.h"
#include "src/chart/PixelRows.h"

#include <algorithm>
#include <cstring>

/// Measures the two passes over a chart's whole picture: a wrap, next to a memmove of as many pixels, and a
/// recolouring, next to std::replace on as many; each takes at most twice its floor. By the width of the chart.

namespace {

constexpr int kHeight = 140;
constexpr uint32 kBackground = 0x10151d;
constexpr uint32 kColor = 0x3f8fe0;
constexpr uint32 kOther = 0x3f8fe1;

/// A chart's picture with every other pixel in a colour of its own, and the same pixels for the floor.
struct Pictures {
    explicit Pictures(int width)
        : words(static_cast<size_t>(width) * kHeight, kBackground)
    {
        for (size_t i = 0; i < words.size(); i += 2)
            words[i] = kColor;
        floor = words;
    }

    std::vector<uint32> words;
    std::vector<uint32> floor;
};

void BM_Wrap(benchmark::State& state)
{
    const int width = static_cast<int>(state.range(0));
    Pictures pictures(width);
    PixelRows rows(pictures.words.data(), width, kHeight);
    const BRect area(0, 0, static_cast<float>(width - 1), kHeight - 1);
    const WrapStep step = WrapAt(area, static_cast<float>(width), static_cast<float>(state.range(1)) / 100, false);
    Times floor;
    Times wrap;
    for (auto _ : state) {
        floor.Add(Nanoseconds([&] {
            // All pixels that move or are cleared.
            std::memmove(pictures.floor.data(), pictures.floor.data() + 1,
                         pictures.floor.size() * sizeof(uint32) - sizeof(uint32));
            benchmark::ClobberMemory();
        }));
        const double time = Nanoseconds([&] {
            rows.MoveColumns(step.source, static_cast<int32>(step.target.left - step.source.left));
            rows.Fill(step.cleared, kBackground);
            benchmark::ClobberMemory();
        });
        wrap.Add(time);
        state.SetIterationTime(time * 1e-9);
    }
    Report(state, floor, wrap);
}

void BM_Recolour(benchmark::State& state)
{
    Pictures pictures(static_cast<int>(state.range(0)));
    PixelRows rows(pictures.words.data(), static_cast<int32>(state.range(0)), kHeight);
    Times floor;
    Times recolour;
    uint32 from = kColor;
    uint32 to = kOther;
    for (auto _ : state) {
        floor.Add(Nanoseconds([&] {
            std::replace(pictures.floor.begin(), pictures.floor.end(), from, to);
            benchmark::ClobberMemory();
        }));
        const double time = Nanoseconds([&] {
            rows.Replace(from, to);
            benchmark::ClobberMemory();
        });
        recolour.Add(time);
        state.SetIterationTime(time * 1e-9);
        std::swap(from, to);
    }
    Report(state, floor, recolour);
}

} // namespace

BENCHMARK(BM_Wrap)->ArgsProduct({{100, 2000}, {75, 100}})->UseManualTime();
BENCHMARK(BM_Recolour)->Arg(100)->Arg(2000)->UseManualTime();
