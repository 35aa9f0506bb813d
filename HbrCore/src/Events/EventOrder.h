#pragma once

#include <HbrCore/Events/Event.h>

#include <vector>

namespace hbr {

/// Ascending and stable.
void sortByStart(std::vector<Event>& events);

}  // namespace hbr
