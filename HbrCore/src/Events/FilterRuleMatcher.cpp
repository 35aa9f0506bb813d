#include <HbrCore/Events/FilterRuleMatcher.h>

#include <Foundation/Normalization.h>
#include <Foundation/RegularExpression.h>
#include <Foundation/Text.h>

#include <algorithm>
#include <charconv>
#include <iterator>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <variant>

namespace hbr {

using platform::EKEvent;
using platform::EKReminder;
using Comparison = FilterRule::ComparisonOperation;
using Field = FilterRule::Field;

namespace {

std::string_view propertyKey(Field field, const EKEvent&) {
    return field == Field::date ? "startDate" : rawValue(field);
}

std::string_view propertyKey(Field field, const EKReminder&) {
    return field == Field::date ? "dueDate" : rawValue(field);
}

/// What the pattern of a rule is run as. A plain wildcard pattern is searched from the left, each piece
/// between two "*" kept where it is first found: the same texts match, and the time grows with the text's
/// length instead of a power of it. Other patterns run as they are, within the steps of a search.
std::string searchPattern(const std::string& value) {
    constexpr std::string_view marks = "()[]{}|+^$\\";
    if (value.find_first_of(marks) != std::string::npos) return wildcardPattern(value);
    auto pieces = platform::split(value, "*");
    for (auto& piece : pieces)
        std::ranges::replace(piece, '?', '.');
    if (pieces.size() == 1) return "^" + pieces.front() + "$";
    std::string pattern = "^" + pieces.front();
    for (std::size_t i = 1; i + 1 < pieces.size(); ++i) {
        if (!pieces[i].empty()) pattern += "(?>.*?" + pieces[i] + ")";
    }
    return pattern + ".*" + pieces.back() + "$";
}

std::set<int> weekdays(std::string_view value) {
    std::set<int> days;
    for (std::string_view piece : platform::split(value, ",", false)) {
        const auto first = piece.find_first_not_of(" \t");
        if (first == std::string_view::npos) continue;
        piece = piece.substr(first, piece.find_last_not_of(" \t") - first + 1);
        if (piece.size() > 1 && piece.front() == '+' && piece[1] != '-') piece.remove_prefix(1);
        int day = 0;
        const auto [end, error] = std::from_chars(piece.data(), piece.data() + piece.size(), day);
        if (error == std::errc() && end == piece.data() + piece.size()) days.insert(day);
    }
    return days;
}

bool isAscii(std::string_view text) {
    return std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

/// Texts are runs of user-perceived characters: "e" is not found inside "e" with a combining accent.
bool cutsCharacter(std::string_view text, std::size_t position) {
    if (position == 0 || position == text.size() || isAscii(text)) return false;
    return platform::characterCount(text.substr(0, position)) +
               platform::characterCount(text.substr(position)) !=
           platform::characterCount(text);
}

bool contains(std::string_view text, std::string_view value) {
    auto at = text.find(value);
    if (at == std::string_view::npos || isAscii(text)) return at != std::string_view::npos;
    const auto boundaries = platform::characterBoundaries(text);
    for (; at != std::string_view::npos; at = text.find(value, at + 1)) {
        if (std::ranges::binary_search(boundaries, at) &&
            std::ranges::binary_search(boundaries, at + value.size())) {
            return true;
        }
    }
    return false;
}

}  // namespace

std::string wildcardPattern(std::string_view value) {
    std::string pattern = "^";
    for (char character : value) {
        if (character == '?') {
            pattern += '.';
        } else if (character == '*') {
            pattern += ".*";
        } else {
            pattern += character;
        }
    }
    return pattern + "$";
}

struct FilterRuleMatcher::Rule {
    Field field;
    Comparison comparison;
    bool isCaseSensitive;
    /// Canonically composed, lower-cased when letter case does not matter.
    std::string value;
    std::optional<platform::RegularExpression> pattern;
    std::set<int> days;

    explicit Rule(const FilterRule& rule)
        : field(rule.field),
          comparison(rule.comparison),
          isCaseSensitive(rule.isCaseSensitive),
          value(folded(rule.value)) {
        if (comparison == Comparison::matches) {
            pattern = platform::RegularExpression::compile(searchPattern(rule.value),
                                                           {.caseInsensitive = !isCaseSensitive});
        } else if (comparison == Comparison::isOnDayOfWeek) {
            days = weekdays(rule.value);
        }
    }

    std::string folded(const std::string& text) const {
        return platform::canonicallyComposed(isCaseSensitive ? text : platform::lowercased(text));
    }

    bool matchesText(const std::string& text) const {
        switch (comparison) {
            case Comparison::contains:
                return contains(folded(text), value);
            case Comparison::beginsWith: {
                const std::string whole = folded(text);
                return whole.starts_with(value) && !cutsCharacter(whole, value.size());
            }
            case Comparison::endsWith: {
                const std::string whole = folded(text);
                return whole.ends_with(value) && !cutsCharacter(whole, whole.size() - value.size());
            }
            case Comparison::equals:
                return folded(text) == value;
            case Comparison::matches:
                return pattern && pattern->matchesAnywhere(text);
            case Comparison::isOnDayOfWeek:
                return false;
        }
        return false;
    }

    template <class Item>
    bool matches(const Item& item, const platform::Calendar& calendar) const {
        const auto property = item.value(propertyKey(field, item));
        if (const auto* text = std::get_if<std::string>(&property)) return matchesText(*text);
        if (const auto* date = std::get_if<platform::Date>(&property)) {
            return comparison == Comparison::isOnDayOfWeek && days.contains(calendar.weekday(*date));
        }
        return false;
    }
};

FilterRuleMatcher::FilterRuleMatcher(const std::vector<FilterRule>& rules, const platform::Calendar& calendar)
    : calendar_(calendar) {
    for (const FilterRule& rule : rules) {
        // A rule without a value never matches.
        if (!rule.value.empty()) rules_.emplace_back(rule);
    }
}

FilterRuleMatcher::~FilterRuleMatcher() = default;

template <class Item>
bool FilterRuleMatcher::matchesAnyOf(const Item& item) const {
    return std::ranges::any_of(rules_, [&](const Rule& rule) { return rule.matches(item, calendar_); });
}

bool FilterRuleMatcher::matchesAny(const EKEvent& event) const {
    return matchesAnyOf(event);
}
bool FilterRuleMatcher::matchesAny(const EKReminder& reminder) const {
    return matchesAnyOf(reminder);
}

bool matches(const EKEvent& event, const FilterRule& rule, const platform::Calendar& calendar) {
    return FilterRuleMatcher({rule}, calendar).matchesAny(event);
}

bool matches(const EKReminder& reminder, const FilterRule& rule, const platform::Calendar& calendar) {
    return FilterRuleMatcher({rule}, calendar).matchesAny(reminder);
}

namespace {

template <class Item>
std::vector<Item> filtered(const std::vector<Item>& items, const std::vector<FilterRule>& rules,
                           bool excludes, const platform::Calendar& calendar) {
    const FilterRuleMatcher matcher(rules, calendar);
    std::vector<Item> kept;
    std::ranges::copy_if(items, std::back_inserter(kept),
                         [&](const Item& item) { return matcher.matchesAny(*item) != excludes; });
    return kept;
}

}  // namespace

std::vector<platform::EKEventRef> filteredApplyingRules(const std::vector<platform::EKEventRef>& events,
                                                        const std::vector<FilterRule>& rules, bool excludes,
                                                        const platform::Calendar& calendar) {
    return filtered(events, rules, excludes, calendar);
}

std::vector<platform::EKReminderRef> filteredApplyingRules(
    const std::vector<platform::EKReminderRef>& reminders, const std::vector<FilterRule>& rules,
    bool excludes, const platform::Calendar& calendar) {
    return filtered(reminders, rules, excludes, calendar);
}

}  // namespace hbr
