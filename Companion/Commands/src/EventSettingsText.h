#pragma once

#include <Session/CommandContext.h>

#include <HbrCore/Events/Event.h>
#include <string>

namespace hbr {

/// What holds for one event and where it comes from: whether it alerts, when, and which call is joined.
std::string eventSettingsText(CommandContext& context, const Event& event);

/// {"event", "settings" (when there are some), "alertDate" (when it is still to come),
/// "defaultConferenceUrl" (when there is one)}.
platform::JsonValue eventSettingsJson(CommandContext& context, const Event& event);

}  // namespace hbr
