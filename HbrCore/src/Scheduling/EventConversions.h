#pragma once

#include <CalendarStore/EKCalendarItem.h>
#include <HbrCore/Events/EventRef.h>
#include <TimeAndText/Calendar.h>

#include "RecordCache.h"

namespace hbr {

/// The events made of the store's records, kept from reload to reload. Not for several threads.
class EventConversions {
  public:
    EventConversions(const VideoConferenceLinkParser& parser, const platform::Calendar& calendar)
        : parser_(parser), calendar_(calendar) {}

    EventRef of(const platform::EKEventRef& record);
    /// nullptr for a task that cannot be an event.
    EventRef of(const platform::EKReminderRef& record);
    /// Ends a round of questions: what was not asked for in it is dropped.
    void forgetUnused();

  private:
    const VideoConferenceLinkParser& parser_;
    const platform::Calendar& calendar_;
    RecordCache<platform::EKEvent, EventRef> events_;
    RecordCache<platform::EKReminder, EventRef> tasks_;
};

}  // namespace hbr
