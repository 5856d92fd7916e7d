#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <type_traits>
#include <vector>

namespace tavrin::bench {

inline double getMedian(std::vector<double> values) {
    const auto middle = values.begin() + std::ptrdiff_t(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

/// The time of the work, without that of destroying what it returns.
template <class Work>
double getSeconds(const Work& work) {
    using Clock = std::chrono::steady_clock;
    const auto since = [](Clock::time_point start) {
        return std::chrono::duration<double>(Clock::now() - start).count();
    };
    const auto start = Clock::now();
    if constexpr (std::is_void_v<decltype(work())>) {
        work();
        return since(start);
    } else {
        const auto result = work();
        const double seconds = since(start);
        benchmark::DoNotOptimize(&result);
        return seconds;
    }
}

/// How many pairs to run: a quarter of `count` where the environment asks for quick results.
inline int getPairCount(int count) {
    constexpr int kLeast = 3;
    return std::getenv("TAVRIN_BENCH_QUICK") == nullptr ? count : std::max(count / 4, kLeast);
}

/// Runs our work and a baseline in turns, so that both meet the same moods of the machine, and
/// reports the ratio of their median times beside the budget for it. `restore` comes before each of
/// them and is not timed: for work that changes what it works on.
template <class Ours, class Baseline, class Restore>
void runPaired(benchmark::State& state, double budget, const Ours& ours, const Baseline& baseline,
               const Restore& restore) {
    std::vector<double> oursSeconds;
    std::vector<double> baselineSeconds;
    const auto time = [&restore](const auto& work) {
        restore();
        return getSeconds(work);
    };
    for (auto iteration : state) {
        static_cast<void>(iteration);
        const bool oursFirst = oursSeconds.size() % 2 == 0;
        if (oursFirst) {
            oursSeconds.push_back(time(ours));
        }
        baselineSeconds.push_back(time(baseline));
        if (!oursFirst) {
            oursSeconds.push_back(time(ours));
        }
        state.SetIterationTime(oursSeconds.back());
    }
    state.counters["baseline_ms"] = 1e3 * getMedian(baselineSeconds);
    state.counters["ours_ms"] = 1e3 * getMedian(oursSeconds);
    state.counters["ratio"] = getMedian(oursSeconds) / getMedian(baselineSeconds);
    state.counters["budget"] = budget;
}

template <class Ours, class Baseline>
void runPaired(benchmark::State& state, double budget, const Ours& ours, const Baseline& baseline) {
    runPaired(state, budget, ours, baseline, [] {});
}

}  // namespace tavrin::bench
