#pragma once

#include <Accounts/AccountSources.h>
#include <HbrCore/CoreServices.h>
#include <System/Environment.h>

#include <fcntl.h>
#include <unistd.h>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <tuple>
#include <utility>

namespace benchmarks {

using platform::Account;
using platform::AccountsFile;
using platform::Calendar;
using platform::Date;
using platform::Environment;
using platform::EnvironmentRef;
using platform::TimeZone;

/// Whether each file says itself what its zone is, as most servers write it, or writes its times in UTC.
enum class Zones { utc, ownDefinition };

/// "20260304T094100"
inline std::string written(Date date, const TimeZone& zone) {
    const auto t = zone.localTime(date);
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%04d%02d%02dT%02d%02d%02d", t.year, t.month, t.day, t.hour,
                  t.minute, t.second);
    return text.data();
}

/// A home of its own with `count` events spread over two years around a clock that stands still; every tenth
/// recurs weekly with a meeting link in its notes. With `notesLength` every event has notes that long.
class CalendarHome {
  public:
    explicit CalendarHome(int count, Zones zones = Zones::utc, std::size_t notesLength = 0)
        : zones_(zones), notesLength_(notesLength) {
        std::string name = (std::filesystem::temp_directory_path() / "heedbanner-benchmark-XXXXXX").string();
        if (!mkdtemp(name.data())) throw std::runtime_error("no temporary directory");
        home_ = name;
        count_ = count;
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

    static const CalendarHome& of(std::int64_t count, Zones zones = Zones::utc, std::size_t notesLength = 0) {
        static std::map<std::tuple<std::int64_t, Zones, std::size_t>, std::unique_ptr<CalendarHome>> homes;
        auto& home = homes[{count, zones, notesLength}];
        if (!home) home = std::make_unique<CalendarHome>(static_cast<int>(count), zones, notesLength);
        return *home;
    }

    const EnvironmentRef& environment() const { return environment_; }
    platform::CalendarSourcesRef sources() const {
        return std::make_shared<platform::AccountSources>(environment_);
    }

    std::filesystem::path file(int index) const {
        return home_ / "calendar" / (std::to_string(index) + ".ics");
    }
    /// Another title in the same file.
    void change(int index, int edition) const { write(index, count_, edition); }

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
    void write(int index, int count, int edition = 0) const {
        constexpr double twoYears = 2 * 365 * 86400.0;
        const auto start =
            environment_->now().addingTimeInterval(twoYears * (static_cast<double>(index) / count - 0.5));
        const auto number = std::to_string(index);
        std::ofstream file(this->file(index), std::ios::binary);
        file << "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//benchmark//EN\r\n";
        if (zones_ == Zones::ownDefinition) file << zoneDefinition;
        file << "BEGIN:VEVENT\r\nUID:event-" << number << "@example.org\r\nDTSTAMP:20260101T000000Z\r\n";
        if (zones_ == Zones::ownDefinition)
            file << "DTSTART;TZID=Central Office Time:" << written(start, environment_->calendar.timeZone());
        else
            file << "DTSTART:" << written(start, TimeZone::utc()) << "Z";
        file << "\r\nDURATION:PT45M\r\nSUMMARY:Meeting " << number << " (" << edition << ")\r\nLOCATION:Room "
             << index % 17 << "\r\n";
        const std::string notes = notesLength_ == 0 ? "" : notesText();
        if (index % 10 != 0) {
            if (!notes.empty()) file << "DESCRIPTION:" << notes << "\r\n";
        } else {
            file << "RRULE:FREQ=WEEKLY\r\nDESCRIPTION:" << notes
                 << "Agenda in the wiki\\, join at "
                    "https://meet.google.com/abc-"
                 << static_cast<char>('a' + index / 260 % 26) << static_cast<char>('a' + index / 10 % 26)
                 << "cd-efg before it starts\r\n";
        }
        file << "END:VEVENT\r\nEND:VCALENDAR\r\n";
    }

    /// A name that no system knows, so that the definition counts.
    static constexpr const char* zoneDefinition =
        "BEGIN:VTIMEZONE\r\nTZID:Central Office Time\r\n"
        "BEGIN:DAYLIGHT\r\nTZOFFSETFROM:+0100\r\nTZOFFSETTO:+0200\r\nTZNAME:CEST\r\n"
        "DTSTART:19700329T020000\r\nRRULE:FREQ=YEARLY;BYMONTH=3;BYDAY=-1SU\r\nEND:DAYLIGHT\r\n"
        "BEGIN:STANDARD\r\nTZOFFSETFROM:+0200\r\nTZOFFSETTO:+0100\r\nTZNAME:CET\r\n"
        "DTSTART:19701025T030000\r\nRRULE:FREQ=YEARLY;BYMONTH=10;BYDAY=-1SU\r\nEND:STANDARD\r\n"
        "END:VTIMEZONE\r\n";

    std::string notesText() const {
        std::string text;
        while (text.size() < notesLength_)
            text += "The quarter in numbers\\, what is open\\, who does what until when. ";
        return text;
    }

    std::filesystem::path home_;
    EnvironmentRef environment_;
    Zones zones_;
    std::size_t notesLength_;
    int count_ = 0;
};

}  // namespace benchmarks
