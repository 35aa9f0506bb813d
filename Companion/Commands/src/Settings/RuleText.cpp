#include "Settings/RuleText.h"

#include <TimeAndText/JoinedText.h>
#include <TimeAndText/RegularExpression.h>
#include <TimeAndText/Text.h>
#include <When/WhenWords.h>
#include <Words/CompanionText.h>
#include <Words/NameProposal.h>
#include <Words/OneLine.h>

#include <HbrCore/Events/FilterRuleMatcher.h>
#include <HbrCore/Events/FilterRuleNames.h>
#include <algorithm>
#include <charconv>
#include <optional>
#include <set>

namespace hbr {

namespace {

using Comparison = FilterRule::ComparisonOperation;

[[noreturn]] void refuse(const std::string& text) {
    throw CommandFailure(ExitCode::wrongUsage, "rules: " + text);
}

[[noreturn]] void refuse(const platform::Environment& environment, std::string_view key,
                         std::initializer_list<L10n::FormatArgument> arguments = {}) {
    refuse(companionText(environment, key, arguments));
}

/// "beginsWith", "begins with" and "begins-with" are the same.
std::string key(std::string_view name) {
    std::string result = platform::lowercased(name);
    std::erase_if(result, [](char c) { return c == ' ' || c == '-' || c == '_'; });
    return result;
}

template <class Case>
std::optional<Case> namedCase(std::string_view word, std::span<const Case> cases) {
    for (const Case one : cases) {
        if (key(word) == key(rawValue(one)) || key(word) == key(displayName(one))) return one;
    }
    return std::nullopt;
}

template <class Case>
std::vector<std::string> namesOf(std::span<const Case> cases) {
    std::vector<std::string> names;
    for (const Case one : cases)
        names.emplace_back(rawValue(one));
    return names;
}

std::optional<int> wholeNumber(std::string_view text) {
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
    return value;
}

std::string weekdayNumbers(const std::string& typed, const platform::Environment& environment) {
    const WhenWords words(environment);
    std::set<int> days;
    for (const auto& piece : platform::split(typed, ",", false)) {
        const std::string day = platform::trimmed(piece);
        if (day.empty()) continue;
        const auto number = wholeNumber(day);
        const auto named = number ? std::nullopt : words.weekday(day);
        if (!named && (!number || *number < 1 || *number > 7)) {
            refuse(environment, "Rules.noWeekday", {day});
        }
        days.insert(named ? *named : *number);
    }
    std::string value;
    for (const int day : days)
        value += (value.empty() ? "" : ",") + std::to_string(day);
    return value;
}

void requireWorkingPattern(const FilterRule& rule, const platform::Environment& environment) {
    try {
        platform::RegularExpression{wildcardPattern(rule.value)};
    } catch (const platform::RegularExpression::Error&) {
        refuse(environment, "Rules.brokenPattern", {rule.value});
    }
}

}  // namespace

std::string ruleText(const FilterRule& rule, const platform::Environment& environment) {
    const std::string text = onOneLine(displayText(rule, environment));
    if (rule.comparison == Comparison::isOnDayOfWeek) return text;
    return text + ", " +
           companionText(environment, rule.isCaseSensitive ? "Rules.caseMatters" : "Rules.caseIgnored");
}

bool isFieldName(const std::string& word) {
    return namedCase<FilterRule::Field>(word, FilterRule::allFields).has_value();
}

FilterRule typedRule(const std::vector<std::string>& words, bool isCaseSensitive,
                     const platform::Environment& environment) {
    const std::span<const FilterRule::Field> fields = FilterRule::allFields;
    if (words.empty()) refuse(environment, "Rules.sayRule");
    const auto field = namedCase(words[0], fields);
    if (!field) {
        refuse(companionText(environment, "Rules.noField", {words[0]}) +
               nameProposal(environment, words[0], namesOf(fields)) + "; " +
               companionText(environment, "Rules.thereAre", {platform::joined(namesOf(fields))}));
    }
    FilterRule rule = FilterRule::makeDefault();
    rule.field = *field;
    rule.isCaseSensitive = isCaseSensitive;
    const auto allowed = allowedComparisonOperations(*field);
    const auto comparison = words.size() > 1 ? namedCase(words[1], allowed) : std::nullopt;
    if (!comparison && allowed.size() > 1) {
        const std::string word = words.size() > 1 ? words[1] : "";
        refuse(companionText(environment, "Rules.noComparison", {word, rawValue(*field)}) +
               nameProposal(environment, word, namesOf(allowed)) + "; " +
               companionText(environment, "Rules.thereAre", {platform::joined(namesOf(allowed))}));
    }
    rule.comparison = comparison.value_or(defaultComparisonOperation(*field));
    const bool isAboutDays = rule.comparison == Comparison::isOnDayOfWeek;
    for (std::size_t i = comparison ? 2 : 1; i < words.size(); ++i)
        rule.value += (rule.value.empty() ? "" : isAboutDays ? "," : " ") + words[i];
    if (isAboutDays) rule.value = weekdayNumbers(rule.value, environment);
    if (rule.value.empty()) refuse(environment, "Rules.noValue");
    if (rule.comparison == Comparison::matches) requireWorkingPattern(rule, environment);
    return rule;
}

FilterRule chosenRule(const std::string& wanted, const std::vector<FilterRule>& rules,
                      const platform::Environment& environment) {
    const auto number = wholeNumber(wanted);
    if (number && *number >= 1 && static_cast<std::size_t>(*number) <= rules.size()) {
        return rules[static_cast<std::size_t>(*number) - 1];
    }
    std::vector<FilterRule> found;
    for (const auto& rule : rules) {
        if (platform::lowercased(rule.id.uuidString()).starts_with(platform::lowercased(wanted)) &&
            !wanted.empty())
            found.push_back(rule);
    }
    if (found.size() == 1) return found.front();
    throw CommandFailure(
        ExitCode::nothingThere,
        companionText(environment, found.empty() ? "Rules.unknown" : "Rules.several", {wanted}));
}

}  // namespace hbr
