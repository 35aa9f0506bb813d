#pragma once

#include <Session/CommandContext.h>

#include <HbrCore/Explanation/EventExplainer.h>
#include <set>
#include <string>
#include <vector>

namespace hbr {

/// An explainer that knows which calendars the user has decided about.
EventExplainer eventExplainer(CommandContext& context);

/// What is not shown on one day.
struct DayExplanations {
    std::size_t shownCount = 0;
    /// Events, tasks and own reminders of that day, then what could not be read at all.
    std::vector<EventExplanation> notShown;
    /// Accounts with listed events that the widgets do not show.
    std::set<std::string> delegatedAccounts;

    /// "Today, Wed, Mar 4: 2 of 7 are not shown".
    std::string heading(CommandContext& context, platform::Date day) const;
};

DayExplanations dayExplanations(CommandContext& context, platform::Date day);

/// The explanation of the event with this id, beginning of an id, "now", "next" or part of a title, watched
/// or not; with `day`, of its occurrence on that day. Throws like `chosenEvent`.
EventExplanation chosenExplanation(CommandContext& context, const std::string& wanted,
                                   std::optional<platform::Date> day);

/// The explanation of exactly that event; nothing when it is not in any calendar.
std::optional<EventExplanation> explanationOf(CommandContext& context, const Event& event);

}  // namespace hbr
