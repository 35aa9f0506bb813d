#pragma once

#include <Session/ExitCode.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace CLI {
class App;
}

namespace hbr {

class CommandContext;

/// One command of the program. `declare` declares its arguments once, before the command line is read; `run`
/// acts on them.
class Command {
  public:
    virtual ~Command() = default;

    virtual std::string_view name() const = 0;
    /// The heading under which the help lists it.
    virtual std::string_view group() const = 0;
    virtual std::string_view summary() const = 0;
    /// Three example lines with what they do.
    virtual std::string_view examples() const = 0;
    virtual void declare(CLI::App& app) = 0;
    /// False for a command that works without the calendars; their files are then not opened.
    virtual bool readsCalendars() const { return true; }
    /// False for a command that, like the widgets, shows no delegated accounts.
    virtual bool asksForAccess() const { return readsCalendars(); }
    /// True for a command that runs until it is asked to end. Called after the command line was read.
    virtual bool isLongLived() const { return false; }
    /// A failure is thrown as CommandFailure.
    virtual ExitCode run(CommandContext& context) = 0;
};

namespace commandGroup {
inline constexpr std::string_view everyDay = "Every day";
inline constexpr std::string_view calendars = "Calendars";
inline constexpr std::string_view choices = "Choices";
inline constexpr std::string_view trouble = "When something is wrong";
}  // namespace commandGroup

/// Every command, in the order of the help.
std::vector<std::unique_ptr<Command>> allCommands();

std::unique_ptr<Command> makeAgendaCommand();
std::unique_ptr<Command> makeNextCommand();
std::unique_ptr<Command> makeShowCommand();
std::unique_ptr<Command> makeJoinCommand();
std::unique_ptr<Command> makeOpenCommand();
std::unique_ptr<Command> makeStatusCommand();
std::unique_ptr<Command> makeSnoozeCommand();
std::unique_ptr<Command> makeSetupCommand();
std::unique_ptr<Command> makeAccountsCommand();
std::unique_ptr<Command> makeCalendarsCommand();
std::unique_ptr<Command> makeReminderListsCommand();
std::unique_ptr<Command> makeContactsCommand();
std::unique_ptr<Command> makeRemindCommand();
std::unique_ptr<Command> makeRemindersCommand();
std::unique_ptr<Command> makeRulesCommand();
std::unique_ptr<Command> makeSettingsCommand();
std::unique_ptr<Command> makeEventCommand();
std::unique_ptr<Command> makeAlertsCommand();
std::unique_ptr<Command> makeWhyCommand();
std::unique_ptr<Command> makeDoctorCommand();
std::unique_ptr<Command> makeEventsCommand();
std::unique_ptr<Command> makeLinksCommand();

}  // namespace hbr
