#include "ExplanationText.h"

#include "AgendaText.h"

#include <HbrCore/Events/EventTexts.h>

#include <algorithm>

namespace hbr {

namespace {

std::string_view ruleName(ListingRule rule) {
    switch (rule) {
        case ListingRule::screenshotMode:
            return "demonstration";
        case ListingRule::account:
            return "account";
        case ListingRule::file:
            return "file";
        case ListingRule::calendar:
            return "calendar";
        case ListingRule::delegated:
            return "delegated";
        case ListingRule::duplicate:
            return "same meeting";
        case ListingRule::allDay:
            return "all-day";
        case ListingRule::cancelled:
            return "cancelled";
        case ListingRule::completed:
            return "done";
        case ListingRule::dueDate:
            return "due date";
        case ListingRule::answer:
            return "your answer";
        case ListingRule::alarm:
            return "alarm";
        case ListingRule::past:
            return "time";
        case ListingRule::days:
            return "days ahead";
        case ListingRule::excludeRules:
            return "exclude rules";
        case ListingRule::exclusion:
            return "left out";
        case ListingRule::call:
            return "call";
        case ListingRule::lead:
            return "alert";
        case ListingRule::travelTime:
            return "travel time";
    }
    return "";
}

std::string_view marker(RuleDecision decision) {
    switch (decision) {
        case RuleDecision::passes:
            return "✓";
        case RuleDecision::hides:
            return "✗";
        case RuleDecision::doesNotAct:
            break;
    }
    return "·";
}

std::string shownText(CommandContext& context, const EventExplanation& explanation) {
    switch (*explanation.state) {
        case ListedState::current:
            return "Shown as under way.";
        case ListedState::pending:
            return "Shown as coming up; it is in its alert period.";
        case ListedState::upcoming:
            break;
    }
    const Formatters& formatters = context.core().formatters();
    const platform::Date alert = *explanation.alertDate;
    const bool isToday = context.environment()->calendar.isSameDay(alert, context.now());
    return "Shown as coming up; its alert comes " +
           (isToday ? "at " + formatters.timeOnly().string(alert)
                    : formatters.timeAndDateFormatter().string(alert, context.now())) +
           ".";
}

std::string titleOf(const EventExplanation& explanation) {
    const std::string title = onOneLine(explanation.event->title.value_or(""));
    return title.empty() ? "(no title)" : title;
}

bool isHiddenBy(const EventExplanation& explanation, ListingRule rule) {
    return std::ranges::any_of(explanation.causes(),
                               [rule](const RuleVerdict& cause) { return cause.rule == rule; });
}

std::string timesOf(const EventExplanation& explanation, const Formatters& formatters) {
    if (isHiddenBy(explanation, ListingRule::dueDate)) return "no date";
    if (isHiddenBy(explanation, ListingRule::allDay)) return "all day";
    return timeSpan(*explanation.event, formatters);
}

/// All commands that are needed, in one line; nothing where a cause has none.
std::string remedy(const EventExplanation& explanation) {
    std::string commands;
    for (const auto& cause : explanation.causes()) {
        if (!cause.command) return {};
        commands += (commands.empty() ? "" : " && ") + onOneLine(*cause.command);
    }
    return commands;
}

bool isMerelyOver(const EventExplanation& explanation) {
    const auto causes = explanation.causes();
    return causes.size() == 1 && causes.front().rule == ListingRule::past;
}

class ListWriter {
  public:
    ListWriter(CommandContext& context, const std::vector<EventExplanation>& explanations)
        : console_(context.console()), formatters_(context.core().formatters()) {
        for (const auto& one : explanations) {
            if (one.event) width_ = std::max(width_, columns(timesOf(one, formatters_)));
        }
    }

    std::string head(const EventExplanation& explanation) const {
        std::string text = "  " + padded(timesOf(explanation, formatters_), width_) + " " +
                           console_.colored("▌", explanation.event->color) + " " + titleOf(explanation);
        if (explanation.event->calendarName) {
            text += console_.faint("  [" + onOneLine(*explanation.event->calendarName) + "]");
        }
        return text + "\n";
    }

    std::string causes(const EventExplanation& explanation) const {
        const std::string indent(explanation.event ? width_ + 5 : 4, ' ');
        std::string text;
        for (const auto& cause : explanation.causes()) {
            text += indent + onOneLine(cause.detail) + "\n";
            if (cause.command) text += indent + console_.bold(onOneLine(*cause.command)) + "\n";
        }
        return text;
    }

  private:
    const Console& console_;
    const Formatters& formatters_;
    std::size_t width_ = 0;
};

}  // namespace

RuleVerdict mainCause(const EventExplanation& explanation) {
    const auto causes = explanation.causes();
    const auto fixed = std::ranges::find_if(causes, [](const RuleVerdict& cause) { return !cause.command; });
    return fixed == causes.end() ? causes.front() : *fixed;
}

std::string explanationText(CommandContext& context, const EventExplanation& explanation) {
    const Console& console = context.console();
    const Formatters& formatters = context.core().formatters();
    std::string text;
    if (explanation.event) {
        const Event& event = *explanation.event;
        text += console.colored("▌", event.color) + " " + console.bold(titleOf(explanation));
        if (event.calendarName) text += console.faint("  [" + onOneLine(*event.calendarName) + "]");
        const std::string times = timesOf(explanation, formatters);
        text += "\n  ";
        if (!isHiddenBy(explanation, ListingRule::dueDate)) {
            text += dayHeading(event.startDate, context.now(), formatters) + ", ";
        }
        text += times + console.faint("  " + event.id) + "\n";
    }
    if (explanation.isShown()) {
        text += "  " + shownText(context, explanation) + "\n\n";
    } else {
        text += "  Not shown: " + onOneLine(mainCause(explanation).detail) + ".\n";
        const std::string command = remedy(explanation);
        if (!command.empty()) text += "  To see it: " + console.bold(command) + "\n";
        text += "\n";
    }
    std::size_t width = 0;
    for (const auto& verdict : explanation.verdicts)
        width = std::max(width, ruleName(verdict.rule).size());
    for (const auto& verdict : explanation.verdicts) {
        const std::string line =
            "  " + std::string(marker(verdict.decision)) + " " + padded(ruleName(verdict.rule), width) + "  ";
        text += verdict.decision == RuleDecision::hides ? line + onOneLine(verdict.detail)
                                                        : console.faint(line + onOneLine(verdict.detail));
        text += "\n";
        if (verdict.command) {
            text += std::string(width + 6, ' ') + console.faint(onOneLine(*verdict.command)) + "\n";
        }
    }
    return text;
}

std::string explanationsText(CommandContext& context, const std::vector<EventExplanation>& explanations) {
    const ListWriter writer(context, explanations);
    std::string text;
    std::string over;
    std::string unread;
    for (const auto& one : explanations) {
        if (!one.event) {
            unread += writer.causes(one);
        } else if (isMerelyOver(one)) {
            over += writer.head(one);
        } else {
            text += writer.head(one) + writer.causes(one);
        }
    }
    const auto add = [&](const char* heading, const std::string& part) {
        if (part.empty()) return;
        text += (text.empty() ? "" : "\n") + context.console().bold(heading) + "\n" + part;
    };
    add("Over already", over);
    add("What could not be read", unread);
    return text;
}

}  // namespace hbr
