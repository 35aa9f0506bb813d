#include "Agenda/AgendaText.h"
#include "Framework/Command.h"

#include <Session/CommandContext.h>
#include <Words/CompanionText.h>
#include <Words/EventName.h>
#include <Words/LeadText.h>
#include <Words/OneLine.h>
#include <Words/TextColumns.h>
#include <CLI/App.hpp>

#include <HbrCore/Events/EventJson.h>
#include <algorithm>
#include <cmath>

namespace hbr {

namespace {

/// Lists future alerts.
class AlertsCommand final : public Command {
  public:
    std::string_view name() const override { return "alerts"; }
    std::string_view group() const override { return commandGroup::everyDay; }
    std::string_view summary() const override { return "Which alerts are due, and when"; }
    std::string_view examples() const override {
        return "  heedbanner alerts          of events, tasks and your own reminders, the next first\n"
               "  heedbanner alerts --json   for other programs\n"
               "  heedbanner why next        why an event has none, or when it has one";
    }

    void declare(CLI::App& app) override { app.add_flag("--json", json_, "As JSON"); }

    ExitCode run(CommandContext& context) override {
        context.requireReadableAccounts();
        reloadAndWait(context.core());
        auto alerts = context.core().manager().invocations();
        std::ranges::stable_sort(
            alerts, {}, [](const AlertInvocation& one) { return one.date.timeIntervalSinceReferenceDate(); });
        const Console& console = context.console();
        if (json_) {
            console.out() << json(alerts) << "\n";
        } else if (alerts.empty()) {
            console.err() << companionText(*context.environment(), "Alerts.none") << "\n";
        } else {
            console.out() << text(context, alerts);
        }
        return ExitCode::done;
    }

  private:
    static double lead(const AlertInvocation& alert) {
        return alert.event->startDate.timeIntervalSince(alert.date);
    }

    static std::string json(const std::vector<AlertInvocation>& alerts) {
        auto array = platform::JsonValue::array();
        for (const auto& alert : alerts) {
            auto object = platform::JsonValue::object();
            object.set("id", alert.id()).set("date", platform::formatRfc3339(alert.date));
            object.set("kind", rawValue(alert.event->type)).set("lead", lead(alert));
            object.set("isSnooze", alert.isSnooze).set("event", eventJson(*alert.event));
            array.append(std::move(object));
        }
        return writeJson(array, 2);
    }

    static std::string text(CommandContext& context, const std::vector<AlertInvocation>& alerts) {
        const Console& console = context.console();
        const Formatters& formatters = context.core().formatters();
        const auto time = [&](const AlertInvocation& one) { return formatters.timeOnly().string(one.date); };
        std::size_t width = 0;
        for (const auto& alert : alerts)
            width = std::max(width, columns(time(alert)));

        std::string text;
        std::string day;
        for (const auto& alert : alerts) {
            const std::string heading = dayHeading(alert.date, context.now(), formatters);
            if (heading != day) text += (day.empty() ? "" : "\n") + console.bold(heading) + "\n";
            day = heading;
            text += "  " + padded(time(alert), width) + " " + console.colored("▌", alert.event->color) + " " +
                    titleOf(*alert.event, *context.environment()) +
                    console.faint(details(alert, formatters)) + "\n";
        }
        return text;
    }

    static std::string details(const AlertInvocation& alert, const Formatters& formatters) {
        const bool isOtherDay =
            !formatters.environment().calendar.isSameDay(alert.date, alert.event->startDate);
        std::string text = "  ";
        if (isOtherDay) text += formatters.dateOnlyNoYearWeekDay().string(alert.event->startDate) + " ";
        text += timeSpan(*alert.event, formatters) + ", " +
                leadText(static_cast<std::int64_t>(std::llround(lead(alert))), formatters.environment());
        if (alert.event->calendarName) text += "  [" + onOneLine(*alert.event->calendarName) + "]";
        return text;
    }

    bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> makeAlertsCommand() {
    return std::make_unique<AlertsCommand>();
}

}  // namespace hbr
