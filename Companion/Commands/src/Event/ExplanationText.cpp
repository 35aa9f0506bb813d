#include "Event/ExplanationText.h"

#include "Agenda/AgendaText.h"

#include <Words/CompanionText.h>
#include <Words/EventName.h>
#include <Words/OneLine.h>
#include <Words/ReasonText.h>
#include <Words/TextColumns.h>

#include <HbrCore/Events/EventTexts.h>
#include <algorithm>

namespace hbr {

namespace {

std::string ruleName(const platform::Environment& environment, ListingRule rule) {
    return companionText(environment, "Why.rule." + std::string(rawValue(rule)));
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

std::string text(CommandContext& context, const Reason& reason) {
    return reasonText(reason, context.core().formatters(), context.now());
}

std::string shownText(CommandContext& context, const EventExplanation& explanation) {
    switch (*explanation.state) {
        case ListedState::current:
            return text(context, {"shown.current"});
        case ListedState::pending:
            return text(context, {"shown.pending"});
        case ListedState::upcoming:
            break;
    }
    return text(context, {"shown.upcoming", {ReasonMoment{*explanation.alertDate, true}}});
}

bool isHiddenBy(const EventExplanation& explanation, ListingRule rule) {
    return std::ranges::any_of(explanation.causes(),
                               [rule](const RuleVerdict& cause) { return cause.rule == rule; });
}

std::string timesOf(const EventExplanation& explanation, const Formatters& formatters) {
    if (isHiddenBy(explanation, ListingRule::dueDate))
        return companionText(formatters.environment(), "Event.noDate");
    if (isHiddenBy(explanation, ListingRule::allDay))
        return companionText(formatters.environment(), "Event.allDay");
    return timeSpan(*explanation.event, formatters);
}

/// All the commands needed, on one line; nothing if a cause has no command.
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
        : context_(context), console_(context.console()), formatters_(context.core().formatters()) {
        for (const auto& one : explanations) {
            if (one.event) width_ = std::max(width_, columns(timesOf(one, formatters_)));
        }
    }

    std::string head(const EventExplanation& explanation) const {
        std::string text = "  " + padded(timesOf(explanation, formatters_), width_) + " " +
                           console_.colored("▌", explanation.event->color) + " " +
                           titleOf(*explanation.event, formatters_.environment());
        if (explanation.event->calendarName) {
            text += console_.faint("  [" + onOneLine(*explanation.event->calendarName) + "]");
        }
        return text + "\n";
    }

    std::string causes(const EventExplanation& explanation) const {
        const std::string indent(explanation.event ? width_ + 5 : 4, ' ');
        std::string lines;
        for (const auto& cause : explanation.causes()) {
            lines += indent + text(context_, cause.reason) + "\n";
            if (cause.command) lines += indent + console_.bold(onOneLine(*cause.command)) + "\n";
        }
        return lines;
    }

  private:
    CommandContext& context_;
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
    const platform::Environment& environment = *context.environment();
    const Formatters& formatters = context.core().formatters();
    std::string lines;
    if (explanation.event) {
        const Event& event = *explanation.event;
        lines += console.colored("▌", event.color) + " " + console.bold(titleOf(event, environment));
        if (event.calendarName) lines += console.faint("  [" + onOneLine(*event.calendarName) + "]");
        const std::string times = timesOf(explanation, formatters);
        lines += "\n  ";
        if (!isHiddenBy(explanation, ListingRule::dueDate)) {
            lines += dayHeading(event.startDate, context.now(), formatters) + ", ";
        }
        lines += times + console.faint("  " + event.id) + "\n";
    }
    if (explanation.isShown()) {
        lines += "  " + shownText(context, explanation) + "\n\n";
    } else {
        lines += "  " + text(context, {"notShown", {}, {mainCause(explanation).reason}}) + "\n";
        const std::string command = remedy(explanation);
        if (!command.empty())
            lines += "  " + companionText(environment, "Why.toSeeIt") + " " + console.bold(command) + "\n";
        lines += "\n";
    }
    std::size_t width = 0;
    for (const auto& verdict : explanation.verdicts)
        width = std::max(width, columns(ruleName(environment, verdict.rule)));
    for (const auto& verdict : explanation.verdicts) {
        const std::string line = "  " + std::string(marker(verdict.decision)) + " " +
                                 padded(ruleName(environment, verdict.rule), width) + "  " +
                                 text(context, verdict.reason);
        lines += (verdict.decision == RuleDecision::hides ? line : console.faint(line)) + "\n";
        if (verdict.command) {
            lines += std::string(width + 6, ' ') + console.faint(onOneLine(*verdict.command)) + "\n";
        }
    }
    return lines;
}

std::string explanationsText(CommandContext& context, const std::vector<EventExplanation>& explanations) {
    const ListWriter writer(context, explanations);
    std::string lines;
    std::string over;
    std::string unread;
    for (const auto& one : explanations) {
        if (!one.event) {
            unread += writer.causes(one);
        } else if (isMerelyOver(one)) {
            over += writer.head(one);
        } else {
            lines += writer.head(one) + writer.causes(one);
        }
    }
    const auto add = [&](const char* heading, const std::string& part) {
        if (part.empty()) return;
        lines += (lines.empty() ? "" : "\n") +
                 context.console().bold(companionText(*context.environment(), heading)) + "\n" + part;
    };
    add("Why.over", over);
    add("Why.unread", unread);
    return lines;
}

}  // namespace hbr
