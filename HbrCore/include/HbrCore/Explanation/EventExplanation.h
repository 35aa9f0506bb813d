#pragma once

#include <HbrCore/Events/Event.h>
#include <TimeAndText/Date.h>
#include <Values/JsonValue.h>

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace hbr {

/// What decides whether something is listed, in the order in which it is asked.
enum class ListingRule {
    screenshotMode,
    account,
    file,
    calendar,
    delegated,
    duplicate,
    allDay,
    cancelled,
    completed,
    dueDate,
    answer,
    alarm,
    past,
    days,
    excludeRules,
    exclusion,
    call,
    lead,
    travelTime
};

enum class RuleDecision {
    /// Nothing against showing it.
    passes,
    hides,
    /// Would hide it, but does not act on what is under way or pending.
    doesNotAct
};

/// What is put into the text of a reason.
struct ReasonMoment {
    platform::Date date;
    /// Whether the text says "at 10:15" or names the moment alone.
    bool hasPreposition = false;
};
struct ReasonLength {
    double seconds = 0;
};
using ReasonValue = std::variant<std::string, std::int64_t, ReasonMoment, ReasonLength>;

/// Why a rule decided as it did, in no language yet: whoever shows it has a text for each name.
struct Reason {
    /// "call.missing".
    std::string name;
    /// In the order of the English text; the first of several numbers chooses the plural form.
    std::vector<ReasonValue> values = {};
    /// Reasons that the text is made of; they are put in before the values.
    std::vector<Reason> parts = {};
};

/// What one rule decided, and the command that changes it where there is one.
struct RuleVerdict {
    ListingRule rule = ListingRule::calendar;
    RuleDecision decision = RuleDecision::passes;
    Reason reason;
    std::optional<std::string> command = std::nullopt;
};

/// Under which heading an event is listed.
enum class ListedState { current, pending, upcoming };

/// Why something is listed or not.
struct EventExplanation {
    /// Absent where there is no event yet: an account or an item of a file that cannot be read.
    std::optional<Event> event;
    /// Absent when it is not listed.
    std::optional<ListedState> state;
    /// The alert to come, of an upcoming event.
    std::optional<platform::Date> alertDate;
    std::vector<RuleVerdict> verdicts;

    bool isShown() const { return state.has_value(); }
    /// The rules that hide it; all of them have to change for it to be listed.
    std::vector<RuleVerdict> causes() const;
};

std::string_view rawValue(ListingRule rule);
std::string_view rawValue(RuleDecision decision);
std::string_view rawValue(ListedState state);

/// {"event", "shown", "state", "alertDate", "rules": [{"rule", "decision", "detail", "command"}]}; "event" is
/// null where there is none, other fields that do not apply are left out. `detail` words a reason.
platform::JsonValue explanationJson(const EventExplanation& explanation,
                                    const std::function<std::string(const Reason&)>& detail);

}  // namespace hbr
