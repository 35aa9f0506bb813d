#include "ZoneDefinition.h"

#include "RuleExpansion.h"

#include <algorithm>

namespace platform {
namespace {

/// Transitions are worked out to this year; the last offset holds after it.
constexpr int lastTransitionYear = 2100;

void appendTransitions(const ZoneDefinition::Observance& observance,
                       std::vector<TimeZone::Transition>& transitions) {
    const int before = observance.offsetFrom.value_or(*observance.offsetTo);
    const auto add = [&](std::int64_t local, bool isUtc = false) {
        transitions.push_back({isUtc ? local : local - before, *observance.offsetTo});
    };
    add(secondsOf(observance.start->local), observance.start->isUtc);
    for (const auto& date : observance.dates)
        add(secondsOf(date.local), date.isUtc);
    // Some begin in 1601; nobody's calendar does.
    const auto earliest = secondsOf({1960, 1, 1, 0, 0, 0});
    const auto horizon = secondsOf({lastTransitionYear, 1, 1, 0, 0, 0});
    for (const auto& text : observance.rules) {
        std::string problem;
        const auto rule = RecurrenceRule::parse(text, problem);
        if (!rule || rule->frequency < RecurrenceRule::Frequency::daily) continue;
        int count = 0;
        const auto start = secondsOf(observance.start->local);
        RuleExpansion(*rule, observance.start->local, false)
            .visit(rule->count ? start : std::max(start, earliest), horizon, [&](std::int64_t local) {
                if (rule->count && ++count > *rule->count) return false;
                if (local == start) return true;
                if (rule->until) {
                    const auto last = secondsOf(rule->until->local) + (rule->until->isDate ? 86399 : 0);
                    if ((rule->until->isUtc ? local - before : local) > last) return false;
                }
                add(local);
                return transitions.size() < 2000;
            });
    }
}

}  // namespace

std::optional<TimeZone> ZoneDefinition::timeZone() const {
    std::vector<TimeZone::Transition> transitions;
    std::optional<int> earliestFrom;
    std::int64_t earliest = INT64_MAX;
    for (const auto& observance : observances) {
        if (!observance.start || !observance.offsetTo) continue;
        appendTransitions(observance, transitions);
        const auto at = secondsOf(observance.start->local);
        if (at < earliest) {
            earliest = at;
            earliestFrom = observance.offsetFrom.value_or(*observance.offsetTo);
        }
    }
    if (transitions.empty()) return std::nullopt;
    std::stable_sort(transitions.begin(), transitions.end(),
                     [](const auto& a, const auto& b) { return a.at < b.at; });
    const auto sameMoment = [](const auto& a, const auto& b) { return a.at == b.at; };
    transitions.erase(std::unique(transitions.begin(), transitions.end(), sameMoment), transitions.end());
    return TimeZone::fromTransitions(tzid, *earliestFrom, std::move(transitions));
}

std::optional<int> parseUtcOffset(std::string_view text) {
    text = trimmedAscii(text);
    if (text.empty() || (text.front() != '+' && text.front() != '-')) return std::nullopt;
    const int sign = text.front() == '-' ? -1 : 1;
    int fields[3] = {0, 0, 0};
    std::size_t digitCount = 0;
    for (const char c : text.substr(1)) {
        if (c == ':') continue;
        if (c < '0' || c > '9' || digitCount >= 6) return std::nullopt;
        fields[digitCount / 2] = fields[digitCount / 2] * 10 + (c - '0');
        ++digitCount;
    }
    if (digitCount != 2 && digitCount != 4 && digitCount != 6) return std::nullopt;
    if (fields[0] > 23 || fields[1] > 59 || fields[2] > 59) return std::nullopt;
    return sign * (fields[0] * 3600 + fields[1] * 60 + fields[2]);
}

}  // namespace platform
