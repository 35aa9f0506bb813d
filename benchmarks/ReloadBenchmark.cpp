// What a reload of all lists costs over a folder with one file an event, and below it the floor: reading the
// same bytes with nothing done to them. What it costs again: with nothing changed, one event changed, a
// setting changed, with and without exclude rules.

#include "CalendarHome.h"

#include <System/MainQueue.h>

#include <chrono>
#include <functional>
#include <vector>

#include <benchmark/benchmark.h>

namespace {

using benchmarks::CalendarHome;

/// A reload of its own; one that is not announced may share another's answer.
void reload(hbr::CoreServices& services) {
    bool isDone = false;
    services.manager().reloadEvents(true, [&] { isDone = true; });
    platform::MainQueue::shared().runUntil([&] { return isDone; });
}

/// New services, so that every file is read and scanned.
void reloadCold(benchmark::State& state) {
    const auto& home = CalendarHome::of(state.range(0));
    std::size_t events = 0;
    for (auto _ : state) {
        hbr::CoreServices services(home.environment(), {});
        hbr::reloadAndWait(services);
        events = services.manager().lists()->all().size();
    }
    state.counters["events"] = static_cast<double>(events);
}
BENCHMARK(reloadCold)->Arg(1'000)->Arg(10'000)->Unit(benchmark::kMillisecond)->UseRealTime();

void reloadWarm(benchmark::State& state) {
    hbr::CoreServices services(CalendarHome::of(state.range(0)).environment(), {});
    hbr::reloadAndWait(services);
    for (auto _ : state)
        reload(services);
    state.counters["events"] = static_cast<double>(services.manager().lists()->all().size());
}
BENCHMARK(reloadWarm)->Arg(1'000)->Arg(10'000)->Unit(benchmark::kMicrosecond)->UseRealTime();

/// 2,000 events with notes of 4 KB, so many wildcard rules on notes that hit none, so many days. Before each
/// reload `change` may change something, unmeasured.
void reloadAgain(benchmark::State& state, const std::function<void(hbr::CoreServices&, int round)>& change) {
    const auto& home = CalendarHome::of(2'000, benchmarks::Zones::utc, 4096);
    hbr::CoreServices services(home.environment(), {});
    std::vector<hbr::FilterRule> rules;
    for (int i = 0; i < state.range(0); ++i)
        rules.push_back({platform::Uuid::random(), hbr::FilterRule::Field::notes,
                         hbr::FilterRule::ComparisonOperation::matches,
                         "*not there " + std::to_string(i) + "*", false});
    services.settings().setExcludeRules(rules);
    services.settings().setUpcomingEventsDaysFilter(state.range(1));
    reload(services);
    int round = 0;
    for (auto _ : state) {
        if (change) {
            state.PauseTiming();
            change(services, ++round);
            state.ResumeTiming();
        }
        reload(services);
    }
    state.counters["events"] = static_cast<double>(services.manager().lists()->all().size());
}

void reloadUnchanged(benchmark::State& state) {
    reloadAgain(state, {});
}
void reloadAfterOneEventChanged(benchmark::State& state) {
    reloadAgain(state, [](hbr::CoreServices& services, int round) {
        CalendarHome::of(2'000, benchmarks::Zones::utc, 4096).change(1000, round);
        services.aggregatedEventStore().refreshData();
    });
}
void reloadAfterASettingChanged(benchmark::State& state) {
    reloadAgain(state, [](hbr::CoreServices& services, int round) {
        services.settings().setTimeOffsetSeconds(round % 2 == 0 ? 60 : 300);
    });
}
void rulesAndDays(benchmark::internal::Benchmark* subject) {
    subject->ArgNames({"rules", "days"})->ArgsProduct({{0, 20}, {7, 365}});
    subject->Unit(benchmark::kMicrosecond)->UseRealTime();
}
BENCHMARK(reloadUnchanged)->Apply(rulesAndDays);
BENCHMARK(reloadAfterOneEventChanged)->Apply(rulesAndDays)->Iterations(20);
BENCHMARK(reloadAfterASettingChanged)->Apply(rulesAndDays);

/// Reading the list of a widget: shared, and copied.
void readUpcoming(benchmark::State& state) {
    const auto& home = CalendarHome::of(2'000, benchmarks::Zones::utc, 4096);
    hbr::CoreServices services(home.environment(), {});
    services.settings().setUpcomingEventsDaysFilter(365);
    services.settings().setExcludeRules({});
    reload(services);
    for (auto _ : state) {
        if (state.range(0) == 0) {
            benchmark::DoNotOptimize(services.manager().lists()->upcoming());
        } else {
            benchmark::DoNotOptimize(services.manager().allCachedUpcomingEvents());
        }
    }
}
BENCHMARK(readUpcoming)->ArgName("copied")->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);

/// The store alone.
void queryWarm(benchmark::State& state) {
    hbr::CoreServices services(CalendarHome::of(state.range(0)).environment(), {});
    const auto& store = services.aggregatedEventStore();
    const auto now = services.environment()->now();
    const auto end = now.addingTimeInterval(static_cast<double>(state.range(1)) * 86400);
    std::size_t events = store.events(now, end).size();
    for (auto _ : state) {
        const auto found = store.events(now, end);
        events = found.size();
        benchmark::DoNotOptimize(found.data());
    }
    state.counters["events"] = static_cast<double>(events);
}
BENCHMARK(queryWarm)
    ->ArgNames({"files", "days"})
    ->ArgsProduct({{2'000, 10'000}, {7, 60, 90}})
    ->Unit(benchmark::kMicrosecond)
    ->UseRealTime();

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
