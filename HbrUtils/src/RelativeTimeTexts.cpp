#include <HbrUtils/RelativeTimeTexts.h>

#include <HbrLocalization/L10n.h>
#include <HbrUtils/DateOperations.h>
#include <HbrUtils/TimeConstants.h>

#include <cmath>
#include <cstdint>
#include <optional>

namespace hbr {

using platform::Date;
using platform::DateFormatter;

namespace {

constexpr std::int64_t secondsPerMinute = 60;
constexpr std::int64_t secondsPerHour = 3600;
constexpr std::int64_t secondsPerDay = 86400;
/// Nearer than this, the next day is an amount of hours like any other.
constexpr std::int64_t nearestTomorrow = 4 * secondsPerHour;
constexpr std::int64_t shortestAmount = 30;

std::int64_t wholeSecondsBetween(Date a, Date b) {
    constexpr double furthest = 1e15;
    return std::llround(std::fmin(std::fabs(a.timeIntervalSince(b)), furthest));
}

bool isNamedTomorrow(Date date, Date relativeTo, std::int64_t seconds, const Formatters& formatters) {
    return seconds > nearestTomorrow && isTomorrow(date, relativeTo, formatters.environment().calendar);
}

std::string quantity(std::int64_t count, const std::string& unit) {
    constexpr const char* narrowNoBreakSpace = "\u202F";
    return std::to_string(count) + narrowNoBreakSpace + unit;
}

std::string twoDigits(std::int64_t number) {
    return (number < 10 ? "0" : "") + std::to_string(number);
}

/// Nothing for what is now.
std::optional<std::string> shortAmount(std::int64_t seconds, bool usesFullWords) {
    namespace Words = L10n::TimeFormat;
    const auto hourWord = [=] { return usesFullWords ? Words::hoursFull() : Words::hoursShort(); };
    const auto minuteWord = [=] { return usesFullWords ? Words::minutesFull() : Words::minutesShort(); };
    if (seconds > secondsPerDay) {
        return quantity(seconds / secondsPerDay, usesFullWords ? Words::daysFull() : Words::daysShort());
    }
    if (seconds > secondsPerHour) {
        return quantity(seconds / secondsPerHour, hourWord()) + " " +
               quantity(seconds % secondsPerHour / secondsPerMinute, minuteWord());
    }
    if (seconds > secondsPerMinute) return quantity(seconds / secondsPerMinute, minuteWord());
    if (seconds >= shortestAmount) return quantity(1, minuteWord());
    return std::nullopt;
}

std::optional<std::string> compactAmount(std::int64_t seconds) {
    namespace Words = L10n::TimeFormat;
    if (seconds > secondsPerDay) return std::to_string(seconds / secondsPerDay) + Words::daysShort();
    if (seconds > secondsPerHour) {
        return std::to_string(seconds / secondsPerHour) + Words::hoursShort() +
               twoDigits(seconds % secondsPerHour / secondsPerMinute);
    }
    if (seconds > secondsPerMinute) return std::to_string(seconds / secondsPerMinute) + Words::minutesShort();
    if (seconds >= shortestAmount) return "1" + Words::minutesShort();
    return std::nullopt;
}

}  // namespace

std::string formattedShortRelativeTime(Date date, Date relativeTo, bool forAccessibility, bool isCurrentEvent,
                                       const Formatters& formatters) {
    const std::int64_t seconds = wholeSecondsBetween(date, relativeTo);
    if (!isCurrentEvent && isNamedTomorrow(date, relativeTo, seconds, formatters)) {
        return L10n::TimeFormat::tomorrow() + " " + formatters.timeOnly().string(date);
    }
    const auto amount = shortAmount(seconds, forAccessibility);
    if (!amount) return L10n::TimeFormat::now();
    if (isCurrentEvent) return L10n::TimeFormat::left(*amount);
    return relativeTo > date ? L10n::TimeFormat::ago(*amount) : L10n::TimeFormat::in(*amount);
}

std::string formattedCompactRelativeTime(Date date, Date relativeTo, bool isCurrentEvent,
                                         const Formatters& formatters) {
    const std::int64_t seconds = wholeSecondsBetween(date, relativeTo);
    if (isNamedTomorrow(date, relativeTo, seconds, formatters)) {
        return L10n::TimeFormat::ExtraShort::tomorrow() + " " + formatters.timeOnly().string(date);
    }
    const auto amount = compactAmount(seconds);
    if (!amount) return L10n::TimeFormat::now();
    if (isCurrentEvent) return L10n::TimeFormat::left(*amount);
    return relativeTo > date ? L10n::TimeFormat::ago(*amount) : *amount;
}

std::string formattedWithOnAndAt(Date date, const DateFormatter& dateFormatter,
                                 const DateFormatter& timeFormatter, const Formatters& formatters, Date now) {
    const std::string time = L10n::TimeFormat::atTime() + " " + timeFormatter.string(date, now);
    if (isToday(date, formatters.environment().calendar, now)) return time;
    return L10n::TimeFormat::onDay() + " " + dateFormatter.string(date, now) + " " + time;
}

std::string formattedRelativeTime(Date date, Date relativeTo, const Formatters& formatters) {
    return formatters.relativeDefault().string(date, relativeTo);
}

std::string formattedMinutes(int minutes, const Formatters& formatters) {
    return formatters.durationFormatterForAccessibility().string(hbr::minutes(minutes)).value_or("");
}

std::string localizedSnoozeTime(int minutes) {
    return minutes == 1 ? L10n::Alert::_1minute() : L10n::Alert::customMinutes(minutes);
}

}  // namespace hbr
