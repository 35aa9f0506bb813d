#include <HbrCore/Events/EventLookup.h>

#include <HbrCore/CoreServices.h>
#include <HbrCore/Events/EventTiming.h>

#include <cmath>
#include <tuple>
#include <utility>

namespace hbr {

namespace {

constexpr int daysBefore = 7;
constexpr int daysAfter = 60;

/// Keeps the event with the identifier that `isBefore` puts first.
template <class IsBefore>
class FirstEvent {
  public:
    FirstEvent(std::string_view identifier, IsBefore isBefore)
        : identifier_(identifier), isBefore_(std::move(isBefore)) {}

    void consider(const Event& event) {
        if (event.id != identifier_) return;
        if (!first_ || isBefore_(event, *first_)) first_ = event;
    }
    std::optional<Event>& result() { return first_; }

  private:
    std::string_view identifier_;
    IsBefore isBefore_;
    std::optional<Event> first_;
};

/// Where an occurrence stands that was moved by less than this, in seconds; the next of a daily series is
/// another one.
constexpr double greatestMove = 12 * 60 * 60;

double distance(const Event& a, const Event& b) {
    return std::abs(a.startDate.timeIntervalSince(b.startDate));
}

template <class IsBefore>
std::optional<Event> firstWithIdentifier(const CoreServices& core, std::string_view identifier,
                                         IsBefore isBefore) {
    const platform::Calendar& calendar = core.environment()->calendar;
    const platform::Date now = core.environment()->now();
    const AggregatedEventStore& store = core.aggregatedEventStore();

    // The lists lack what lies between its alert and its pending period, so a series is looked up in both.
    FirstEvent first(identifier, std::move(isBefore));
    for (const EventRef& event : core.manager().lists()->all())
        first.consider(*event);
    for (const auto& stored :
         store.events(calendar.addingDays(now, -daysBefore), calendar.addingDays(now, daysAfter))) {
        if (stored->eventIdentifier != identifier) continue;
        first.consider(Event::fromCalendarEvent(*stored, core.parser()));
    }
    if (first.result()) return first.result();

    if (const auto reminder = core.reminders().reminder(identifier))
        return Event::fromReminder(*reminder, core.parser());
    if (const auto stored = store.eventWithIdentifier(identifier))
        return Event::fromCalendarEvent(*stored, core.parser());
    if (const auto task = store.reminderWithIdentifier(identifier))
        return Event::fromAppleReminder(*task, calendar);
    return std::nullopt;
}

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
    const platform::Date now = core.environment()->now();
    return firstWithIdentifier(core, identifier,
                               [now](const Event& a, const Event& b) { return isNearer(a, b, now); });
}

std::optional<Occurrence> occurrenceOf(const CoreServices& core, const Event& event) {
    if (!event.isRecurring || event.type != Event::EventType::calendarEvent) return std::nullopt;
    for (const auto& record :
         core.aggregatedEventStore().eventsOfAllCalendars(event.startDate, event.startDate)) {
        if (record->eventIdentifier == event.id && record->startDate == event.startDate &&
            record->endDate == event.endDate)
            return Occurrence::of(*record);
    }
    return std::nullopt;
}

std::optional<Event> asItNowStands(const CoreServices& core, const Event& event) {
    auto found = firstWithIdentifier(core, event.id, [&event](const Event& a, const Event& b) {
        return distance(a, event) < distance(b, event);
    });
    if (found && event.isRecurring && distance(*found, event) >= greatestMove) return std::nullopt;
    return found;
}

}  // namespace hbr
