#include <HbrCore/Events/FilterRuleNames.h>

#include <HbrLocalization/LocalizedString.h>
#include <TimeAndText/DateFormatter.h>
#include <TimeAndText/Text.h>

#include <charconv>

namespace hbr {

namespace {

std::string dayNames(const std::string& value, const platform::Environment& environment) {
    const auto formatter =
        platform::DateFormatter::withTemplate(environment.locale, environment.calendar, "EEEE");
    std::string names;
    for (const auto& piece : platform::split(value, ",", false)) {
        const std::string text = platform::trimmed(piece);
        int day = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), day);
        const bool isNumber = error == std::errc{} && end == text.data() + text.size();
        if (!isNumber || day < 1 || day > 7) continue;
        // 7 January 2001 was a Sunday.
        const auto date = environment.calendar.date({.year = 2001, .month = 1, .day = 6 + day, .hour = 12});
        names += (names.empty() ? "" : ", ") + formatter.string(*date);
    }
    return names;
}

}  // namespace

std::string displayName(FilterRule::Field field, const platform::Environment& environment) {
    return LocalizedString(environment, "Preferences.ExcludeRules.Field." + std::string(rawValue(field)));
}

std::string displayName(FilterRule::ComparisonOperation comparison,
                        const platform::Environment& environment) {
    return LocalizedString(environment,
                           "Preferences.ExcludeRules.Comparison." + std::string(rawValue(comparison)));
}

std::string displayName(FilterRule::Field field) {
    return displayName(field, *platform::Environment::current());
}

std::string displayName(FilterRule::ComparisonOperation comparison) {
    return displayName(comparison, *platform::Environment::current());
}

std::string displayText(const FilterRule& rule, const platform::Environment& environment) {
    const std::string start =
        displayName(rule.field, environment) + " " + displayName(rule.comparison, environment) + " ";
    const bool isAboutDays = rule.comparison == FilterRule::ComparisonOperation::isOnDayOfWeek;
    return start + (isAboutDays ? dayNames(rule.value, environment) : "\"" + rule.value + "\"");
}

}  // namespace hbr
