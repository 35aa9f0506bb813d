#pragma once

#include <CalendarStore/EKCalendarItem.h>
#include <HbrCore/Events/EventRef.h>

#include <cstddef>
#include <cstdint>
#include <unordered_map>

namespace hbr {

/// The events made of the store's records, kept from reload to reload. A record never changes, and an
/// unchanged store answers with the same ones. Not for several threads.
class EventConversions {
  public:
    explicit EventConversions(const VideoConferenceLinkParser& parser) : parser_(parser) {}

    EventRef of(const platform::EKEventRef& record);
    /// Ends a round of questions: what was not asked for in it is dropped.
    void forgetUnused();
    std::size_t size() const { return kept_.size(); }

  private:
    struct Kept {
        /// Keeps the record, so that its address stays its own.
        platform::EKEventRef record;
        EventRef event;
        std::uint64_t round = 0;
    };

    const VideoConferenceLinkParser& parser_;
    std::unordered_map<const platform::EKEvent*, Kept> kept_;
    std::uint64_t round_ = 1;
    std::size_t asked_ = 0;
};

}  // namespace hbr
