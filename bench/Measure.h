// SPDX-License-Identifier: MIT
#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <vector>

/// The measured code and its floor take turns within one loop, so that other load on the machine affects both, and
/// their medians are compared.

/// Returns how long @p work takes.
double Nanoseconds(auto&& work)
{
    const auto begin = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::nano>(std::chrono::steady_clock::now() - begin).count();
}

/// The times measured in each iteration, in nanoseconds.
class Times {
public:
    void Add(double time) { fTimes.push_back(time); }
    double Median() { return Part(0.5); }
    /// Returns the quantile at @p part, from 0 to below 1.
    double Part(double part)
    {
        const auto place = fTimes.begin() + static_cast<ptrdiff_t>(static_cast<double>(fTimes.size()) * part);
        std::nth_element(fTimes.begin(), place, fTimes.end());
        return *place;
    }

private:
    std::vector<double> fTimes;
};

/// Reports both as counters: floor_ns, measured_ns, their ratio, and the time beyond the floor.
inline void Report(benchmark::State& state, Times& floor, Times& measured)
{
    state.counters["floor_ns"] = floor.Median();
    state.counters["measured_ns"] = measured.Median();
    state.counters["ratio"] = measured.Median() / floor.Median();
    state.counters["beyond_ns"] = measured.Median() - floor.Median();
}
