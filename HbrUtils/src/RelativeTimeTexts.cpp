#include <HbrUtils/RelativeTimeTexts.h>

#include <HbrLocalization/L10n.h>
#include <HbrLocalization/LocalizedString.h>
#include <HbrUtils/DateOperations.h>
#include <HbrUtils/TimeConstants.h>
#include <TimeAndText/Ascii.h>
#include <TimeAndText/DateFormatter.h>

#include <cmath>
#include <cstdint>
#include <optional>
#include <string_view>

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

std::string twoDigits(std::int64_t number) {
    return (number < 10 ? "0" : "") + std::to_string(number);
}

struct Unit {
    std::string_view key;
    std::string_view english;
};

constexpr Unit daysShort{"TimeFormat.daysShort", "d"};
constexpr Unit hoursShort{"TimeFormat.hoursShort", "h"};
constexpr Unit minutesShort{"TimeFormat.minutesShort", "m"};
constexpr Unit daysFull{"TimeFormat.daysFull", "days"};
constexpr Unit hoursFull{"TimeFormat.hoursFull", "hours"};
constexpr Unit minutesFull{"TimeFormat.minutesFull", "minutes"};

/// What is said of an amount; languages bend the words of the amount after it.
enum class Phrase { bare, in, ago, left };

std::string_view nameOf(Phrase phrase) {
    switch (phrase) {
        case Phrase::in:
            return "in";
        case Phrase::ago:
            return "ago";
        case Phrase::left:
            return "left";
        case Phrase::bare:
            break;
    }
    return {};
}

/// Amounts in one language, to be put into one phrase.
class Amounts {
  public:
    Amounts(const platform::Environment& environment, Phrase phrase)
        : environment_(environment), phrase_(phrase) {}

    /// Nothing for what is now.
    std::optional<std::string> spaced(std::int64_t seconds, bool usesFullWords) const {
        const Unit& minutes = usesFullWords ? minutesFull : minutesShort;
        if (seconds > secondsPerDay) {
            return quantity(seconds / secondsPerDay, usesFullWords ? daysFull : daysShort);
        }
        if (seconds > secondsPerHour) {
            return quantity(seconds / secondsPerHour, usesFullWords ? hoursFull : hoursShort) + " " +
                   quantity(seconds % secondsPerHour / secondsPerMinute, minutes);
        }
        if (seconds > secondsPerMinute) return quantity(seconds / secondsPerMinute, minutes);
        if (seconds >= shortestAmount) return quantity(1, minutes);
        return std::nullopt;
    }

    /// The same without blanks.
    std::optional<std::string> compact(std::int64_t seconds) const {
        if (seconds > secondsPerDay) return compactQuantity(seconds / secondsPerDay, daysShort);
        if (seconds > secondsPerHour) {
            return compactQuantity(seconds / secondsPerHour, hoursShort) +
                   twoDigits(seconds % secondsPerHour / secondsPerMinute);
        }
        if (seconds > secondsPerMinute) return compactQuantity(seconds / secondsPerMinute, minutesShort);
        if (seconds >= shortestAmount) return compactQuantity(1, minutesShort);
        return std::nullopt;
    }

    std::string phrase(const std::string& amount) const {
        switch (phrase_) {
            case Phrase::in:
                return L10n::TimeFormat::in(environment_, amount);
            case Phrase::ago:
                return L10n::TimeFormat::ago(environment_, amount);
            case Phrase::left:
                return L10n::TimeFormat::left(environment_, amount);
            case Phrase::bare:
                break;
        }
        return amount;
    }

  private:
    std::string quantity(std::int64_t count, const Unit& unit) const {
        constexpr const char* narrowNoBreakSpace = "\u202F";
        return std::to_string(count) + narrowNoBreakSpace +
               localizedForm(environment_, unit.key, unit.english, {count, nameOf(phrase_)});
    }

    std::string compactQuantity(std::int64_t count, const Unit& unit) const {
        return std::to_string(count) +
               localizedForm(environment_, unit.key, unit.english, {count, "compact"});
    }

    const platform::Environment& environment_;
    Phrase phrase_;
};

Phrase phraseFor(Date date, Date relativeTo, bool isCurrentEvent, Phrase ahead) {
    if (isCurrentEvent) return Phrase::left;
    return relativeTo > date ? Phrase::ago : ahead;
}

/// A preposition that ends with U+2060 is part of the word that follows it.
std::string withPreposition(std::string_view key, std::string_view english, const std::string& text,
                            const platform::Environment& environment) {
    constexpr std::string_view wordJoiner = "\u2060";
    const bool isNumber = !text.empty() && platform::isAsciiDigit(text.front());
    std::string preposition = localizedForm(environment, key, english, {.phrase = isNumber ? "number" : ""});
    if (!preposition.ends_with(wordJoiner)) return preposition + " " + text;
    preposition.resize(preposition.size() - wordJoiner.size());
    return preposition + text;
}

std::string snoozeTime(int minutes, const platform::Environment& environment) {
    return minutes == 1 ? L10n::Alert::_1minute(environment)
                        : L10n::Alert::customMinutes(environment, minutes);
}

}  // namespace

std::string formattedShortRelativeTime(Date date, Date relativeTo, bool forAccessibility, bool isCurrentEvent,
                                       const Formatters& formatters) {
    const platform::Environment& environment = formatters.environment();
    const std::int64_t seconds = wholeSecondsBetween(date, relativeTo);
    if (!isCurrentEvent && isNamedTomorrow(date, relativeTo, seconds, formatters)) {
        return L10n::TimeFormat::tomorrow(environment) + " " + formatters.timeOnly().string(date);
    }
    const Amounts amounts(environment, phraseFor(date, relativeTo, isCurrentEvent, Phrase::in));
    const auto amount = amounts.spaced(seconds, forAccessibility);
    return amount ? amounts.phrase(*amount) : L10n::TimeFormat::now(environment);
}

std::string formattedCompactRelativeTime(Date date, Date relativeTo, bool isCurrentEvent,
                                         const Formatters& formatters) {
    const platform::Environment& environment = formatters.environment();
    const std::int64_t seconds = wholeSecondsBetween(date, relativeTo);
    if (isNamedTomorrow(date, relativeTo, seconds, formatters)) {
        return L10n::TimeFormat::ExtraShort::tomorrow(environment) + " " + formatters.timeOnly().string(date);
    }
    const Amounts amounts(environment, phraseFor(date, relativeTo, isCurrentEvent, Phrase::bare));
    const auto amount = amounts.compact(seconds);
    return amount ? amounts.phrase(*amount) : L10n::TimeFormat::now(environment);
}

std::string formattedWithOnAndAt(Date date, const DateFormatter& dateFormatter,
                                 const DateFormatter& timeFormatter, const Formatters& formatters, Date now) {
    const platform::Environment& environment = formatters.environment();
    const std::string time =
        withPreposition("TimeFormat.atTime", "at", timeFormatter.string(date, now), environment);
    if (isToday(date, environment.calendar, now)) return time;
    return withPreposition("TimeFormat.onDay", "on", dateFormatter.string(date, now), environment) + " " +
           time;
}

std::string formattedRelativeTime(Date date, Date relativeTo, const Formatters& formatters) {
    return formatters.relativeDefault().string(date, relativeTo);
}

std::string formattedMinutes(int minutes, const Formatters& formatters) {
    return formatters.durationFormatterForAccessibility().string(hbr::minutes(minutes)).value_or("");
}

std::string localizedSnoozeTime(int minutes, const Formatters& formatters) {
    return snoozeTime(minutes, formatters.environment());
}

std::string localizedSnoozeTime(int minutes) {
    return snoozeTime(minutes, *platform::Environment::current());
}

}  // namespace hbr
