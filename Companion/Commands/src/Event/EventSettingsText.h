#pragma once

#include <Session/CommandContext.h>

#include <HbrCore/Events/Event.h>
#include <string>

namespace hbr {

/// The settings that apply to one event and where they come from: whether and when it alerts, and which call
/// is joined.
std::string eventSettingsText(CommandContext& context, const Event& event);

/// {"event", "settings" (if any), "alertDate" (if in the future), "defaultConferenceUrl" (if any)}.
platform::JsonValue eventSettingsJson(CommandContext& context, const Event& event);

}  // namespace hbr
