#include <HbrCore/Events/EventRef.h>

namespace hbr {

std::vector<Event> copied(const EventRefs& events) {
    std::vector<Event> copies;
    copies.reserve(events.size());
    for (const EventRef& event : events)
        copies.push_back(*event);
    return copies;
}

}  // namespace hbr
