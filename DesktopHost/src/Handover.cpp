#include "Handover.h"

#include <Foundation/Json.h>
#include <HbrCore/Events/EventLookup.h>

#include <fcntl.h>
#include <linux/close_range.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>

namespace hbr {

namespace {

using platform::JsonValue;

/// The number of the open file that holds the handover.
constexpr const char* variable = "HEEDBANNER_HANDOVER";

JsonValue jsonOf(const std::string& event, platform::Date start, platform::Date date, bool isSnooze) {
    JsonValue json = JsonValue::object();
    json.set("event", event)
        .set("start", start.timeIntervalSinceReferenceDate())
        .set("date", date.timeIntervalSinceReferenceDate())
        .set("snooze", isSnooze);
    return json;
}

template <class Record>
std::vector<Record> recordsOf(const JsonValue& root, const char* key) {
    std::vector<Record> records;
    const JsonValue* list = root.find(key);
    if (!list || !list->asArray()) return records;
    for (const JsonValue& one : *list->asArray()) {
        const JsonValue* event = one.find("event");
        const JsonValue* start = one.find("start");
        const JsonValue* date = one.find("date");
        const JsonValue* snooze = one.find("snooze");
        if (!event || !event->asString() || !start || !start->asDouble() || !date || !date->asDouble() ||
            !snooze || !snooze->asBool())
            continue;
        records.push_back({*event->asString(), platform::Date(*start->asDouble()),
                           platform::Date(*date->asDouble()), *snooze->asBool()});
    }
    return records;
}

}  // namespace

Handover Handover::of(const CalendarEventManager& manager, const AlertWatch& watch) {
    Handover handover{.pending = {}, .told = watch.told()};
    const auto add = [&handover](const std::vector<AlertInvocation>& invocations, bool isSnooze) {
        for (const AlertInvocation& one : invocations) {
            if (one.isSnooze != isSnooze) continue;
            handover.pending.push_back({one.event.id, one.event.startDate, one.date, isSnooze});
        }
    };
    add(manager.snoozedInvocations(), true);
    add(watch.armed(), false);
    return handover;
}

std::string Handover::text() const {
    JsonValue alerts = JsonValue::array();
    for (const Alert& one : pending)
        alerts.append(jsonOf(one.eventId, one.start, one.date, one.isSnooze));
    JsonValue past = JsonValue::array();
    for (const AlertWatch::Told& one : told)
        past.append(jsonOf(one.eventId, one.start, one.alert, one.isSnooze));
    JsonValue root = JsonValue::object();
    root.set("pending", std::move(alerts)).set("told", std::move(past));
    return platform::writeJson(root);
}

std::optional<Handover> Handover::parse(const std::string& text) {
    const auto root = platform::parseJson(text);
    if (!root || !root->asObject()) return std::nullopt;
    return Handover{.pending = recordsOf<Alert>(*root, "pending"),
                    .told = recordsOf<AlertWatch::Told>(*root, "told")};
}

std::vector<AlertInvocation> Handover::invocations(const CoreServices& core, bool isSnooze) const {
    std::vector<AlertInvocation> invocations;
    const auto cached = core.manager().allCachedEvents();
    for (const Alert& alert : pending) {
        if (alert.isSnooze != isSnooze) continue;
        const auto same = std::ranges::find_if(cached, [&](const Event& event) {
            return event.id == alert.eventId && event.startDate == alert.start;
        });
        auto event =
            same != cached.end() ? std::optional<Event>(*same) : eventWithIdentifier(core, alert.eventId);
        if (event) invocations.push_back({alert.date, *std::move(event), isSnooze});
    }
    return invocations;
}

std::string executeAnew(char** argv, const Handover& handover) {
    const std::string text = handover.text();
    const int file = memfd_create("heedbanner-handover", MFD_CLOEXEC);
    if (file < 0 || write(file, text.data(), text.size()) != static_cast<ssize_t>(text.size()))
        return std::strerror(errno);
    // The new process gets this file and no connection or watch of this one.
    close_range(STDERR_FILENO + 1, ~0U, CLOSE_RANGE_CLOEXEC);
    fcntl(file, F_SETFD, 0);
    setenv(variable, std::to_string(file).c_str(), 1);
    execv("/proc/self/exe", argv);
    const std::string reason = std::strerror(errno);
    unsetenv(variable);
    close(file);
    return reason;
}

std::optional<Handover> takeHandover() {
    const char* number = std::getenv(variable);
    if (!number) return std::nullopt;
    const int file = std::atoi(number);
    unsetenv(variable);
    struct stat status{};
    if (file <= STDERR_FILENO || fstat(file, &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
    std::string text(static_cast<std::size_t>(status.st_size), '\0');
    const ssize_t count = pread(file, text.data(), text.size(), 0);
    close(file);
    if (count != static_cast<ssize_t>(text.size())) return std::nullopt;
    return Handover::parse(text);
}

}  // namespace hbr
