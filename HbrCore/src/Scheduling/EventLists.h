#pragma once

#include <HbrCore/Events/EventRef.h>

#include <cstdint>
#include <memory>
#include <mutex>
#include <string_view>
#include <vector>

namespace hbr {

/// The five lists of one reload. Constant once they are published.
struct EventLists {
    EventRefs current;
    EventRefs scheduled;
    EventRefs pending;
    EventRefs snoozedPastAppleReminders;
    EventRefs pendingAppleReminders;

    std::vector<Event> all() const;
    /// By start; equal starts keep the order pending, scheduled, pending task.
    std::vector<Event> upcoming() const;
    /// By start; equal starts keep the order current, snoozed past task.
    std::vector<Event> underWay() const;
    /// The first of `all` with that id; nullptr when there is none.
    EventRef find(std::string_view id) const;
};

EventRefs references(std::vector<Event> events);
std::vector<Event> copied(const EventRefs& events);

/// The lists that readers see, replaced all five at once: an event that moves from one list to another is
/// never in both and never in none. Any thread.
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
