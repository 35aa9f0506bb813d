#pragma once

#include <HbrCore/Events/EventRef.h>
#include <TimeAndText/Date.h>

#include <optional>

namespace hbr {

/// The next moment after `now` at which one of these events begins or is over within a minute, so that only a
/// reload brings the lists up to date. Whole minutes are left out: then the manager reloads by itself.
std::optional<platform::Date> nextChangeWithinAMinute(const EventRefs& upcoming, const EventRefs& current,
                                                      platform::Date now);

}  // namespace hbr
