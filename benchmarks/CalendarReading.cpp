// What the calendar store costs over a folder with one file an event, each with a zone definition of its own:
// the first reading beside the time to read the same bytes, a question once read, one file that changed.

#include "CalendarHome.h"

#include <CalendarStore/EKEventStore.h>
#include <System/NotificationCenter.h>

#include <chrono>

#include <benchmark/benchmark.h>

namespace {

using benchmarks::CalendarHome;
using benchmarks::Zones;

const CalendarHome& homeOf(const benchmark::State& state) {
    return CalendarHome::of(state.range(0), Zones::ownDefinition);
}

std::size_t nextSevenDays(const platform::EKEventStore& store, const platform::Environment& environment) {
    const auto now = environment.now();
    return store
        .events(store.predicateForEvents(now, now.addingTimeInterval(7 * 86400),
                                         store.calendars(platform::EKEntityType::event)))
        .size();
}

double secondsOf(const auto& work) {
    const auto begin = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

/// `ratio`: in units of reading the bytes.
void firstReading(benchmark::State& state) {
    const auto& home = homeOf(state);
    home.readAllBytes();
    double reading = 0;
    double bytes = 0;
    std::size_t events = 0;
    for (auto _ : state) {
        reading += secondsOf([&] {
            platform::NotificationCenter center;
            const platform::EKEventStore store(home.environment(), center, home.sources());
            events = nextSevenDays(store, *home.environment());
        });
        state.PauseTiming();
        bytes += secondsOf([&] { benchmark::DoNotOptimize(home.readAllBytes()); });
        state.ResumeTiming();
    }
    state.counters["events"] = static_cast<double>(events);
    state.counters["ratio"] = reading / bytes;
}
BENCHMARK(firstReading)->Arg(10'000)->Arg(50'000)->Unit(benchmark::kMillisecond)->UseRealTime();

void questionOnceRead(benchmark::State& state) {
    const auto& home = homeOf(state);
    platform::NotificationCenter center;
    const platform::EKEventStore store(home.environment(), center, home.sources());
    std::size_t events = nextSevenDays(store, *home.environment());
    for (auto _ : state)
        events = nextSevenDays(store, *home.environment());
    state.counters["events"] = static_cast<double>(events);
}
BENCHMARK(questionOnceRead)->Arg(10'000)->Arg(50'000)->Unit(benchmark::kMicrosecond)->UseRealTime();

/// Until the new title can be asked for.
void oneFileChanged(benchmark::State& state) {
    const auto& home = homeOf(state);
    platform::NotificationCenter center;
    platform::EKEventStore store(home.environment(), center, home.sources());
    nextSevenDays(store, *home.environment());
    int edition = 0;
    for (auto _ : state) {
        state.PauseTiming();
        home.change(static_cast<int>(state.range(0)) / 2, ++edition);
        state.ResumeTiming();
        store.refreshSourcesIfNecessary();
        benchmark::DoNotOptimize(nextSevenDays(store, *home.environment()));
    }
}
BENCHMARK(oneFileChanged)->Arg(10'000)->Arg(50'000)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
