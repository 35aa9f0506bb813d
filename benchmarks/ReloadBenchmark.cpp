// What a reload of all lists costs over a folder with one file an event, and below it the floor: reading the
// same bytes with nothing done to them.

#include "CalendarHome.h"

#include <chrono>

#include <benchmark/benchmark.h>

namespace {

using benchmarks::CalendarHome;

/// Services made anew, so that every file is read and scanned.
void reloadCold(benchmark::State& state) {
    const auto& home = CalendarHome::of(state.range(0));
    std::size_t events = 0;
    for (auto _ : state) {
        hbr::CoreServices services(home.environment(), {});
        hbr::reloadAndWait(services);
        events = services.manager().allCachedEvents().size();
    }
    state.counters["events"] = static_cast<double>(events);
}
BENCHMARK(reloadCold)->Arg(1'000)->Arg(10'000)->Unit(benchmark::kMillisecond)->UseRealTime();

void reloadWarm(benchmark::State& state) {
    hbr::CoreServices services(CalendarHome::of(state.range(0)).environment(), {});
    hbr::reloadAndWait(services);
    for (auto _ : state)
        hbr::reloadAndWait(services);
    state.counters["events"] = static_cast<double>(services.manager().allCachedEvents().size());
}
BENCHMARK(reloadWarm)->Arg(1'000)->Arg(10'000)->Unit(benchmark::kMicrosecond)->UseRealTime();

/// The store alone.
void querySevenDaysWarm(benchmark::State& state) {
    hbr::CoreServices services(CalendarHome::of(state.range(0)).environment(), {});
    const auto& store = services.aggregatedEventStore();
    const auto now = services.environment()->now();
    const auto end = now.addingTimeInterval(7 * 86400);
    std::size_t events = store.events(now, end).size();
    for (auto _ : state) {
        const auto found = store.events(now, end);
        events = found.size();
        benchmark::DoNotOptimize(found.data());
    }
    state.counters["events"] = static_cast<double>(events);
}
BENCHMARK(querySevenDaysWarm)->Arg(1'000)->Arg(10'000)->Unit(benchmark::kMicrosecond)->UseRealTime();

/// `coldRatio`: one cold reload in units of this.
void floorReadTheBytes(benchmark::State& state) {
    const auto& home = CalendarHome::of(state.range(0));
    std::size_t bytes = home.readAllBytes();
    const auto seconds = [](auto&& work) {
        const auto begin = std::chrono::steady_clock::now();
        work();
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
    };
    const double cold = seconds([&] {
        hbr::CoreServices services(home.environment(), {});
        hbr::reloadAndWait(services);
    });
    double reading = 0;
    for (auto _ : state)
        reading += seconds([&] { bytes = home.readAllBytes(); });
    state.counters["bytes"] = static_cast<double>(bytes);
    state.counters["coldRatio"] = cold / (reading / static_cast<double>(state.iterations()));
}
BENCHMARK(floorReadTheBytes)->Arg(1'000)->Arg(10'000)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
