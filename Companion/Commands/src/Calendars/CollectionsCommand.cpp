#include "Calendars/CollectionsCommand.h"

#include <Session/CommandContext.h>
#include <Setup/CollectionChoices.h>
#include <Values/JsonText.h>
#include <Values/JsonValue.h>
#include <Words/CompanionText.h>
#include <Words/OneLine.h>
#include <Words/TextColumns.h>
#include <CLI/App.hpp>

#include <algorithm>

namespace hbr {

std::string_view CollectionsCommand::name() const {
    return isCalendars() ? "calendars" : "reminder-lists";
}

std::string_view CollectionsCommand::summary() const {
    return isCalendars() ? "Which calendars there are and which are watched"
                         : "Which task lists there are and which are watched";
}

std::string_view CollectionsCommand::examples() const {
    return isCalendars() ? "  heedbanner calendars list                     all calendars and their state\n"
                           "  heedbanner calendars deactivate Holidays      no longer shown\n"
                           "  heedbanner calendars activate work/Team Home  both, Team of the account work"
                         : "  heedbanner reminder-lists list                all task lists and their state\n"
                           "  heedbanner reminder-lists activate --all      watch every one\n"
                           "  heedbanner reminder-lists deactivate Shopping no longer shown";
}

void CollectionsCommand::declare(CLI::App& app) {
    const std::string plural = isCalendars() ? "calendars" : "task lists";
    app.require_subcommand(0, 1);
    auto* listing =
        app.add_subcommand("list", "All " + plural + ", whether they are watched, and what is new");
    listing->add_flag("--json", json_, "As JSON");
    const auto add = [&](const std::string& word, const std::string& summary, Action action) {
        auto* below = app.add_subcommand(word, summary);
        below->add_option("NAME", names_, "Title, account/title where two share it, or identifier")
            ->type_name("");
        below->add_flag("--all", all_, "Every one of them");
        below->parse_complete_callback([this, action] { action_ = action; });
    };
    add("activate", "Watch " + plural, Action::activate);
    add("deactivate", "Stop watching " + plural, Action::deactivate);
}

ExitCode CollectionsCommand::run(CommandContext& context) {
    if (action_ != Action::list && names_.empty() != all_) {
        throw CommandFailure(ExitCode::wrongUsage,
                             companionText(*context.environment(), "Collections.giveNames", {name()}));
    }
    context.requireReadableAccounts();
    const auto choices = collectionChoices(context, type_);
    return action_ == Action::list ? list(context, choices) : change(context, choices);
}

ExitCode CollectionsCommand::list(CommandContext& context,
                                  const std::vector<CollectionChoice>& choices) const {
    const Console& console = context.console();
    if (json_) {
        auto array = platform::JsonValue::array();
        for (const auto& one : choices) {
            auto object = platform::JsonValue::object();
            object.set("identifier", one.identifier)
                .set("name", one.name)
                .set("color", one.color.hexString());
            object.set("active", one.active).set("accountName", one.accountName);
            if (isCalendars()) object.set("isDelegate", one.isDelegate);
            object.set("isNew", one.isNew);
            array.append(std::move(object));
        }
        console.out() << writeJson(array, 2) << "\n";
        return ExitCode::done;
    }
    std::size_t width = 0;
    for (const auto& one : choices)
        width = std::max(width, columns(onOneLine(one.qualifiedName())));
    for (const auto& one : choices) {
        std::string state = text(context, one.active ? "watched" : one.isNew ? "new" : "notWatched");
        if (one.isNew) {
            state += ": heedbanner " + std::string(name()) + " activate \"" + one.qualifiedName() + "\"";
        }
        console.out() << console.colored(one.active ? "●" : "○", one.color) << " "
                      << padded(onOneLine(one.qualifiedName()), width) << "  "
                      << (one.active ? state : console.faint(state))
                      << (one.isDelegate ? ", " + text(context, "delegated") : "") << "\n";
    }
    if (choices.empty()) console.err() << text(context, "none") << "\n";
    return ExitCode::done;
}

ExitCode CollectionsCommand::change(CommandContext& context,
                                    const std::vector<CollectionChoice>& choices) const {
    const bool active = action_ == Action::activate;
    std::vector<const CollectionChoice*> wanted;
    for (const auto& one : choices) {
        if (all_) wanted.push_back(&one);
    }
    for (const auto& wantedName : names_)
        wanted.push_back(&chosen(choices, wantedName, *context.environment(), keys()));
    std::vector<std::string> identifiers;
    for (const auto* one : wanted)
        identifiers.push_back(one->identifier);
    setActive(context, type_, identifiers, active);
    for (const auto* one : wanted) {
        const char* key = one->active == active ? (active ? "wasWatched" : "wasNotWatched")
                                                : (active ? "nowWatched" : "nowNotWatched");
        context.console().out() << text(context, key, {onOneLine(one->qualifiedName())}) << "\n";
    }
    return ExitCode::done;
}

std::string CollectionsCommand::text(const CommandContext& context, const std::string& key,
                                     std::initializer_list<L10n::FormatArgument> arguments) const {
    return companionText(*context.environment(), keys() + "." + key, arguments);
}

}  // namespace hbr
