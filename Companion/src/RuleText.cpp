#include "RuleText.h"

#include "WhenWords.h"

#include <Foundation/NearestName.h>
#include <Foundation/RegularExpression.h>
#include <Foundation/Text.h>
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

std::string listed(const std::vector<std::string>& names) {
    std::string list;
    for (const auto& name : names)
        list += (list.empty() ? "" : ", ") + name;
    return list;
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
            refuse("\"" + day + "\" is no day of the week; type 1 (Sunday) to 7 (Saturday) or names, " +
                   "with commas between them");
        }
        days.insert(named ? *named : *number);
    }
    std::string value;
    for (const int day : days)
        value += (value.empty() ? "" : ",") + std::to_string(day);
    return value;
}

void requireWorkingPattern(const FilterRule& rule) {
    try {
        platform::RegularExpression{wildcardPattern(rule.value)};
    } catch (const platform::RegularExpression::Error&) {
        refuse("the pattern \"" + rule.value +
               "\" would never match: brackets and backslashes have a meaning in patterns; " +
               "put a backslash before one that is meant as it stands");
    }
}

}  // namespace

std::string ruleText(const FilterRule& rule, const platform::Environment& environment) {
    const std::string text = onOneLine(displayText(rule, environment));
    if (rule.comparison == Comparison::isOnDayOfWeek) return text;
    return text + ", letter case " + (rule.isCaseSensitive ? "matters" : "does not matter");
}

bool isFieldName(const std::string& word) {
    return namedCase<FilterRule::Field>(word, FilterRule::allFields).has_value();
}

FilterRule typedRule(const std::vector<std::string>& words, bool isCaseSensitive,
                     const platform::Environment& environment) {
    const std::span<const FilterRule::Field> fields = FilterRule::allFields;
    if (words.empty()) refuse("say FIELD COMPARISON VALUE, for example: title contains Lunch");
    const auto field = namedCase(words[0], fields);
    if (!field) {
        refuse("there is no field \"" + words[0] + "\"" + platform::proposal(words[0], namesOf(fields)) +
               "; there are " + listed(namesOf(fields)));
    }
    FilterRule rule = FilterRule::makeDefault();
    rule.field = *field;
    rule.isCaseSensitive = isCaseSensitive;
    const auto allowed = allowedComparisonOperations(*field);
    const auto comparison = words.size() > 1 ? namedCase(words[1], allowed) : std::nullopt;
    if (!comparison && allowed.size() > 1) {
        const std::string word = words.size() > 1 ? words[1] : "";
        refuse("\"" + word + "\" is no comparison for " + std::string(rawValue(*field)) +
               platform::proposal(word, namesOf(allowed)) + "; there are " + listed(namesOf(allowed)));
    }
    rule.comparison = comparison.value_or(defaultComparisonOperation(*field));
    const bool isAboutDays = rule.comparison == Comparison::isOnDayOfWeek;
    for (std::size_t i = comparison ? 2 : 1; i < words.size(); ++i)
        rule.value += (rule.value.empty() ? "" : isAboutDays ? "," : " ") + words[i];
    if (isAboutDays) rule.value = weekdayNumbers(rule.value, environment);
    if (rule.value.empty()) refuse("the value is missing; a rule without one leaves nothing out");
    if (rule.comparison == Comparison::matches) requireWorkingPattern(rule);
    return rule;
}

FilterRule chosenRule(const std::string& wanted, const std::vector<FilterRule>& rules) {
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
    throw CommandFailure(ExitCode::nothingThere,
                         (found.empty() ? "no rule is called \"" : "several rules are called \"") + wanted +
                             "\"; see them with: heedbanner rules list");
}

}  // namespace hbr
