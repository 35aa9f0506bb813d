#include <HbrCore/Events/EventLookup.h>

#include <HbrCore/CoreServices.h>
#include <HbrCore/Events/EventTiming.h>

#include <tuple>

namespace hbr {

namespace {

constexpr int daysBefore = 7;
constexpr int daysAfter = 60;

class NearestEvent {
  public:
    NearestEvent(std::string_view identifier, platform::Date now) : identifier_(identifier), now_(now) {}

    void consider(const Event& event) {
        if (event.id != identifier_) return;
        if (!nearest_ || isNearer(event, *nearest_, now_)) nearest_ = event;
    }
    std::optional<Event>& result() { return nearest_; }

  private:
    std::string_view identifier_;
    platform::Date now_;
    std::optional<Event> nearest_;
};

}  // namespace

bool isNearer(const Event& a, const Event& b, platform::Date now) {
    const auto rank = [now](const Event& event) {
        const double distance = event.startDate.timeIntervalSince(now);
        const int kind = isCurrentEvent(event, now) ? 0 : distance >= 0 ? 1 : 2;
        return std::tuple(kind, distance < 0 ? -distance : distance);
    };
    return rank(a) < rank(b);
}

std::optional<Event> eventWithIdentifier(const CoreServices& core, std::string_view identifier) {
    const platform::Calendar& calendar = core.environment()->calendar;
    const platform::Date now = core.environment()->now();
    const AggregatedEventStore& store = core.aggregatedEventStore();

    // The lists lack what lies between its alert and its pending period, so a series is looked up in both.
    NearestEvent nearest(identifier, now);
    for (const auto& event : core.manager().allCachedEvents())
        nearest.consider(event);
    for (const auto& stored :
         store.events(calendar.addingDays(now, -daysBefore), calendar.addingDays(now, daysAfter))) {
        if (stored->eventIdentifier != identifier) continue;
        nearest.consider(Event::fromCalendarEvent(*stored, core.parser()));
    }
    if (nearest.result()) return nearest.result();

    if (const auto reminder = core.reminders().reminder(identifier))
        return Event::fromReminder(*reminder, core.parser());
    if (const auto stored = store.eventWithIdentifier(identifier))
        return Event::fromCalendarEvent(*stored, core.parser());
    if (const auto task = store.reminderWithIdentifier(identifier))
        return Event::fromAppleReminder(*task, calendar);
    return std::nullopt;
}

}  // namespace hbr
