#pragma once

#include <TimeAndText/Date.h>

#include <HbrCore/Events/Event.h>
#include <string_view>
#include <vector>

namespace hbr {

/// The events that the text names: the one with this id; else those with exactly this title; else those whose
/// id begins with it or whose title contains it (letter case ignored). Of a series only one occurrence is
/// listed: the one under way, else the next, else the last.
std::vector<Event> matchingEvents(const std::vector<Event>& candidates, std::string_view wanted,
                                  platform::Date now);

}  // namespace hbr
