#include <HbrCore/Events/FilterRuleMatcher.h>

#include <TimeAndText/Ascii.h>
#include <TimeAndText/Normalization.h>
#include <TimeAndText/RegularExpression.h>
#include <TimeAndText/Text.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <iterator>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <variant>
#include <vector>

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

/// Canonically composed, lower-cased when letter case does not matter.
std::string folded(const std::string& text, bool isCaseSensitive) {
    return platform::canonicallyComposed(isCaseSensitive ? text : platform::lowercased(text));
}

/// A folded text, for comparing it with many values. Texts are runs of user-perceived characters: "e" is not
/// found inside "e" with a combining accent.
class FoldedText {
  public:
    explicit FoldedText(std::string text) : text_(std::move(text)), isAscii_(platform::isAscii(text_)) {}

    bool equals(std::string_view value) const { return text_ == value; }
    bool beginsWith(std::string_view value) { return text_.starts_with(value) && isBoundary(value.size()); }
    bool endsWith(std::string_view value) {
        return text_.ends_with(value) && isBoundary(text_.size() - value.size());
    }
    bool contains(std::string_view value) {
        for (auto at = text_.find(value); at != std::string::npos; at = text_.find(value, at + 1)) {
            if (isBoundary(at) && isBoundary(at + value.size())) return true;
        }
        return false;
    }

  private:
    bool isBoundary(std::size_t position) {
        if (position == 0 || position == text_.size() || isAscii_) return true;
        if (!boundaries_) boundaries_ = platform::characterBoundaries(text_);
        return std::ranges::binary_search(*boundaries_, position);
    }

    const std::string text_;
    const bool isAscii_;
    std::optional<std::vector<std::size_t>> boundaries_;
};

/// A text of an item, folded at most once in each of the two ways.
class ComparedText {
  public:
    explicit ComparedText(std::string text) : text_(std::move(text)) {}

    const std::string& asWritten() const { return text_; }
    FoldedText& folded(bool isCaseSensitive) {
        auto& kept = isCaseSensitive ? sensitive_ : insensitive_;
        if (!kept) kept.emplace(hbr::folded(text_, isCaseSensitive));
        return *kept;
    }

  private:
    std::string text_;
    std::optional<FoldedText> sensitive_;
    std::optional<FoldedText> insensitive_;
};

/// What the rules compare of one item, each property read with the first rule that asks for it.
template <class Item>
class ComparedItem {
  public:
    using Property = std::variant<std::monostate, ComparedText, platform::Date>;

    explicit ComparedItem(const Item& item) : item_(item) {}

    Property& property(Field field) {
        auto& kept = properties_[static_cast<std::size_t>(field)];
        if (!kept) kept.emplace(read(field));
        return *kept;
    }

  private:
    Property read(Field field) const {
        auto value = item_.value(propertyKey(field, item_));
        if (auto* text = std::get_if<std::string>(&value)) return ComparedText(std::move(*text));
        if (const auto* date = std::get_if<platform::Date>(&value)) return *date;
        return std::monostate{};
    }

    const Item& item_;
    std::array<std::optional<Property>, FilterRule::allFields.size()> properties_;
};

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
    /// Folded.
    std::string value;
    std::optional<platform::RegularExpression> pattern;
    std::set<int> days;

    explicit Rule(const FilterRule& rule)
        : field(rule.field),
          comparison(rule.comparison),
          isCaseSensitive(rule.isCaseSensitive),
          value(folded(rule.value, rule.isCaseSensitive)) {
        if (comparison == Comparison::matches) {
            pattern = platform::RegularExpression::compile(searchPattern(rule.value),
                                                           {.caseInsensitive = !isCaseSensitive});
        } else if (comparison == Comparison::isOnDayOfWeek) {
            days = weekdays(rule.value);
        }
    }

    bool matchesText(ComparedText& text) const {
        switch (comparison) {
            case Comparison::contains:
                return text.folded(isCaseSensitive).contains(value);
            case Comparison::beginsWith:
                return text.folded(isCaseSensitive).beginsWith(value);
            case Comparison::endsWith:
                return text.folded(isCaseSensitive).endsWith(value);
            case Comparison::equals:
                return text.folded(isCaseSensitive).equals(value);
            case Comparison::matches:
                return pattern && pattern->matchesAnywhere(text.asWritten());
            case Comparison::isOnDayOfWeek:
                return false;
        }
        return false;
    }

    template <class Item>
    bool matches(ComparedItem<Item>& item, const platform::Calendar& calendar) const {
        auto& property = item.property(field);
        if (auto* text = std::get_if<ComparedText>(&property)) return matchesText(*text);
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
    ComparedItem<Item> compared(item);
    return std::ranges::any_of(rules_, [&](const Rule& rule) { return rule.matches(compared, calendar_); });
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
