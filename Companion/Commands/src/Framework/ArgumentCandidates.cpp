#include "Framework/ArgumentCandidates.h"

#include "Agenda/AgendaEvents.h"
#include "Settings/SettingCatalogue.h"

#include <Session/CommandContext.h>
#include <Setup/CollectionChoices.h>
#include <Words/CompanionText.h>
#include <Words/OneLine.h>

#include <HbrCore/Events/EventTexts.h>
#include <set>

namespace hbr {

namespace {

CommandContext contextFor(const char* program) {
    const auto silent = std::make_shared<platform::CollectedDiagnostics>();
    const auto environment =
        platform::Environment::fromProcess("heedbanner", platform::programPath(program), {}, silent);
    platform::Environment::setCurrent(environment);
    return {environment, Console(false), GeneralOptions{}, {.asksForAccess = true}};
}

std::vector<Candidate> events(CommandContext context) {
    std::vector<Candidate> candidates{{"now", companionText(*context.environment(), "Completion.now")},
                                      {"next", companionText(*context.environment(), "Completion.next")}};
    std::set<std::string> known;
    for (const auto& one : agendaEvents(context, {})) {
        const Event& event = *one.event;
        if (!event.title || !known.insert(*event.title).second) continue;
        candidates.push_back({onOneLine(*event.title),
                              formattedStartTimeAndDate(event, context.core().formatters(), context.now())});
    }
    return candidates;
}

std::vector<Candidate> collections(CommandContext context, platform::EKEntityType type) {
    std::vector<Candidate> candidates;
    for (const auto& one : collectionChoices(context, type)) {
        const std::string keys = type == platform::EKEntityType::event ? "Calendars" : "TaskLists";
        candidates.push_back(
            {onOneLine(one.qualifiedName()),
             companionText(*context.environment(), keys + (one.active ? ".watched" : ".notWatched"))});
    }
    return candidates;
}

std::vector<Candidate> accounts(const CommandContext& context) {
    std::vector<Candidate> candidates;
    for (const auto& account : context.accounts().load())
        candidates.push_back({onOneLine(account.name), account.location.string()});
    return candidates;
}

std::vector<Candidate> settings(const CommandContext& context) {
    std::vector<Candidate> candidates;
    for (const auto& entry : settingCatalogue())
        candidates.push_back({std::string(entry.name), entry.meaning(*context.environment())});
    return candidates;
}

}  // namespace

std::vector<Candidate> ArgumentCandidates::of(std::string_view command, std::string_view argument) const {
    if (argument == "EVENT") return events(contextFor(program_));
    if (argument != "NAME") return {};
    if (command == "settings") return settings(contextFor(program_));
    if (command == "calendars") return collections(contextFor(program_), platform::EKEntityType::event);
    if (command == "reminder-lists")
        return collections(contextFor(program_), platform::EKEntityType::reminder);
    if (command == "accounts") return accounts(contextFor(program_));
    return {};
}

}  // namespace hbr
