#include "Event/StoredEventTimes.h"
#include "Framework/Command.h"

#include <Session/CommandContext.h>
#include <When/MomentText.h>
#include <Words/CompanionText.h>
#include <Words/EventName.h>
#include <Words/OneLine.h>
#include <CLI/App.hpp>

#include <HbrCore/Events/EventJson.h>

namespace hbr {

namespace {

std::string_view statusName(platform::EKEventStatus status) {
    switch (status) {
        case platform::EKEventStatus::none:
            return "none";
        case platform::EKEventStatus::confirmed:
            return "confirmed";
        case platform::EKEventStatus::tentative:
            return "tentative";
        case platform::EKEventStatus::canceled:
            return "canceled";
    }
    return "none";
}

platform::JsonValue storedEventJson(const platform::EKEvent& event, const VideoConferenceLinkParser& parser) {
    platform::JsonValue json = eventJson(Event::fromCalendarEvent(event, parser));
    if (!event.calendarItemExternalIdentifier.empty()) {
        json.set("calendarItemExternalIdentifier", event.calendarItemExternalIdentifier);
    }
    json.set("isAllDay", event.isAllDay).set("isDetached", event.isDetached);
    if (event.originalStart) json.set("recurrenceId", platform::formatRfc3339(*event.originalStart));
    json.set("status", statusName(event.status));
    return json;
}

/// Lists what the store contains in an interval, before any rule.
class EventsCommand final : public Command {
  public:
    std::string_view name() const override { return "events"; }
    std::string_view group() const override { return commandGroup::trouble; }
    std::string_view summary() const override {
        return "Everything in the watched calendars in an interval, before any rule";
    }
    std::string_view examples() const override {
        return "  heedbanner events --from today --to tomorrow\n"
               "  heedbanner events --from 2026-03-02 --to 2026-03-09 --json\n"
               "  heedbanner events --from 2026-03-04T09:00:00Z --to 2026-03-04T17:00:00Z --json";
    }

    void declare(CLI::App& app) override {
        const std::string meaning =
            "RFC 3339, or in your zone 2026-03-04 or 2026-03-04T09:00, or now, today, tomorrow";
        app.add_option("--from", from_, "Where the interval begins: " + meaning)
            ->type_name("TIME")
            ->required();
        app.add_option("--to", to_, "Where it ends")->type_name("TIME")->required();
        app.add_flag("--json", json_, "As JSON");
    }

    ExitCode run(CommandContext& context) override {
        const platform::Date from = moment(context, "--from", from_);
        const platform::Date to = moment(context, "--to", to_);
        if (to < from)
            throw CommandFailure(ExitCode::wrongUsage,
                                 companionText(*context.environment(), "Events.reversed"));
        context.requireReadableAccounts();
        CoreServices& core = context.core();
        const auto events = core.aggregatedEventStore().events(from, to);
        std::ostream& out = context.console().out();
        if (json_) {
            // One event per line, so that long answers can be read and compared.
            out << "[";
            for (std::size_t i = 0; i < events.size(); ++i) {
                out << (i == 0 ? "\n" : ",\n") << writeJson(storedEventJson(*events[i], core.parser()));
            }
            out << (events.empty() ? "]\n" : "\n]\n");
            return ExitCode::done;
        }
        for (const auto& event : events) {
            out << storedEventTimes(*event, core.formatters()) << "  "
                << titleText(event->title, *context.environment())
                << context.console().faint("  " + onOneLine(event->calendar ? event->calendar->title : ""));
            if (event->status == platform::EKEventStatus::canceled)
                out << "  " << companionText(*context.environment(), "Card.status.cancelled");
            out << "\n";
        }
        return ExitCode::done;
    }

  private:
    static platform::Date moment(const CommandContext& context, const std::string& option,
                                 const std::string& text) {
        const auto date = momentOf(text, context.environment()->calendar, context.now());
        if (date) return *date;
        throw CommandFailure(ExitCode::wrongUsage,
                             companionText(*context.environment(), "Events.noTime", {option, text}));
    }

    std::string from_;
    std::string to_;
    bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> makeEventsCommand() {
    return std::make_unique<EventsCommand>();
}

}  // namespace hbr
