#include "PosixTimeZoneRule.h"

#include <TimeAndText/Ascii.h>

#include <algorithm>

#include "CivilDays.h"

namespace platform {
namespace {

class RuleReader {
  public:
    explicit RuleReader(std::string_view text) : rest_(text) {}

    bool done() const { return rest_.empty(); }

    bool skip(char expected) {
        if (rest_.empty() || rest_.front() != expected) return false;
        rest_.remove_prefix(1);
        return true;
    }

    /// "CET" or "<+03>", at least three characters of a name.
    bool name() {
        const bool quoted = skip('<');
        std::size_t length = 0;
        while (length < rest_.size() && isNameCharacter(rest_[length], quoted))
            ++length;
        rest_.remove_prefix(length);
        return length >= (quoted ? 1 : 3) && (!quoted || skip('>'));
    }

    std::optional<int> number(int lowest, int highest) {
        int value = 0;
        std::size_t length = 0;
        for (; length < rest_.size() && isAsciiDigit(rest_[length]); ++length) {
            if (length == 3) return std::nullopt;
            value = value * 10 + (rest_[length] - '0');
        }
        rest_.remove_prefix(length);
        if (length == 0 || value < lowest || value > highest) return std::nullopt;
        return value;
    }

    /// "[+-]h[:m[:s]]" in seconds.
    std::optional<int> time(int mostHours) {
        const bool negative = skip('-');
        if (!negative) skip('+');
        const auto hours = number(0, mostHours);
        if (!hours) return std::nullopt;
        int seconds = *hours * 3600;
        for (const int unit : {60, 1}) {
            if (!skip(':')) break;
            const auto part = number(0, 59);
            if (!part) return std::nullopt;
            seconds += *part * unit;
        }
        return negative ? -seconds : seconds;
    }

    /// "Mm.w.d", "Jn" or "n", each with "/time" or without.
    std::optional<PosixTimeZoneRule::DayOfYear> day() {
        using Day = PosixTimeZoneRule::DayOfYear;
        Day result;
        std::optional<int> number;
        if (skip('M')) {
            result.kind = Day::Kind::monthWeekWeekday;
            const auto month = this->number(1, 12);
            if (!month || !skip('.')) return std::nullopt;
            const auto week = this->number(1, 5);
            if (!week || !skip('.')) return std::nullopt;
            result.month = *month;
            result.week = *week;
            number = this->number(0, 6);
        } else if (skip('J')) {
            result.kind = Day::Kind::julianWithoutLeapDay;
            number = this->number(1, 365);
        } else {
            number = this->number(0, 365);
        }
        if (!number) return std::nullopt;
        result.day = *number;
        if (skip('/')) {
            const auto secondOfDay = time(167);
            if (!secondOfDay) return std::nullopt;
            result.secondOfDay = *secondOfDay;
        }
        return result;
    }

    bool atOffset() const { return !rest_.empty() && rest_.front() != ','; }

  private:
    static bool isNameCharacter(char c, bool quoted) {
        if (isAsciiLetter(c)) return true;
        return quoted && (isAsciiDigit(c) || c == '+' || c == '-');
    }
    std::string_view rest_;
};

}  // namespace

std::optional<PosixTimeZoneRule> PosixTimeZoneRule::parse(std::string_view text) {
    RuleReader reader(text);
    PosixTimeZoneRule rule;
    if (!reader.name()) return std::nullopt;
    // POSIX counts hours west of Greenwich.
    const auto west = reader.time(24);
    if (!west) return std::nullopt;
    rule.standardOffset_ = -*west;
    if (reader.done()) return rule;

    Daylight daylight;
    daylight.offset = rule.standardOffset_ + 3600;
    if (!reader.name()) return std::nullopt;
    if (reader.atOffset()) {
        const auto daylightWest = reader.time(24);
        if (!daylightWest) return std::nullopt;
        daylight.offset = -*daylightWest;
    }
    if (!reader.skip(',')) return std::nullopt;
    const auto start = reader.day();
    if (!start || !reader.skip(',')) return std::nullopt;
    const auto end = reader.day();
    if (!end || !reader.done()) return std::nullopt;
    daylight.start = *start;
    daylight.end = *end;
    rule.daylight_ = daylight;
    return rule;
}

std::int64_t PosixTimeZoneRule::DayOfYear::localSecondsIn(int year) const {
    std::int64_t days = 0;
    switch (kind) {
        case Kind::zeroBased:
            days = daysSince1970(year, 1, 1) + day;
            break;
        case Kind::julianWithoutLeapDay: {
            const bool leap = daysSince1970(year, 3, 1) - daysSince1970(year, 2, 1) == 29;
            days = daysSince1970(year, 1, day) + (leap && day >= 60 ? 1 : 0);
            break;
        }
        case Kind::monthWeekWeekday: {
            const std::int64_t first = daysSince1970(year, month, 1);
            days = first + (day - weekdayOfDays(first) + 7) % 7 + (week - 1) * 7;
            if (days >= daysSince1970(year, month + 1, 1)) days -= 7;
            break;
        }
    }
    return days * 86400 + secondOfDay;
}

std::array<TimeZone::Transition, 2> PosixTimeZoneRule::transitionsIn(int year) const {
    const Daylight daylight = daylight_.value();
    std::array<TimeZone::Transition, 2> changes{{
        {daylight.start.localSecondsIn(year) - standardOffset_, daylight.offset},
        {daylight.end.localSecondsIn(year) - daylight.offset, standardOffset_},
    }};
    if (changes[1].at < changes[0].at) std::swap(changes[0], changes[1]);
    return changes;
}

}  // namespace platform
