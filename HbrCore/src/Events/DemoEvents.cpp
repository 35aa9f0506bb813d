#include <HbrCore/Events/DemoEvents.h>

#include <HbrLocalization/L10n.h>
#include <HbrUtils/Colors.h>
#include <HbrUtils/DateOperations.h>

#include <mutex>
#include <string>
#include <utility>

namespace hbr {

namespace {

constexpr double hour = 3600;
constexpr platform::Color calendarBlue{0.2, 0.56, 0.86, 1};
constexpr platform::Color systemRed = platform::Color::hex(0xFF3B30);
constexpr platform::Color systemOrange = platform::Color::hex(0xFF9500);
constexpr std::string_view sharedNotes =
    "Those are the notes of the meeting. This is a link: https://quietlark.example \xF0\x9F\x92\xAA";

VideoConferenceLink link(const VideoConferenceService& service, std::string_view address) {
    return {service, platform::Url::parse(address).value()};
}

VideoConferenceLink hangoutsLink() {
    return link(VideoConferenceService::googleHangouts(), "https://hangouts.google.com/hangouts/_/quietlark");
}

VideoConferenceLink zoomLink() {
    return link(VideoConferenceService::zoom(), "https://zoom.us/j/123456789");
}

/// What all demonstration events but the one of the first run share.
Event demoEvent(std::string id, std::string title, platform::Date start, platform::Date end) {
    Event event;
    event.id = std::move(id);
    event.startDate = start;
    event.endDate = end;
    event.title = std::move(title);
    event.notes = std::string(sharedNotes);
    event.color = calendarBlue;
    event.calendarName = "Work";
    return event;
}

}  // namespace

struct DemoEvents::State {
    platform::EnvironmentRef environment;
    std::once_flag made;
    Event upcoming1;
    Event upcoming2;
    Event upcoming3;
    Event appleReminder;

    platform::Date today(int hours, int minutes) const {
        return makeToday(hours, minutes, environment->calendar, environment->now());
    }

    const State& upcoming() {
        std::call_once(made, [this] {
            upcoming1 = demoEvent("demo_upcoming1", "Design Sync", today(16, 30), today(17, 0));
            upcoming1.isRecurring = true;
            upcoming1.videoConferenceLinks = {hangoutsLink()};

            upcoming2 = demoEvent("demo_upcoming2", "Candidate Interview", today(17, 0), today(17, 45));
            upcoming2.location = "Conference Room 2";
            upcoming2.color = systemRed;
            upcoming2.videoConferenceLinks = {hangoutsLink()};

            const platform::Calendar& calendar = environment->calendar;
            upcoming3 = demoEvent("demo_upcoming3", "Daily Standup", calendar.addingDays(today(9, 0), 1),
                                  calendar.addingDays(today(10, 0), 1));
            upcoming3.isRecurring = true;
            upcoming3.videoConferenceLinks = {hangoutsLink()};

            appleReminder =
                demoEvent("demo_appleReminder_upcoming1", "Write sales report", today(16, 45), today(16, 45));
            appleReminder.type = Event::EventType::appleReminder;
            appleReminder.color = systemOrange;
        });
        return *this;
    }
};

DemoEvents::DemoEvents(platform::EnvironmentRef environment) : state_(std::make_unique<State>()) {
    state_->environment = std::move(environment);
}

DemoEvents::~DemoEvents() = default;

Event DemoEvents::makeInAppDemoEvent() const {
    const platform::Date start = nextFullHour(state_->environment->now(), state_->environment->calendar);
    Event event = demoEvent("demo", L10n::Onboarding::DemoEvent::title(*state_->environment), start,
                            start.addingTimeInterval(hour));
    event.notes = L10n::Onboarding::DemoEvent::notes(*state_->environment);
    event.color = Colors::primary();
    event.videoConferenceLinks = {VideoConferenceLink::demo()};
    return event;
}

Event DemoEvents::demo_makeOngoingEvent(std::optional<platform::Date> start,
                                        std::optional<platform::Date> end) const {
    const platform::Environment& environment = *state_->environment;
    const platform::Date begins = start ? *start : environment.calendar.addingMinutes(environment.now(), 1);
    Event event = demoEvent("demo_ongoing", "Board Meeting", begins,
                            end ? *end : environment.calendar.addingMinutes(begins, 60));
    event.location = "Conference Room";
    event.isRecurring = true;
    event.videoConferenceLinks = {hangoutsLink(), zoomLink()};
    return event;
}

Event DemoEvents::demo_makeOngoingEventForScreenshots() const {
    return demo_makeOngoingEvent(state_->today(15, 0), state_->today(16, 0));
}

const Event& DemoEvents::demo_upcomingEvent1() const {
    return state_->upcoming().upcoming1;
}
const Event& DemoEvents::demo_upcomingEvent2() const {
    return state_->upcoming().upcoming2;
}
const Event& DemoEvents::demo_upcomingEvent3() const {
    return state_->upcoming().upcoming3;
}
const Event& DemoEvents::demo_upcomingAppleReminderEvent1() const {
    return state_->upcoming().appleReminder;
}

}  // namespace hbr
