#include "ReloadObservers.h"

#include <HbrCore/Scheduling/CalendarEventManager.h>
#include <HeedbannerWidgetExtension/WidgetKinds.h>
#include <WidgetHost/WidgetCenter.h>

#include <array>

namespace hbr {

namespace {

using Observation = platform::NotificationCenter::Observation;

Observation observe(platform::NotificationCenter& center, std::string_view kind) {
    return center.observe(didReloadEventsNotification,
                          [kind] { platform::WidgetCenter::shared()->reloadTimelines(kind); });
}

}  // namespace

void observeReloads(platform::NotificationCenter& center) {
    // For the life of the process, whatever becomes of the bundle that asked first.
    static const auto* observations = new std::array<Observation, 3>{
        observe(center, widgetKind::nextEventCountdown), observe(center, widgetKind::upcomingEvents),
        observe(center, widgetKind::currentEvents)};
    static_cast<void>(observations);
}

}  // namespace hbr
