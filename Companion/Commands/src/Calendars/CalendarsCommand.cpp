#include "Calendars/CollectionsCommand.h"

namespace hbr {

std::unique_ptr<Command> makeCalendarsCommand() {
    return std::make_unique<CollectionsCommand>(platform::EKEntityType::event);
}

}  // namespace hbr
