#pragma once

#include <HbrCore/CoreServices.h>
#include <HbrCore/Scheduling/AlertInvocation.h>
#include <Workspace/DesktopNotifications.h>

#include <string>

namespace hbr {

namespace alertAction {
inline constexpr const char* join = "join";
inline constexpr const char* snooze = "snooze";
inline constexpr const char* untilEvent = "until-event";
}  // namespace alertAction

/// One notification an occurrence, however often it alerts.
std::string alertTag(const Event& event);
/// Title, time, place and what can be done. Names moments, not distances: the message stays while time
/// goes by.
platform::DesktopNotifications::Notification alertMessage(const CoreServices& core, const Event& event);
/// It is over, and nobody needs to hear of it any more.
bool isOver(const Event& event, platform::Date now);

}  // namespace hbr
