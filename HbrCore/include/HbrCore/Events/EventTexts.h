#pragma once

#include <HbrCore/Events/Event.h>
#include <HbrUtils/Formatters.h>
#include <TimeAndText/Calendar.h>
#include <TimeAndText/ClockReading.h>
#include <Values/OrderedDictionary.h>

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

// Texts that show when an event is and describe it to assistive technology.
namespace hbr {

/// How messages and cards name an event: its title, or the word "untitled" for a missing or blank one.
std::string titleOrUntitled(const Event& event, const platform::Environment& environment);

/// "9:00 AM – 10:00 AM".
std::string formattedTime(const Event& event, const Formatters& formatters);
std::string formattedStartTime(const Event& event, const Formatters& formatters);
std::string formattedStartTimeAndDate(const Event& event, const Formatters& formatters,
                                      const platform::ClockReading& clock);
/// The end alone for a current event; dates only where the days differ from each other or from today.
std::string formattedTimeAndDate(const Event& event, const Formatters& formatters,
                                 const platform::ClockReading& clock);

struct MomentHash {
    std::size_t operator()(platform::Date date) const noexcept {
        return std::hash<double>{}(date.timeIntervalSinceReferenceDate());
    }
};
/// By the start's midnight, days in the order of their first event.
platform::OrderedDictionary<platform::Date, std::vector<Event>, MomentHash> gropedByDay(
    const std::vector<Event>& events, const platform::Calendar& calendar);

/// Type, title and place, time, travel time, call: one sentence each.
std::string accessibilityValue(const Event& event, const Formatters& formatters,
                               const platform::ClockReading& clock);
/// The calendar or list that it belongs to; without formatters, in the words of Environment::current().
std::optional<std::string> accessibilityHelp(const Event& event, const Formatters& formatters);
std::optional<std::string> accessibilityHelp(const Event& event);

}  // namespace hbr
