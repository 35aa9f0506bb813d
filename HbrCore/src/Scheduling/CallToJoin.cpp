#include <HbrCore/Scheduling/CallToJoin.h>

#include <HbrCore/CoreServices.h>
#include <HbrCore/Events/Attendance.h>
#include <HbrCore/Scheduling/AlertSchedule.h>

#include <algorithm>
#include <limits>

namespace hbr {

namespace {

bool hasCall(const Event& event) {
    return !event.videoConferenceLinks.empty();
}

std::optional<Event> firstWithCall(const std::vector<Event>& events) {
    const auto found = std::ranges::find_if(events, hasCall);
    return found == events.end() ? std::nullopt : std::optional(*found);
}

/// An event to come whose alert was due already.
class NextInsideItsLead {
  public:
    explicit NextInsideItsLead(const CoreServices& core) : core_(core), now_(core.environment()->now()) {}

    std::optional<Event> find() {
        considerCalendars();
        for (const auto& reminder : core_.reminders().futureReminders()) {
            const double lead = static_cast<double>(reminder.timeOffsetSeconds());
            consider(Event::fromReminder(reminder, core_.parser()),
                     reminder.date().addingTimeInterval(-lead));
        }
        return next_;
    }

  private:
    void considerCalendars() {
        const platform::Date end = core_.environment()->calendar.addingDays(
            now_, static_cast<int>(
                      std::clamp<std::int64_t>(core_.settings().upcomingEventsDaysFilter(), 0, maximalDays)) +
                      1);
        const AttendanceSettings attendance(core_.settings());
        const AlertSettings alerts = AlertSettings::of(core_.settings());
        const auto own = core_.eventSettings().customSettings();
        // So early that an alert in the past is told, too.
        const platform::Date everything(-std::numeric_limits<double>::max());
        for (const auto& stored : core_.aggregatedEventStore().events(now_, end)) {
            if (stored->startDate <= now_ || !shouldSchedule(*stored, attendance)) continue;
            const Event event = Event::fromCalendarEvent(*stored, core_.parser());
            const auto alert = alertDate(event, alerts, EventSettingsStore::find(own, event.id), everything);
            if (alert) consider(event, *alert);
        }
    }

    void consider(const Event& event, platform::Date alert) {
        if (alert > now_ || !hasCall(event)) return;
        if (!next_ || event.startDate < next_->startDate) next_ = event;
    }

    static constexpr std::int64_t maximalDays = 366;

    const CoreServices& core_;
    platform::Date now_;
    std::optional<Event> next_;
};

}  // namespace

std::optional<Event> callToJoin(const CoreServices& core) {
    if (auto pending = firstWithCall(core.manager().pendingEvents())) return pending;
    // By start, so the last one began last.
    auto current = core.manager().currentEvents();
    std::ranges::reverse(current);
    if (auto underWay = firstWithCall(current)) return underWay;
    return NextInsideItsLead(core).find();
}

std::optional<Event> nextCall(const CoreServices& core) {
    return firstWithCall(core.manager().allCachedUpcomingEvents());
}

}  // namespace hbr
