#include <HbrCore/Scheduling/CallToJoin.h>

#include <HbrCore/CoreServices.h>

#include <algorithm>
#include <ranges>

namespace hbr {

namespace {

template <class Events>
std::optional<Event> firstWithCall(const Events& events) {
    const auto found = std::ranges::find_if(
        events, [](const EventRef& event) { return !event->videoConferenceLinks.empty(); });
    return found == events.end() ? std::nullopt : std::optional(**found);
}

}  // namespace

std::optional<Event> callToJoin(const CoreServices& core) {
    const auto lists = core.manager().lists();
    if (auto pending = firstWithCall(lists->pending)) return pending;
    // By start, so the last one began last.
    if (auto underWay = firstWithCall(std::views::reverse(lists->current))) return underWay;
    return firstWithCall(lists->insideLead);
}

std::optional<Event> nextCall(const CoreServices& core) {
    return firstWithCall(core.manager().lists()->upcoming());
}

}  // namespace hbr
