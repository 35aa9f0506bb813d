#include "Alerts/ReminderText.h"
#include "Alerts/UnreadableRecords.h"
#include "Framework/CommandWithActions.h"
#include "Framework/MomentOptions.h"

#include <Session/CommandContext.h>
#include <TimeAndText/Text.h>
#include <Values/JsonText.h>
#include <Words/CompanionText.h>
#include <Words/OneLine.h>
#include <CLI/App.hpp>

#include <algorithm>

namespace hbr {

namespace {

/// The own reminders: lists, changes and removes them.
class RemindersCommand final : public CommandWithActions<RemindersCommand> {
  public:
    RemindersCommand() : CommandWithActions(&RemindersCommand::list) {}

    std::string_view name() const override { return "reminders"; }
    std::string_view group() const override { return commandGroup::everyDay; }
    std::string_view summary() const override { return "Look at and change your own reminders"; }
    std::string_view examples() const override {
        return "  heedbanner reminders list                          those to come\n"
               "  heedbanner reminders edit Anna --at tomorrow 10:00  moves the one about Anna\n"
               "  heedbanner reminders remove --past                 those whose moment has passed";
    }

    bool readsCalendars() const override { return false; }

    void declare(CLI::App& app) override {
        app.require_subcommand(0, 1);
        auto* listing = add(app, "list", "Your reminders, the next first", &RemindersCommand::list);
        listing->add_flag("--all", all_, "With those of the last 30 days");
        listing->add_flag("--json", json_, "As JSON");
        auto* edit = add(app, "edit", "Change one", &RemindersCommand::edit);
        edit->add_option("REMINDER", names_, "Its id, a beginning of it, or a part of its text")
            ->type_name("")
            ->required();
        moment_.declare(*edit);
        edit->add_option("--text", title_, "Its new text")->type_name("TEXT");
        edit->add_option("--notes", notes_, "Its new notes; \"\" removes them")->type_name("TEXT");
        edit->add_option("--lead", lead_, "Alert that long before; 0 for the moment itself")
            ->type_name("DURATION");
        auto* remove = add(app, "remove", "Remove some", &RemindersCommand::remove);
        remove->add_option("REMINDER", names_, "Ids, beginnings of them, or parts of their texts")
            ->type_name("");
        remove->add_flag("--past", past_, "Those whose moment has passed");
        remove->add_flag("--all", all_, "Every one");
    }

  private:
    static std::vector<Reminder> byDate(std::vector<Reminder> reminders) {
        std::ranges::stable_sort(
            reminders, {}, [](const Reminder& one) { return one.date().timeIntervalSinceReferenceDate(); });
        return reminders;
    }

    ExitCode list(CommandContext& context) {
        requireReadableReminders(context);
        const CustomRemindersStore& store = context.core().reminders();
        const auto reminders = byDate(all_ ? store.reminders() : store.futureReminders());
        const Console& console = context.console();
        if (json_) {
            auto array = platform::JsonValue::array();
            for (const auto& reminder : reminders)
                array.append(reminderJson(reminder));
            console.out() << writeJson(array, 2) << "\n";
            return ExitCode::done;
        }
        for (const auto& reminder : reminders) {
            console.out() << reminderLine(reminder, context, context.now())
                          << console.faint("  " + reminder.id()) << "\n";
            if (reminder.notes())
                console.out() << console.faint("    " + onOneLine(*reminder.notes())) << "\n";
        }
        if (reminders.empty())
            console.err() << companionText(*context.environment(), "Reminders.none") << "\n";
        return ExitCode::done;
    }

    ExitCode edit(CommandContext& context) {
        if (names_.size() != 1) {
            throw CommandFailure(ExitCode::wrongUsage,
                                 companionText(*context.environment(), "Reminders.edit.nameOne"));
        }
        if (!moment_.given() && !title_ && !notes_ && !lead_) {
            throw CommandFailure(ExitCode::wrongUsage,
                                 companionText(*context.environment(), "Reminders.edit.sayWhat"));
        }
        requireReadableReminders(context);
        const platform::Date now = context.now();
        const Reminder before = chosenReminder(names_.front(), context);
        auto title = before.title();
        if (title_) {
            title = platform::trimmed(platform::sanitizedUtf8(*title_));
            if (title->empty()) {
                throw CommandFailure(ExitCode::wrongUsage,
                                     companionText(*context.environment(), "Reminders.edit.emptyText"));
            }
        }
        auto notes = before.notes();
        if (notes_) {
            const std::string text = platform::trimmed(platform::sanitizedUtf8(*notes_));
            notes = text.empty() ? std::nullopt : std::optional(text);
        }
        const std::int64_t lead = lead_
                                      ? leadOfOption("reminders edit: --lead", *lead_, *context.environment())
                                      : before.timeOffsetSeconds();
        const auto moment = moment_.moment("reminders edit", names_, context);
        const Reminder after(before.id(), moment.value_or(before.date()), title, notes, lead);
        if (moment || lead_) requireAlertToCome(after, context);
        requireStored(context.core().reminders().updateReminder(after), context);
        context.console().out() << reminderLine(after, context, now) << "\n";
        return ExitCode::done;
    }

    ExitCode remove(CommandContext& context) {
        if ((names_.empty() ? 0 : 1) + (past_ ? 1 : 0) + (all_ ? 1 : 0) != 1) {
            throw CommandFailure(ExitCode::wrongUsage,
                                 companionText(*context.environment(), "Reminders.remove.nameSome"));
        }
        CustomRemindersStore& store = context.core().reminders();
        if (!all_) {
            requireReadableReminders(context);
        } else if (!hasReadableReminders(*context.core().sharedDomain())) {
            // Any change would replace reminders that cannot be read.
            requireStored(store.removeReminder(""), context);
        }
        std::vector<Reminder> doomed;
        for (const auto& reminder : byDate(store.reminders())) {
            if (all_ || (past_ && reminder.date() <= context.now())) doomed.push_back(reminder);
        }
        // All names first: a typing error in one of them removes nothing.
        for (const auto& name : names_)
            doomed.push_back(chosenReminder(name, context));
        for (const auto& reminder : doomed) {
            requireStored(store.removeReminder(reminder.id()), context);
            const std::string line = reminderLine(reminder, context, context.now());
            context.console().out() << companionText(*context.environment(), "Reminders.removed", {line})
                                    << "\n";
        }
        if (doomed.empty())
            context.console().err() << companionText(*context.environment(), "Reminders.noneToRemove")
                                    << "\n";
        return ExitCode::done;
    }

    std::vector<std::string> names_;
    MomentOptions moment_;
    std::optional<std::string> title_;
    std::optional<std::string> notes_;
    std::optional<std::string> lead_;
    bool past_ = false;
    bool all_ = false;
    bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> makeRemindersCommand() {
    return std::make_unique<RemindersCommand>();
}

}  // namespace hbr
