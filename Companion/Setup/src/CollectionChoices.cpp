#include <Setup/CollectionChoices.h>

#include <Words/CompanionText.h>

#include <algorithm>
#include <set>

namespace hbr {

namespace {

CollectionChoice choice(const UserCalendar& calendar) {
    return {calendar.identifier, calendar.name, calendar.accountName, calendar.color, calendar.active,
            calendar.isDelegate, false};
}

CollectionChoice choice(const UserReminderList& list) {
    return {list.identifier, list.name, list.accountName, list.color, list.active, false, false};
}

}  // namespace

std::vector<CollectionChoice> collectionChoices(CommandContext& context, platform::EKEntityType type) {
    const CalendarEventManager& manager = context.core().manager();
    std::vector<CollectionChoice> choices;
    if (type == platform::EKEntityType::event) {
        for (const auto& calendar : manager.fetchCalendars())
            choices.push_back(choice(calendar));
    } else {
        for (const auto& list : manager.fetchReminderLists())
            choices.push_back(choice(list));
    }
    const auto decided = context.records().decidedIdentifiers();
    const std::set<std::string> known(decided.begin(), decided.end());
    for (auto& one : choices)
        one.isNew = !one.active && !known.contains(one.identifier);
    return choices;
}

void setActive(CommandContext& context, platform::EKEntityType type,
               const std::vector<std::string>& identifiers, bool active) {
    if (identifiers.empty()) return;
    const auto change = [&](std::vector<std::string>& stored) {
        for (const auto& identifier : identifiers) {
            const bool isThere = std::find(stored.begin(), stored.end(), identifier) != stored.end();
            if (active && !isThere) stored.push_back(identifier);
            if (!active) std::erase(stored, identifier);
        }
    };
    UserSettingsStore& settings = context.core().settings();
    const bool written = type == platform::EKEntityType::event
                             ? settings.updateActiveCalendarIdentifiers(change)
                             : settings.updateActiveReminderListIdentifiers(change);
    if (!written) {
        throw CommandFailure(ExitCode::failed,
                             context.core().sharedDomain()->file().string() + ": " +
                                 companionText(*context.environment(), "Accounts.notWritten"));
    }
    context.records().addDecided(identifiers);
}

}  // namespace hbr
