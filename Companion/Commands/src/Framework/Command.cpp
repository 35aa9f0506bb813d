#include "Framework/Command.h"

namespace hbr {

std::vector<std::unique_ptr<Command>> allCommands() {
    std::vector<std::unique_ptr<Command>> commands;
    commands.push_back(makeAgendaCommand());
    commands.push_back(makeNextCommand());
    commands.push_back(makeShowCommand());
    commands.push_back(makeJoinCommand());
    commands.push_back(makeOpenCommand());
    commands.push_back(makeStatusCommand());
    commands.push_back(makeRemindCommand());
    commands.push_back(makeRemindersCommand());
    commands.push_back(makeAlertsCommand());
    commands.push_back(makeSnoozeCommand());
    commands.push_back(makeSetupCommand());
    commands.push_back(makeAccountsCommand());
    commands.push_back(makeCalendarsCommand());
    commands.push_back(makeReminderListsCommand());
    commands.push_back(makeContactsCommand());
    commands.push_back(makeSettingsCommand());
    commands.push_back(makeRulesCommand());
    commands.push_back(makeEventCommand());
    commands.push_back(makeWhyCommand());
    commands.push_back(makeDoctorCommand());
    commands.push_back(makeEventsCommand());
    commands.push_back(makeLinksCommand());
    return commands;
}

}  // namespace hbr
