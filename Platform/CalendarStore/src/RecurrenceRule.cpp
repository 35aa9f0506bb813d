#include "RecurrenceRule.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace platform {
namespace {

using Frequency = RecurrenceRule::Frequency;

std::optional<int> integer(std::string_view text) {
    text = trimmedAscii(text);
    if (text.starts_with('+')) text.remove_prefix(1);
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (text.empty() || error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return value;
}

bool parseIntegers(std::string_view text, int low, int high, bool negativeToo, std::vector<int>& into) {
    for (const auto piece : commaSeparated(text)) {
        const auto value = integer(piece);
        if (!value) return false;
        const bool isInRange = *value >= low && *value <= high;
        const bool isInRangeFromTheEnd = negativeToo && *value <= -low && *value >= -high;
        if (!isInRange && !isInRangeFromTheEnd) return false;
        into.push_back(*value);
    }
    std::sort(into.begin(), into.end());
    into.erase(std::unique(into.begin(), into.end()), into.end());
    return true;
}

std::optional<int> weekdayNumber(std::string_view text) {
    constexpr std::array<std::string_view, 7> names = {"SU", "MO", "TU", "WE", "TH", "FR", "SA"};
    for (int i = 0; i < 7; ++i) {
        if (equalIgnoringCase(text, names[static_cast<std::size_t>(i)])) return i;
    }
    return std::nullopt;
}

bool parseWeekdays(std::string_view text, std::vector<RecurrenceRule::Weekday>& into) {
    for (auto piece : commaSeparated(text)) {
        piece = trimmedAscii(piece);
        if (piece.size() < 2) return false;
        const auto day = weekdayNumber(piece.substr(piece.size() - 2));
        const auto positionText = piece.substr(0, piece.size() - 2);
        const auto position = positionText.empty() ? std::optional<int>(0) : integer(positionText);
        if (!day || !position || *position < -53 || *position > 53) return false;
        const auto isSame = [&](const auto& known) {
            return known.position == *position && known.day == *day;
        };
        if (std::none_of(into.begin(), into.end(), isSame)) into.push_back({*position, *day});
    }
    return true;
}

std::optional<Frequency> frequencyOf(std::string_view text) {
    constexpr std::array<std::string_view, 7> names = {"SECONDLY", "MINUTELY", "HOURLY", "DAILY",
                                                       "WEEKLY",   "MONTHLY",  "YEARLY"};
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (equalIgnoringCase(text, names[i])) return static_cast<Frequency>(i);
    }
    return std::nullopt;
}

/// False when the part's value is wrong. Unknown parts are skipped.
bool parsePart(RecurrenceRule& rule, std::string_view name, std::string_view value, bool& hasFrequency) {
    const auto is = [&](std::string_view known) { return equalIgnoringCase(name, known); };
    if (is("FREQ")) {
        const auto frequency = frequencyOf(value);
        if (frequency) rule.frequency = *frequency;
        hasFrequency = frequency.has_value();
        return hasFrequency;
    }
    if (is("INTERVAL")) {
        const auto interval = integer(value);
        if (!interval || *interval < 1 || *interval > 1'000'000) return false;
        rule.interval = *interval;
        return true;
    }
    if (is("COUNT")) {
        rule.count = integer(value);
        return rule.count && *rule.count > 0;
    }
    if (is("UNTIL")) {
        rule.until = parseWrittenTime(value);
        return rule.until.has_value();
    }
    if (is("WKST")) {
        const auto day = weekdayNumber(value);
        if (day) rule.weekStart = *day;
        return day.has_value();
    }
    if (is("BYSECOND")) return parseIntegers(value, 0, 60, false, rule.seconds);
    if (is("BYMINUTE")) return parseIntegers(value, 0, 59, false, rule.minutes);
    if (is("BYHOUR")) return parseIntegers(value, 0, 23, false, rule.hours);
    if (is("BYDAY")) return parseWeekdays(value, rule.weekdays);
    if (is("BYMONTHDAY")) return parseIntegers(value, 1, 31, true, rule.monthDays);
    if (is("BYYEARDAY")) return parseIntegers(value, 1, 366, true, rule.yearDays);
    if (is("BYWEEKNO")) return parseIntegers(value, 1, 53, true, rule.weekNumbers);
    if (is("BYMONTH")) return parseIntegers(value, 1, 12, false, rule.months);
    if (is("BYSETPOS")) return parseIntegers(value, 1, 366, true, rule.setPositions);
    if (is("RSCALE")) return equalIgnoringCase(value, "GREGORIAN");
    return true;
}

}  // namespace

std::optional<RecurrenceRule> RecurrenceRule::parse(std::string_view text, std::string& problem) {
    RecurrenceRule rule;
    bool hasFrequency = false;
    text = trimmedAscii(text);
    while (!text.empty()) {
        const auto end = std::min(text.find(';'), text.size());
        const auto part = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        const auto equals = part.find('=');
        // "BYDAY=" without a value restricts nothing.
        if (equals == std::string_view::npos || trimmedAscii(part.substr(equals + 1)).empty()) continue;
        const auto name = trimmedAscii(part.substr(0, equals));
        const auto value = trimmedAscii(part.substr(equals + 1));
        if (!parsePart(rule, name, value, hasFrequency)) {
            problem = "recurrence rule with a wrong " + std::string(name) + " \"" +
                      std::string(value.substr(0, 40)) + "\"";
            return std::nullopt;
        }
    }
    if (!hasFrequency) {
        problem = "recurrence rule without FREQ";
        return std::nullopt;
    }
    return rule;
}

}  // namespace platform
