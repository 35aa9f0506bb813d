// What a reload of all lists costs over a folder with one file an event, and below it the floor: reading the
// same bytes with nothing done to them.

#include <CalendarStore/Account.h>
#include <Foundation/Environment.h>
#include <HbrCore/CoreServices.h>

#include <fcntl.h>
#include <unistd.h>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>

#include <benchmark/benchmark.h>

namespace {

using namespace platform;

/// "20260304T094100Z"
std::string written(Date date) {
    const auto t = TimeZone::utc().localTime(date);
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%04d%02d%02dT%02d%02d%02dZ", t.year, t.month, t.day, t.hour,
                  t.minute, t.second);
    return text.data();
}

/// A home of its own with `count` events spread over two years around a clock that stands still; every tenth
/// recurs weekly with a meeting link in its notes.
class CalendarHome {
  public:
    explicit CalendarHome(int count) {
        std::string name = (std::filesystem::temp_directory_path() / "heedbanner-benchmark-XXXXXX").string();
        if (!mkdtemp(name.data())) throw std::runtime_error("no temporary directory");
        home_ = name;
        auto world = std::make_shared<Environment>();
        world->programName = "benchmark";
        world->clock = [] { return Date(794307600); };
        world->calendar = Calendar(TimeZone::named("Europe/Berlin").value());
        world->homeDirectory = home_;
        world->configDirectory = home_ / "config/heedbanner";
        world->dataDirectory = home_ / "data/heedbanner";
        world->cacheDirectory = home_ / "cache/heedbanner";
        world->resourceDirectories = {HEEDBANNER_BUILD_RESOURCES};
        environment_ = world;
        std::filesystem::create_directories(home_ / "calendar");
        for (int i = 0; i < count; ++i)
            write(i, count);
        AccountsFile(environment_).update([&](std::vector<Account>& accounts) {
            accounts.push_back({.name = "Home", .location = home_ / "calendar", .addresses = {}});
        });
        hbr::CoreServices services(environment_, {});
        services.manager().activateAllCalendars();
    }
    ~CalendarHome() {
        std::error_code ignored;
        std::filesystem::remove_all(home_, ignored);
    }
    CalendarHome(const CalendarHome&) = delete;
    CalendarHome& operator=(const CalendarHome&) = delete;

    static const CalendarHome& of(std::int64_t count) {
        static std::map<std::int64_t, std::unique_ptr<CalendarHome>> homes;
        auto& home = homes[count];
        if (!home) home = std::make_unique<CalendarHome>(static_cast<int>(count));
        return *home;
    }

    const EnvironmentRef& environment() const { return environment_; }

    std::size_t readAllBytes() const {
        std::size_t total = 0;
        std::array<char, 16384> buffer{};
        for (const auto& entry : std::filesystem::directory_iterator(home_ / "calendar")) {
            const int file = ::open(entry.path().c_str(), O_RDONLY | O_CLOEXEC);
            for (ssize_t got = 0; (got = ::read(file, buffer.data(), buffer.size())) > 0;)
                total += static_cast<std::size_t>(got);
            ::close(file);
        }
        return total;
    }

  private:
    void write(int index, int count) const {
        constexpr double twoYears = 2 * 365 * 86400.0;
        const auto start =
            environment_->now().addingTimeInterval(twoYears * (static_cast<double>(index) / count - 0.5));
        const auto number = std::to_string(index);
        std::ofstream file(home_ / "calendar" / (number + ".ics"), std::ios::binary);
        file << "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//benchmark//EN\r\nBEGIN:VEVENT\r\nUID:event-"
             << number << "@example.org\r\nDTSTAMP:20260101T000000Z\r\nDTSTART:" << written(start)
             << "\r\nDURATION:PT45M\r\nSUMMARY:Meeting " << number << "\r\nLOCATION:Room " << index % 17
             << "\r\n";
        if (index % 10 == 0) {
            file << "RRULE:FREQ=WEEKLY\r\nDESCRIPTION:Agenda in the wiki\\, join at "
                    "https://meet.google.com/abc-"
                 << static_cast<char>('a' + index / 260 % 26) << static_cast<char>('a' + index / 10 % 26)
                 << "cd-efg before it starts\r\n";
        }
        file << "END:VEVENT\r\nEND:VCALENDAR\r\n";
    }

    std::filesystem::path home_;
    EnvironmentRef environment_;
};

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
