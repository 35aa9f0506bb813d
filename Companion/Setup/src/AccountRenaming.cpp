#include <Setup/AccountRenaming.h>

#include <Setup/AccountAddition.h>
#include <Words/CompanionText.h>

#include <algorithm>
#include <map>
#include <optional>
#include <set>

namespace hbr {

namespace {

using Identifiers = std::map<std::filesystem::path, platform::CollectionReport>;

Identifiers collectionsOf(CommandContext& context, const std::string& account) {
    Identifiers found;
    for (const auto& report : context.core().aggregatedEventStore().report()) {
        if (report.account.name != account) continue;
        for (const auto& collection : report.collections)
            found[collection.location] = collection;
    }
    return found;
}

using Replacements = std::map<std::string, std::string>;

void addReplacement(Replacements& replacements, const platform::EKCalendarRef& before,
                    const platform::EKCalendarRef& after) {
    if (before && after) replacements[before->calendarIdentifier] = after->calendarIdentifier;
}

void replaceIn(std::vector<std::string>& identifiers, const Replacements& replacements) {
    for (auto& identifier : identifiers) {
        const auto found = replacements.find(identifier);
        if (found != replacements.end()) identifier = found->second;
    }
}

/// An event with settings of its own, under its identifier before the renaming.
struct CustomizedEvent {
    std::optional<EventSettings> settings;
    platform::EKEventRef event;
};

std::vector<CustomizedEvent> customizedEvents(CoreServices& core) {
    std::vector<CustomizedEvent> found;
    const auto all = core.eventSettings().customSettings();
    std::set<std::string> identifiers;
    for (const auto& [identifier, settings] : all.value_or(EventSettingsStore::Settings{}))
        identifiers.insert(identifier);
    for (const Occurrence& hidden : core.hiddenOccurrences().all().all())
        identifiers.insert(hidden.eventIdentifier);
    for (const std::string& identifier : identifiers) {
        const auto event = core.aggregatedEventStore().eventWithIdentifier(identifier);
        if (event && event->calendar) found.push_back({EventSettingsStore::find(all, identifier), event});
    }
    return found;
}

/// Event identifiers are derived from their calendars' identifiers; events are matched by UID.
void moveEventSettings(CoreServices& core, const std::vector<CustomizedEvent>& customized,
                       const Replacements& replacements) {
    for (const auto& [settings, before] : customized) {
        const auto calendar = replacements.find(before->calendar->calendarIdentifier);
        if (calendar == replacements.end()) continue;
        for (const auto& after : core.aggregatedEventStore().events(before->startDate, before->endDate)) {
            const bool isSame =
                after->calendar->calendarIdentifier == calendar->second &&
                after->calendarItemExternalIdentifier == before->calendarItemExternalIdentifier;
            if (!isSame) continue;
            core.hiddenOccurrences().rename(before->eventIdentifier, after->eventIdentifier,
                                            core.environment()->now());
            if (settings && core.eventSettings().storeCustomSettings(*settings, after->eventIdentifier)) {
                core.eventSettings().deleteCustomSettings(before->eventIdentifier);
            }
            break;
        }
    }
}

}  // namespace

void renameAccount(CommandContext& context, const std::string& name, const std::string& newName) {
    const Identifiers before = collectionsOf(context, name);
    const auto customized = customizedEvents(context.core());
    bool isTaken = false;
    const bool written = context.accounts().update([&](std::vector<platform::Account>& accounts) {
        isTaken = std::any_of(accounts.begin(), accounts.end(),
                              [&](const platform::Account& one) { return one.name == newName; });
        if (isTaken) return;
        for (auto& account : accounts) {
            if (account.name == name) account.name = newName;
        }
    });
    if (isTaken)
        throw CommandFailure(ExitCode::failed,
                             companionText(*context.environment(), "Accounts.nameTaken", {newName}));
    if (!written) failAccountsWrite(context);

    context.forgetCore();
    Replacements replacements;
    for (const auto& [location, collection] : collectionsOf(context, newName)) {
        const auto old = before.find(location);
        if (old == before.end()) continue;
        addReplacement(replacements, old->second.events, collection.events);
        addReplacement(replacements, old->second.reminders, collection.reminders);
    }
    const auto replace = [&](std::vector<std::string>& identifiers) { replaceIn(identifiers, replacements); };
    context.core().settings().updateActiveCalendarIdentifiers(replace);
    context.core().settings().updateActiveReminderListIdentifiers(replace);
    moveEventSettings(context.core(), customized, replacements);

    auto decided = context.records().decidedIdentifiers();
    const auto oldDecided = decided;
    replace(decided);
    context.records().removeDecided(oldDecided);
    context.records().addDecided(decided);
    SetupRecord setup = context.records().lastSetup();
    replace(setup.calendars);
    replace(setup.reminderLists);
    std::replace(setup.accounts.begin(), setup.accounts.end(), name, newName);
    if (auto addresses = setup.addresses.extract(name)) {
        addresses.key() = newName;
        setup.addresses.insert(std::move(addresses));
    }
    context.records().setLastSetup(setup);
}

}  // namespace hbr
