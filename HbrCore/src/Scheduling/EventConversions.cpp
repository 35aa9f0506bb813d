#include "EventConversions.h"

#include <utility>

namespace hbr {

EventRef EventConversions::of(const platform::EKEventRef& record) {
    EventRef& kept = events_.of(record);
    if (!kept) kept = std::make_shared<const Event>(Event::fromCalendarEvent(*record, parser_));
    return kept;
}

EventRef EventConversions::of(const platform::EKReminderRef& record) {
    EventRef& kept = tasks_.of(record);
    if (!kept) {
        auto event = Event::fromAppleReminder(*record, calendar_);
        if (event) kept = std::make_shared<const Event>(*std::move(event));
    }
    return kept;
}

void EventConversions::forgetUnused() {
    events_.forgetUnused();
    tasks_.forgetUnused();
}

}  // namespace hbr
