#include <HbrCore/Explanation/EventExplanation.h>

#include <HbrCore/Events/EventJson.h>

#include <algorithm>
#include <iterator>

namespace hbr {

std::vector<RuleVerdict> EventExplanation::causes() const {
    std::vector<RuleVerdict> hiding;
    std::ranges::copy_if(verdicts, std::back_inserter(hiding),
                         [](const RuleVerdict& verdict) { return verdict.decision == RuleDecision::hides; });
    return hiding;
}

std::string_view rawValue(ListingRule rule) {
    switch (rule) {
        case ListingRule::screenshotMode:
            return "screenshotMode";
        case ListingRule::account:
            return "account";
        case ListingRule::file:
            return "file";
        case ListingRule::calendar:
            return "calendar";
        case ListingRule::delegated:
            return "delegated";
        case ListingRule::duplicate:
            return "duplicate";
        case ListingRule::allDay:
            return "allDay";
        case ListingRule::cancelled:
            return "cancelled";
        case ListingRule::completed:
            return "completed";
        case ListingRule::dueDate:
            return "dueDate";
        case ListingRule::answer:
            return "answer";
        case ListingRule::alarm:
            return "alarm";
        case ListingRule::past:
            return "past";
        case ListingRule::days:
            return "days";
        case ListingRule::excludeRules:
            return "excludeRules";
        case ListingRule::exclusion:
            return "exclusion";
        case ListingRule::call:
            return "call";
        case ListingRule::lead:
            return "lead";
        case ListingRule::travelTime:
            return "travelTime";
    }
    return "";
}

std::string_view rawValue(RuleDecision decision) {
    switch (decision) {
        case RuleDecision::passes:
            return "passes";
        case RuleDecision::hides:
            return "hides";
        case RuleDecision::doesNotAct:
            return "doesNotAct";
    }
    return "";
}

std::string_view rawValue(ListedState state) {
    switch (state) {
        case ListedState::current:
            return "current";
        case ListedState::pending:
            return "pending";
        case ListedState::upcoming:
            return "upcoming";
    }
    return "";
}

platform::JsonValue explanationJson(const EventExplanation& explanation,
                                    const std::function<std::string(const Reason&)>& detail) {
    using platform::JsonValue;
    auto rules = JsonValue::array();
    for (const auto& verdict : explanation.verdicts) {
        auto rule = JsonValue::object();
        rule.set("rule", rawValue(verdict.rule)).set("decision", rawValue(verdict.decision));
        rule.set("detail", detail(verdict.reason));
        rule.setIfPresent("command", verdict.command);
        rules.append(std::move(rule));
    }
    auto object = JsonValue::object();
    object.set("event", explanation.event ? eventJson(*explanation.event) : JsonValue(nullptr));
    object.set("shown", explanation.isShown());
    if (explanation.state) object.set("state", rawValue(*explanation.state));
    if (explanation.alertDate) object.set("alertDate", platform::formatRfc3339(*explanation.alertDate));
    object.set("rules", std::move(rules));
    return object;
}

}  // namespace hbr
