#include "Event/EventExplanations.h"

#include "Agenda/AgendaText.h"
#include "Event/EventChoice.h"
#include "Event/SkippedItems.h"
#include "Framework/ProgramDiagnostics.h"

#include <Words/CompanionText.h>
#include <Words/EventMatch.h>
#include <Words/NameProposal.h>
#include <Words/ReasonText.h>

#include <HbrCore/Explanation/ListableItems.h>
#include <algorithm>

namespace hbr {

namespace {

/// A title is searched near today first, then beyond what any setting shows.
constexpr std::pair<int, int> searchedDays[] = {{-7, 60}, {-366, 740}};

std::vector<SkippedItem> skippedNow(CommandContext& context) {
    return skippedItems(
        std::static_pointer_cast<ProgramDiagnostics>(context.environment()->diagnostics)->all());
}

EventExplanation unread(ListingRule rule, Reason reason) {
    EventExplanation explanation;
    explanation.verdicts.push_back({rule, RuleDecision::hides, std::move(reason)});
    return explanation;
}

EventExplanation unread(const SkippedItem& item) {
    const std::string place = describe(item.diagnostic);
    return unread(ListingRule::file, item.title.empty() ? Reason{"file.item", {place}}
                                                        : Reason{"file.titledItem", {item.title, place}});
}

std::vector<EventExplanation> unreadAccounts(CommandContext& context) {
    std::vector<EventExplanation> list;
    for (const auto& report : context.core().aggregatedEventStore().report()) {
        if (report.readable) continue;
        list.push_back(
            unread(ListingRule::account, {"account.unreadable", {report.account.name, report.problem}}));
    }
    return list;
}

std::vector<Event> outlinesOf(const std::vector<ListableItem>& items) {
    std::vector<Event> outlines;
    for (const auto& item : items)
        outlines.push_back(outlineOf(item));
    return outlines;
}

/// Everything on the days from `first` until before `last`, relative to `day`.
std::vector<ListableItem> itemsOfDays(CommandContext& context, platform::Date day, int first, int last) {
    const platform::Calendar& calendar = context.environment()->calendar;
    const auto start = [&](int days) { return calendar.startOfDay(calendar.addingDays(day, days)); };
    return listableItems(context.core(), start(first), start(last));
}

[[noreturn]] void failUnknown(CommandContext& context, const std::string& wanted,
                              std::optional<platform::Date> day, const std::vector<std::string>& titles) {
    const platform::Environment& environment = *context.environment();
    const Formatters& formatters = context.core().formatters();
    const std::string date = day ? formatters.dateOnly().string(*day) : "";
    std::string text = day ? companionText(environment, "Choice.noMatchOfDay", {date, wanted})
                           : companionText(environment, "Choice.noMatch", {wanted});
    text += nameProposal(environment, wanted, titles);
    for (const auto& account : unreadAccounts(context))
        text += "\n  " + reasonText(account.verdicts.front().reason, formatters, context.now());
    throw CommandFailure(ExitCode::nothingThere, text);
}

}  // namespace

EventExplainer eventExplainer(CommandContext& context) {
    const auto decided = context.records().decidedIdentifiers();
    return {context.core(), std::set<std::string>(decided.begin(), decided.end())};
}

DayExplanations dayExplanations(CommandContext& context, platform::Date day) {
    const EventExplainer explainer = eventExplainer(context);
    DayExplanations result;
    for (const auto& item : itemsOfDays(context, day, 0, 1)) {
        auto explanation = explainer.explain(item);
        if (!explanation.isShown()) {
            result.notShown.push_back(std::move(explanation));
            continue;
        }
        ++result.shownCount;
        const auto* event = std::get_if<platform::EKEventRef>(&item);
        const auto source = event ? (*event)->calendar->source : nullptr;
        if (source && source->isDelegate) result.delegatedAccounts.insert(source->title);
    }
    std::ranges::move(unreadAccounts(context), std::back_inserter(result.notShown));
    for (const auto& item : skippedNow(context))
        result.notShown.push_back(unread(item));
    return result;
}

std::string DayExplanations::heading(CommandContext& context, platform::Date day) const {
    const std::string name = dayHeading(day, context.now(), context.core().formatters());
    const auto hidden = static_cast<std::size_t>(
        std::ranges::count_if(notShown, [](const EventExplanation& one) { return one.event.has_value(); }));
    const std::size_t total = shownCount + hidden;
    const platform::Environment& environment = *context.environment();
    if (total == 0) return companionText(environment, "Why.day.empty", {name});
    if (hidden == 0) return companionText(environment, "Why.day.complete", {name});
    return companionText(environment, "Why.day.hidden",
                         {name, static_cast<std::int64_t>(hidden), static_cast<std::int64_t>(total)});
}

EventExplanation chosenExplanation(CommandContext& context, const std::string& wanted,
                                   std::optional<platform::Date> day) {
    if (wanted == "now" || wanted == "next") {
        const auto explanation = explanationOf(context, chosenEvent(context, wanted));
        if (explanation) return *explanation;
    }
    std::vector<std::string> titles;
    for (const auto& [first, last] : searchedDays) {
        auto items =
            day ? itemsOfDays(context, *day, 0, 1) : itemsOfDays(context, context.now(), first, last);
        if (!day) std::ranges::move(undatedTasks(context.core()), std::back_inserter(items));
        const auto outlines = outlinesOf(items);
        auto found = matchingEvents(outlines, wanted, context.now());
        std::ranges::stable_sort(
            found, {}, [](const Event& event) { return event.startDate.timeIntervalSinceReferenceDate(); });
        if (found.size() > 1) {
            throw CommandFailure(ExitCode::nothingThere,
                                 companionText(*context.environment(), "Choice.severalMatch", {wanted}) +
                                     eventList(context, found));
        }
        if (found.size() == 1) {
            const auto at = std::ranges::find(outlines, found.front());
            return eventExplainer(context).explain(items[static_cast<std::size_t>(at - outlines.begin())]);
        }
        for (const auto& outline : outlines)
            titles.push_back(outline.title.value_or(""));
        if (day) break;
    }
    if (const auto stored = context.core().aggregatedEventStore().eventWithIdentifier(wanted);
        stored && !day) {
        return eventExplainer(context).explain(stored);
    }
    const auto skipped = skippedItemsNamed(skippedNow(context), wanted);
    if (skipped.empty()) failUnknown(context, wanted, day, titles);
    EventExplanation explanation = unread(skipped.front());
    for (std::size_t i = 1; i < skipped.size(); ++i)
        explanation.verdicts.push_back(unread(skipped[i]).verdicts.front());
    return explanation;
}

std::optional<EventExplanation> explanationOf(CommandContext& context, const Event& event) {
    const auto items = listableItems(context.core(), event.startDate, event.startDate.addingTimeInterval(1));
    const auto same = std::ranges::find_if(items, [&](const ListableItem& item) {
        const Event outline = outlineOf(item);
        return outline.id == event.id && outline.startDate == event.startDate;
    });
    if (same == items.end()) return std::nullopt;
    return eventExplainer(context).explain(*same);
}

}  // namespace hbr
