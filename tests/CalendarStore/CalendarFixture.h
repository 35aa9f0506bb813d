#pragma once

#include <CalendarStore/EKEventStore.h>
#include <CalendarStore/LocationSources.h>
#include <support/TestEnvironment.h>

#include <cstdio>
#include <future>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace test {

/// A calendar file around the items.
inline std::string calendar(std::string_view inside) {
    return "BEGIN:VCALENDAR\r\nVERSION:2.0\r\n" + std::string(inside) + "END:VCALENDAR\r\n";
}

/// A VEVENT with UID "u" and title "T" unless the lines say otherwise.
inline std::string event(std::string_view lines) {
    std::string text = "BEGIN:VEVENT\n";
    if (lines.find("UID:") == std::string_view::npos) text += "UID:u\n";
    if (lines.find("SUMMARY") == std::string_view::npos) text += "SUMMARY:T\n";
    return text + std::string(lines) + "\nEND:VEVENT\n";
}

/// "2026-03-04 08:00Z 60m Title", an all-day event "2026-03-04 1d Title" by the days of the user's zone;
/// "*" marks a detached, "!" a cancelled occurrence.
inline std::string describe(const platform::EKEvent& event, const platform::Calendar& calendar) {
    const auto& zone = event.isAllDay ? calendar.timeZone() : platform::TimeZone::utc();
    const auto local = zone.localTime(event.startDate);
    const double seconds = event.endDate.timeIntervalSince(event.startDate);
    char text[64];
    if (event.isAllDay) {
        std::snprintf(text, sizeof text, "%04d-%02d-%02d %dd ", local.year, local.month, local.day,
                      calendar.daysBetween(event.startDate, event.endDate));
    } else {
        std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02dZ %.0fm ", local.year, local.month,
                      local.day, local.hour, local.minute, seconds / 60);
    }
    return text + event.title.value_or("-") + (event.isDetached ? "*" : "") +
           (event.status == platform::EKEventStatus::canceled ? "!" : "");
}

/// One account over a temporary folder, and what the store says of it.
class CalendarFixture {
  public:
    explicit CalendarFixture(std::string_view zone = "Europe/Berlin",
                             std::string_view now = "2026-03-04T09:00:00Z")
        : environment(now, zone) {
        std::filesystem::create_directories(folder());
        account("Home", folder());
    }

    std::filesystem::path folder() const { return environment.home / "calendars"; }
    std::filesystem::path write(std::string_view name, std::string_view content) const {
        return environment.home.write("calendars/" + std::string(name), content);
    }
    /// Before the store is asked.
    void account(std::string name, std::filesystem::path location, bool isDelegate = false,
                 platform::Account::Kind kind = platform::Account::Kind::ordinary) {
        accounts_.push_back({.name = std::move(name),
                             .location = std::move(location),
                             .addresses = {"Me@Example.org"},
                             .isDelegate = isDelegate,
                             .kind = kind});
    }
    platform::CalendarSourcesRef sources() const {
        return std::make_shared<platform::LocationSources>(accounts_, environment.diagnostics);
    }

    platform::EKEventStore& store() {
        if (!store_) store_ = std::make_unique<platform::EKEventStore>(environment, center, sources());
        return *store_;
    }
    /// A store that reads everything again.
    void restart() { store_.reset(); }

    std::vector<platform::EKEventRef> events(std::string_view from, std::string_view to) {
        auto calendars = store().calendars(platform::EKEntityType::event);
        return store().events(store().predicateForEvents(at(from), at(to), std::move(calendars)));
    }
    std::vector<std::string> list(std::string_view from, std::string_view to) {
        std::vector<std::string> lines;
        for (const auto& found : events(from, to))
            lines.push_back(describe(*found, environment->calendar));
        return lines;
    }
    /// What one file with these items shows in the interval.
    std::vector<std::string> list(std::string_view items, std::string_view from, std::string_view to) {
        write("a.ics", calendar(items));
        restart();
        return list(from, to);
    }
    std::vector<platform::EKReminderRef> tasks(std::string_view from, std::string_view to) {
        std::promise<std::vector<platform::EKReminderRef>> promise;
        auto calendars = store().calendars(platform::EKEntityType::reminder);
        store().fetchReminders(
            store().predicateForIncompleteReminders(at(from), at(to), std::move(calendars)),
            [&](auto found) { promise.set_value(std::move(found)); });
        return promise.get_future().get();
    }
    std::vector<std::string> diagnostics() const {
        std::vector<std::string> texts;
        for (const auto& diagnostic : environment.diagnostics->all()) {
            texts.push_back(diagnostic.file.filename().string() + ":" +
                            std::to_string(diagnostic.line.value_or(0)) + " " + diagnostic.text);
        }
        return texts;
    }

    TestEnvironment environment;
    platform::NotificationCenter center;

  private:
    std::vector<platform::Account> accounts_;
    std::unique_ptr<platform::EKEventStore> store_;
};

}  // namespace test
