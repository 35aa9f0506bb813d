#pragma once

#include <HbrCore/Events/Event.h>

#include <memory>
#include <vector>

namespace hbr {

/// An event that several lists share.
using EventRef = std::shared_ptr<const Event>;
using EventRefs = std::vector<EventRef>;

/// Copies of their own.
std::vector<Event> copied(const EventRefs& events);

}  // namespace hbr
