#pragma once

#include <HbrCore/Scheduling/EventLists.h>

#include <cstdint>
#include <memory>
#include <mutex>

namespace hbr {

/// The lists that readers see, replaced all at once: an event that moves from one list to another is never in
/// both and never in none. Any thread.
class PublishedLists {
  public:
    std::shared_ptr<const EventLists> load() const;
    /// The last writer wins. False when a reload that was started later had published already, so that what
    /// is shown now is older than what was known.
    bool publish(std::uint64_t reload, EventLists lists);

  private:
    mutable std::mutex mutex_;
    std::shared_ptr<const EventLists> lists_ = std::make_shared<const EventLists>();
    std::uint64_t newest_ = 0;
};

}  // namespace hbr
