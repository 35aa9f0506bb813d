#include "EventConversions.h"

namespace hbr {

EventRef EventConversions::of(const platform::EKEventRef& record) {
    Kept& kept = kept_[record.get()];
    if (!kept.event) {
        kept.record = record;
        kept.event = std::make_shared<const Event>(Event::fromCalendarEvent(*record, parser_));
    }
    if (kept.round != round_) ++asked_;
    kept.round = round_;
    return kept.event;
}

void EventConversions::forgetUnused() {
    if (asked_ != kept_.size())
        std::erase_if(kept_, [&](const auto& each) { return each.second.round != round_; });
    ++round_;
    asked_ = 0;
}

}  // namespace hbr
