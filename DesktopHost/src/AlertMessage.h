#pragma once

#include <DesktopHost/PlacementsFile.h>
#include <HbrCore/CoreServices.h>
#include <HbrCore/Scheduling/AlertInvocation.h>
#include <TimeAndText/ClockReading.h>
#include <Workspace/DesktopNotifications.h>

#include <cstdint>
#include <optional>
#include <string>

namespace hbr {

namespace alertAction {
inline constexpr const char* join = "join";
inline constexpr const char* snooze = "snooze";
inline constexpr const char* untilEvent = "until-event";
}  // namespace alertAction

/// One notification an occurrence, however often it alerts.
std::string alertTag(const Event& event);
/// Title, when it begins, time, place and what can be done.
platform::DesktopNotifications::Notification alertMessage(const CoreServices& core, const Event& event,
                                                          const platform::ClockReading& clock);
/// The minutes of the snooze that a message offers: the user's first, or the second where the first ends
/// when the event begins, which is a button of its own. Nothing without such a snooze.
std::optional<std::int64_t> offeredSnooze(const UserSettingsStore& settings, const Event& event,
                                          platform::Date now);
bool isUrgent(const Event& event, UrgentAlerts urgent, platform::Date now);
/// It is over, and nobody needs to hear of it any more.
bool isOver(const Event& event, const platform::ClockReading& clock);

}  // namespace hbr
