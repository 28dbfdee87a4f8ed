// One figure of the benchmark: timed work, the bare work it is compared with, and the limit it must keep.
#pragma once

#include <benchmark/benchmark.h>

#include <chrono>
#include <vector>

namespace vcc::bench {

inline constexpr double no_limit = 0;

inline double median(std::vector<double> values) {
    if (values.empty())
        return 0;
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

template <class Work>
double seconds_of(Work& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// Names of the counters that are shown; the limit belongs to the ratio where there is one, else to the time.
namespace counter {
inline constexpr const char *us = "us", *bare_us = "bare_us", *ratio = "ratio", *limit = "limit";
}

/// Times `work` and `bare` one after the other in every iteration, in changing order, so that both meet the same
/// machine. Reports the ratio of the medians.
template <class Work, class Bare>
void compare(benchmark::State& state, double limit, Work work, Bare bare) {
    std::vector<double> of_work, of_bare;
    bool work_first = true;
    for (auto _ : state) {
        const auto time_work = [&] { of_work.push_back(seconds_of(work)); };
        const auto time_bare = [&] { of_bare.push_back(seconds_of(bare)); };
        if (work_first)
            time_work();
        time_bare();
        if (!work_first)
            time_work();
        work_first = !work_first;
        state.SetIterationTime(of_work.back());
    }
    state.counters[counter::us] = median(of_work) * 1e6;
    state.counters[counter::bare_us] = median(of_bare) * 1e6;
    state.counters[counter::ratio] = median(of_work) / median(of_bare);
    if (limit != no_limit)
        state.counters[counter::limit] = limit;
}

/// Times work that does `pieces` equal pieces at once. Reports the median time of one piece.
template <class Work>
void measure_batch(benchmark::State& state, double limit_us, int pieces, Work work) {
    std::vector<double> times;
    for (auto _ : state) {
        times.push_back(seconds_of(work) / pieces);
        state.SetIterationTime(times.back() * pieces);
    }
    state.counters[counter::us] = median(times) * 1e6;
    if (limit_us != no_limit)
        state.counters[counter::limit] = limit_us;
}

/// Times `work`, `batch` times in a row where it is shorter than the clock can tell.
template <class Work>
void measure(benchmark::State& state, double limit_us, int batch, Work work) {
    measure_batch(state, limit_us, batch, [&] {
        for (int i = 0; i < batch; ++i)
            work();
    });
}

} // namespace vcc::bench

/// Registers a figure: a function that takes the state.
#define VELDOR_FIGURE(function) BENCHMARK(function)->UseManualTime()->Unit(benchmark::kMicrosecond)
