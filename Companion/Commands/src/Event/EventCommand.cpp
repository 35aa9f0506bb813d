#include "Alerts/ReminderText.h"
#include "Event/EventChoice.h"
#include "Event/EventSettingsText.h"
#include "Event/OccurrenceChoice.h"
#include "Framework/CommandWithActions.h"

#include <Session/CommandContext.h>
#include <TimeAndText/Text.h>
#include <Values/JsonText.h>
#include <Words/CompanionText.h>
#include <Words/OneLine.h>
#include <CLI/App.hpp>

#include <HbrCore/Events/EventJson.h>
#include <charconv>

namespace hbr {

namespace {

/// Settings of single events.
class EventCommand final : public CommandWithActions<EventCommand> {
  public:
    EventCommand() : CommandWithActions(nullptr) {}

    std::string_view name() const override { return "event"; }
    std::string_view group() const override { return commandGroup::choices; }
    std::string_view summary() const override {
        return "Settings of one event: leave it out, alert earlier, which call to join";
    }
    std::string_view examples() const override {
        return "  heedbanner event show next\n"
               "  heedbanner event set Standup --lead 10m --link zoom\n"
               "  heedbanner event set Standup --exclude --on 2026-03-11   only that occurrence\n"
               "  heedbanner event reset Standup                 back to the settings for all events";
    }

    void declare(CLI::App& app) override {
        app.require_subcommand(1, 1);
        auto* show = add(app, "show", "The settings that apply to an event, and why", &EventCommand::show);
        addEventArgument(*show)->required();
        show->add_flag("--json", json_, "As JSON");
        auto* set = add(app, "set", "Change the settings of an event, of its whole series if it recurs",
                        &EventCommand::set);
        addEventArgument(*set)->required();
        auto* exclude = set->add_flag("--exclude", exclude_, "No alert, and not among upcoming events");
        set->add_flag("--include", include_, "Alert again")->excludes(exclude);
        set->add_option("--on", on_,
                        "With --exclude or --include: only the occurrence that begins then, a day or a time")
            ->type_name("WHEN");
        set->add_option("--lead", lead_, "Alert that long before the start (90s, 5m, 1h), or \"default\"")
            ->type_name("DURATION");
        set->add_option("--link", link_,
                        "The call to join, of several: its number, its address, a part of either it or its "
                        "service's name, or \"none\"")
            ->type_name("LINK");
        auto* reset = add(app, "reset", "Reset the settings of an event", &EventCommand::reset);
        addEventArgument(*reset);
        reset->add_flag("--all", all_, "Those of every event");
    }

  private:
    CLI::Option* addEventArgument(CLI::App& app) {
        return app.add_option("EVENT", wanted_, eventArgumentMeaning)->type_name("");
    }

    ExitCode show(CommandContext& context) {
        const Event event = chosenEvent(context, wanted_);
        const Console& console = context.console();
        if (json_) {
            console.out() << writeJson(eventSettingsJson(context, event), 2) << "\n";
        } else {
            console.out() << eventSettingsText(context, event);
        }
        return ExitCode::done;
    }

    ExitCode set(CommandContext& context) {
        if (!exclude_ && !include_ && !lead_ && !link_) {
            throw CommandFailure(ExitCode::wrongUsage,
                                 companionText(*context.environment(), "Event.sayWhat"));
        }
        if (on_ && ((!exclude_ && !include_) || lead_ || link_)) {
            throw CommandFailure(ExitCode::wrongUsage,
                                 companionText(*context.environment(), "Event.on.alone"));
        }
        const bool usesLead = lead_ && *lead_ != "default";
        const std::int64_t lead =
            usesLead ? leadOfOption("event set: --lead", *lead_, *context.environment()) : 0;
        const Event event = chosenEvent(context, wanted_);
        if (event.type == Event::EventType::hbrReminder && (exclude_ || include_ || lead_)) {
            const std::string command = "heedbanner reminders edit " + event.id + " --lead 5m";
            throw CommandFailure(
                ExitCode::wrongUsage,
                companionText(*context.environment(), "Event.leadOfReminder") + " " + command);
        }
        if (on_) return setOccurrence(context, event);
        const auto url = link_ ? chosenLink(event, *context.environment()) : std::nullopt;
        EventSettingsStore& store = context.core().eventSettings();
        const auto change = [&](EventSettings& settings) {
            if (exclude_ || include_) settings.isExcluded = exclude_;
            if (lead_) {
                settings.usesCustomTimeOffset = usesLead;
                settings.timeOffsetSeconds = lead;
            }
            if (link_) settings.defaultConferenceUrl = url;
        };
        requireStored(store.updateCustomSettings(event.id, event.type, change), context);
        requireReadable(context, event);
        context.console().out() << eventSettingsText(context, event);
        if (static_cast<double>(lead) > AggregatedEventStore::pendingWindow) {
            context.console().out().flush();
            context.console().complain(companionText(*context.environment(), "Event.longLead"));
        }
        return ExitCode::done;
    }

    ExitCode setOccurrence(CommandContext& context, const Event& event) {
        if (!event.isRecurring || event.type != Event::EventType::calendarEvent)
            throw CommandFailure(ExitCode::wrongUsage,
                                 companionText(*context.environment(), "Event.on.notRecurring"));
        const Occurrence occurrence = chosenOccurrence(context, event, *on_, include_);
        const HiddenOccurrencesStore store = context.core().hiddenOccurrences();
        requireStored(
            exclude_ ? store.hide(occurrence, context.now()) : store.show(occurrence, context.now()),
            context);
        context.console().out() << eventSettingsText(context, event);
        return ExitCode::done;
    }

    ExitCode reset(CommandContext& context) {
        const HiddenOccurrencesStore hidden = context.core().hiddenOccurrences();
        EventSettingsStore& store = context.core().eventSettings();
        if (wanted_.empty() != all_) {
            throw CommandFailure(ExitCode::wrongUsage,
                                 companionText(*context.environment(), "Event.nameOne"));
        }
        if (all_) {
            requireStored(store.deleteAllCustomEventSettings() && hidden.showAll(), context);
            context.console().out() << companionText(*context.environment(), "Event.allForgotten") << "\n";
            return ExitCode::done;
        }
        // The event itself may no longer exist.
        if (isStored(context)) {
            requireStored(store.deleteCustomSettings(wanted_) && hidden.showAll(wanted_, context.now()),
                          context);
            context.console().out() << companionText(*context.environment(), "Event.forgotten", {wanted_})
                                    << "\n";
            return ExitCode::done;
        }
        const Event event = chosenEvent(context, wanted_);
        requireStored(store.deleteCustomSettings(event.id) && hidden.showAll(event.id, context.now()),
                      context);
        context.console().out() << eventSettingsText(context, event);
        return ExitCode::done;
    }

    /// Whether there is an entry with exactly that id, readable or not.
    bool isStored(CommandContext& context) const {
        if (!context.core().hiddenOccurrences().of(wanted_).all().empty()) return true;
        const auto stored = context.core().sharedDomain()->value(EventSettingsStore::storageKey);
        const auto* entries = stored ? stored->asDictionary() : nullptr;
        return entries && entries->find(wanted_);
    }

    /// One entry of the wrong type makes the whole dictionary unreadable.
    static void requireReadable(CommandContext& context, const Event& event) {
        if (context.core().eventSettings().customSettings(event.id)) return;
        throw CommandFailure(ExitCode::failed, context.core().sharedDomain()->file().string() + ": " +
                                                   companionText(*context.environment(), "Event.unreadable"));
    }

    /// Nothing for "none".
    std::optional<platform::Url> chosenLink(const Event& event,
                                            const platform::Environment& environment) const {
        if (*link_ == "none") return std::nullopt;
        const auto& links = event.videoConferenceLinks;
        std::string list;
        std::vector<platform::Url> found;
        const std::string wanted = platform::lowercased(*link_);
        for (std::size_t i = 0; i < links.size(); ++i) {
            const std::string number = std::to_string(i + 1);
            const std::string address = links[i].url.absoluteString();
            list += "\n  " + number + ". " + onOneLine(links[i].service.name) + " " + address;
            if (wanted == number || *link_ == address) return links[i].url;
            const bool fits = platform::lowercased(address).find(wanted) != std::string::npos ||
                              platform::lowercased(links[i].service.name).find(wanted) != std::string::npos;
            if (fits) found.push_back(links[i].url);
        }
        if (found.size() == 1) return found.front();
        if (links.empty())
            throw CommandFailure(ExitCode::nothingThere, companionText(environment, "Event.noLink"));
        const char* key = found.empty() ? "Event.noLinkFits" : "Event.severalLinksFit";
        throw CommandFailure(ExitCode::nothingThere, companionText(environment, key, {*link_}) + list);
    }

    std::string wanted_;
    bool exclude_ = false;
    bool include_ = false;
    bool all_ = false;
    bool json_ = false;
    std::optional<std::string> on_;
    std::optional<std::string> lead_;
    std::optional<std::string> link_;
};

}  // namespace

std::unique_ptr<Command> makeEventCommand() {
    return std::make_unique<EventCommand>();
}

}  // namespace hbr
