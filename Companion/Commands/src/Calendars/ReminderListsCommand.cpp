#include "Calendars/CollectionsCommand.h"

namespace hbr {

std::unique_ptr<Command> makeReminderListsCommand() {
    return std::make_unique<CollectionsCommand>(platform::EKEntityType::reminder);
}

}  // namespace hbr
