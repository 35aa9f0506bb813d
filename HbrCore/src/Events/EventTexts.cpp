#include <HbrCore/Events/EventTexts.h>

#include <HbrCore/Events/EventTiming.h>
#include <HbrLocalization/L10n.h>
#include <HbrUtils/RelativeTimeTexts.h>
#include <TimeAndText/DateFormatter.h>
#include <TimeAndText/Text.h>

namespace hbr {

namespace {

/// Six-per-em space, en dash, six-per-em space.
constexpr std::string_view rangeSeparator = "\u2006\u2013\u2006";

std::string range(const std::string& start, const std::string& end) {
    return start + std::string(rangeSeparator) + end;
}

const platform::Calendar& calendarOf(const Formatters& formatters) {
    return formatters.environment().calendar;
}

std::string timeAndDate(platform::Date date, const Formatters& formatters,
                        const platform::ClockReading& clock) {
    clock.notesNextDay(calendarOf(formatters));
    return formatters.timeAndDateFormatter().string(date, clock.now());
}

std::string onAndAt(platform::Date date, const Formatters& formatters, const platform::ClockReading& clock) {
    clock.notesNextDay(calendarOf(formatters));
    return formattedWithOnAndAt(date, formatters.dateOnly(), formatters.timeOnly(), formatters, clock.now());
}

std::optional<std::string> belongsTo(const Event& event, const platform::Environment& environment) {
    namespace Summary = L10n::Accessibility::EventSummary;
    if (!event.calendarName) return std::nullopt;
    switch (event.type) {
        case Event::EventType::calendarEvent:
            return Summary::belongsToCalendar(environment, *event.calendarName);
        case Event::EventType::appleReminder:
            return Summary::belongsToReminderList(environment, *event.calendarName);
        case Event::EventType::hbrReminder:
            break;
    }
    return std::nullopt;
}

}  // namespace

std::string titleOrUntitled(const Event& event, const platform::Environment& environment) {
    const bool isBlank = !event.title || platform::trimmed(*event.title).empty();
    return isBlank ? L10n::General::untitled(environment) : *event.title;
}

std::string formattedTime(const Event& event, const Formatters& formatters) {
    return range(formatters.timeOnly().string(event.startDate), formatters.timeOnly().string(event.endDate));
}

std::string formattedStartTime(const Event& event, const Formatters& formatters) {
    return formatters.timeOnly().string(event.startDate);
}

std::string formattedStartTimeAndDate(const Event& event, const Formatters& formatters,
                                      const platform::ClockReading& clock) {
    return timeAndDate(event.startDate, formatters, clock);
}

std::string formattedTimeAndDate(const Event& event, const Formatters& formatters,
                                 const platform::ClockReading& clock) {
    const platform::Calendar& calendar = calendarOf(formatters);
    const platform::DateFormatter& timeOnly = formatters.timeOnly();
    if (isCurrentEvent(event, clock)) {
        const bool endsToday = clock.isSameDay(event.endDate, calendar);
        return L10n::TimeFormat::until(
            formatters.environment(),
            endsToday ? timeOnly.string(event.endDate) : timeAndDate(event.endDate, formatters, clock));
    }
    if (!calendar.isSameDay(event.startDate, event.endDate)) {
        return range(timeAndDate(event.startDate, formatters, clock),
                     timeAndDate(event.endDate, formatters, clock));
    }
    if (!clock.isSameDay(event.startDate, calendar)) {
        return range(timeAndDate(event.startDate, formatters, clock), timeOnly.string(event.endDate));
    }
    return formattedTime(event, formatters);
}

platform::OrderedDictionary<platform::Date, std::vector<Event>, MomentHash> gropedByDay(
    const std::vector<Event>& events, const platform::Calendar& calendar) {
    platform::OrderedDictionary<platform::Date, std::vector<Event>, MomentHash> days;
    for (const Event& event : events)
        days[calendar.startOfDay(event.startDate)].push_back(event);
    return days;
}

std::string accessibilityValue(const Event& event, const Formatters& formatters,
                               const platform::ClockReading& clock) {
    namespace Summary = L10n::Accessibility::EventSummary;
    const platform::Environment& environment = formatters.environment();
    std::string value = isAnyReminder(event) ? Summary::EventType::reminder(environment)
                                             : Summary::EventType::calendarEvent(environment);
    auto add = [&value](const std::string& sentence) { value += " " + sentence; };

    const std::string title =
        platform::trimmed(event.title ? *event.title : L10n::General::untitled(environment));
    const std::string location = platform::trimmed(event.location.value_or(""));
    add(location.empty() ? Summary::titleOnly(environment, title)
                         : Summary::titleAndLocation(environment, title, location));

    const std::string start = onAndAt(event.startDate, formatters, clock);
    add(isAnyReminder(event)
            ? start
            : Summary::timeInfoEvent(environment, start, onAndAt(event.endDate, formatters, clock)));

    if (event.travelTime > 0) {
        if (const auto length = formatters.durationFormatterForAccessibility().string(event.travelTime)) {
            add(L10n::General::travelTime(environment, *length) + ".");
        }
    }
    if (!event.videoConferenceLinks.empty()) add(Summary::hasVideoCall(environment));
    return value;
}

std::optional<std::string> accessibilityHelp(const Event& event, const Formatters& formatters) {
    return belongsTo(event, formatters.environment());
}

std::optional<std::string> accessibilityHelp(const Event& event) {
    return belongsTo(event, *platform::Environment::current());
}

}  // namespace hbr
