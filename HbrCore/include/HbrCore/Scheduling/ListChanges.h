#pragma once

#include <HbrCore/Events/Event.h>
#include <TimeAndText/Date.h>

#include <optional>
#include <vector>

namespace hbr {

/// The next moment after `now` at which one of these events begins or is over within a minute, so that only a
/// reload brings the lists up to date. Whole minutes are left out: then the manager reloads by itself.
std::optional<platform::Date> nextChangeWithinAMinute(const std::vector<Event>& upcoming,
                                                      const std::vector<Event>& current, platform::Date now);

}  // namespace hbr
