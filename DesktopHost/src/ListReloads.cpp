#include "ListReloads.h"

#include <HbrCore/Scheduling/ListChanges.h>
#include <HbrUtils/DateOperations.h>

namespace hbr {

ListReloads::ListReloads(CoreServices& core, platform::WakeSchedule& wakes) : core_(core) {
    const auto reload = [&core] { core.manager().reloadEvents(true); };
    nextChange_ = wakes.add(reload);
    firstMinute_ = wakes.add(reload);
    const platform::Environment& environment = *core.environment();
    firstMinute_->set(
        removingSeconds(environment.calendar.addingMinutes(environment.now(), 1), environment.calendar));
}

void ListReloads::awaitNextChange() {
    const auto lists = core_.manager().lists();
    nextChange_->set(
        nextChangeWithinAMinute(lists->upcoming(), lists->underWay(), core_.environment()->now()));
}

}  // namespace hbr
