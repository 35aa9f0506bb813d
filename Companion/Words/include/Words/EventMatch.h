#pragma once

#include <TimeAndText/Date.h>

#include <HbrCore/Events/Event.h>
#include <string_view>
#include <vector>

namespace hbr {

/// The events that the text means: the one with this id; else those with this very title; else those whose
/// id begins with it or whose title contains it (letter case ignored). A series stands once, by its
/// occurrence under way, else its next, else its last one.
std::vector<Event> matchingEvents(const std::vector<Event>& candidates, std::string_view wanted,
                                  platform::Date now);

}  // namespace hbr
