#pragma once

#include <HbrCore/Events/Event.h>
#include <Values/JsonValue.h>

namespace hbr {

/// The event as the programs write it: keys as in the record, absent fields left out, times RFC 3339 in
/// UTC, durations in seconds, the colour "#RRGGBB".
platform::JsonValue eventJson(const Event& event);

}  // namespace hbr
