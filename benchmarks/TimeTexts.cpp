// What the texts of one row of a widget cost: how far away an event is, how much of it remains, when it is.
// Formatters are made once, as in the programs; each text is asked for as of a clock that goes on.

#include <HbrUtils/DistanceTexts.h>
#include <HbrUtils/Formatters.h>
#include <HbrUtils/RelativeTimeTexts.h>
#include <System/Environment.h>
#include <TimeAndText/ClockReading.h>

#include <memory>
#include <string>

#include <benchmark/benchmark.h>

namespace {

using hbr::Formatters;
using platform::ClockReading;
using platform::Date;

const Date start(794307600);

std::unique_ptr<const Formatters> formattersOf(const std::string& language, const std::string& region) {
    auto world = std::make_shared<platform::Environment>();
    world->programName = "benchmark";
    world->clock = [] { return start; };
    world->calendar = platform::Calendar(platform::TimeZone::named("Europe/Berlin").value());
    world->locale = {.identifier = language + "_" + region, .languages = {language}};
    world->resourceDirectories = {HEEDBANNER_BUILD_RESOURCES};
    return std::make_unique<const Formatters>(std::move(world));
}

template <typename Text>
void measure(benchmark::State& state, const std::string& language, const std::string& region, Text text) {
    const auto formatters = formattersOf(language, region);
    constexpr int readings = 5000;  // seconds: 83 minutes
    int second = 0;
    for (auto _ : state) {
        const ClockReading clock(start.addingTimeInterval(second++ % readings));
        benchmark::DoNotOptimize(text(start.addingTimeInterval(6000), clock, *formatters));
    }
}

#define IN_EACH_LANGUAGE(name, text)                         \
    BENCHMARK_CAPTURE(measure, name##_en, "en", "US", text); \
    BENCHMARK_CAPTURE(measure, name##_de, "de", "DE", text); \
    BENCHMARK_CAPTURE(measure, name##_he, "he", "IL", text)

IN_EACH_LANGUAGE(relative, [](Date date, const ClockReading& clock, const Formatters& formatters) {
    return hbr::relativeText(date, clock, formatters);
});
IN_EACH_LANGUAGE(short_relative, [](Date date, const ClockReading& clock, const Formatters& formatters) {
    return hbr::shortRelativeText(date, false, clock, formatters);
});
IN_EACH_LANGUAGE(compact, [](Date date, const ClockReading& clock, const Formatters& formatters) {
    return hbr::compactRelativeText(date, false, clock, formatters);
});
IN_EACH_LANGUAGE(countdown, [](Date date, const ClockReading& clock, const Formatters& formatters) {
    return hbr::countdownText(date, clock, formatters);
});
IN_EACH_LANGUAGE(time_remaining, [](Date date, const ClockReading& clock, const Formatters& formatters) {
    return hbr::timeRemainingText(date, clock, formatters);
});
IN_EACH_LANGUAGE(spoken_countdown, [](Date date, const ClockReading& clock, const Formatters& formatters) {
    return hbr::spokenCountdownText(date, clock, formatters);
});
IN_EACH_LANGUAGE(time_of_a_row, [](Date date, const ClockReading&, const Formatters& formatters) {
    return formatters.timeOnly().string(date);
});
IN_EACH_LANGUAGE(day_and_time, [](Date date, const ClockReading& clock, const Formatters& formatters) {
    return formatters.timeAndDateFormatter().string(date, clock.now());
});

}  // namespace
