#pragma once

#include <HbrCore/Events/EventRef.h>

#include <vector>

namespace hbr {

/// Ascending and stable.
void sortByStart(std::vector<Event>& events);
void sortByStart(EventRefs& events);

}  // namespace hbr
