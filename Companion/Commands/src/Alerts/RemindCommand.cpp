#include "Alerts/ReminderText.h"
#include "Framework/Command.h"
#include "Framework/MomentOptions.h"

#include <Session/CommandContext.h>
#include <TimeAndText/JoinedText.h>
#include <TimeAndText/Text.h>
#include <Values/JsonText.h>
#include <Values/Uuid.h>
#include <Words/CompanionText.h>
#include <CLI/App.hpp>

namespace hbr {

namespace {

/// Makes an own reminder and prints how its moment was understood.
class RemindCommand final : public Command {
  public:
    std::string_view name() const override { return "remind"; }
    std::string_view group() const override { return commandGroup::everyDay; }
    std::string_view summary() const override { return "Add one of your own reminders"; }
    std::string_view examples() const override {
        return "  heedbanner remind \"Call Anna\" --at tomorrow 9:00\n"
               "  heedbanner remind Tea is ready --in 5m\n"
               "  heedbanner remind Pay the rent --at 2026-12-01 08:00 --lead 1h";
    }

    bool readsCalendars() const override { return false; }

    void declare(CLI::App& app) override {
        app.add_option("TEXT", text_, "What to be reminded of")->type_name("");
        moment_.declare(app);
        app.add_option("--notes", notes_, "Notes; a conference link in them is recognised")
            ->type_name("TEXT");
        app.add_option("--lead", lead_, "Alert that long before (90s, 5m, 1h); else at the moment itself")
            ->type_name("DURATION");
        app.add_flag("--json", json_, "Print the reminder as JSON");
    }

    ExitCode run(CommandContext& context) override {
        if (!moment_.given()) {
            throw CommandFailure(ExitCode::wrongUsage,
                                 companionText(*context.environment(), "Remind.sayWhen"));
        }
        // Before the moment is read, so that "in 20m" is not printed as 19 minutes.
        const platform::Date now = context.now();
        const std::int64_t lead = leadOfOption("remind: --lead", lead_, *context.environment());
        const auto moment = moment_.moment("remind", text_, context);
        const std::string title = platform::trimmed(platform::sanitizedUtf8(platform::joined(text_, " ")));
        if (title.empty()) {
            throw CommandFailure(ExitCode::wrongUsage,
                                 companionText(*context.environment(), "Remind.sayWhat"));
        }
        const std::string notes = platform::trimmed(platform::sanitizedUtf8(notes_));
        const Reminder reminder(platform::Uuid::random().uuidString(), *moment, title,
                                notes.empty() ? std::nullopt : std::optional(notes), lead);
        requireAlertToCome(reminder, context);
        requireReadableReminders(context);
        requireStored(context.core().reminders().addReminder(reminder), context);
        if (json_) {
            context.console().out() << writeJson(reminderJson(reminder), 2) << "\n";
        } else {
            context.console().out() << reminderLine(reminder, context, now) << "\n";
        }
        return ExitCode::done;
    }

  private:
    std::vector<std::string> text_;
    MomentOptions moment_;
    std::string notes_;
    std::string lead_ = "0";
    bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> makeRemindCommand() {
    return std::make_unique<RemindCommand>();
}

}  // namespace hbr
