#pragma once

#include <HbrCore/Events/Event.h>
#include <System/Environment.h>

#include <memory>
#include <optional>

namespace hbr {

/// The events with which the product shows itself. The upcoming ones are made on first use and keep their
/// times. Safe from any thread.
class DemoEvents {
  public:
    explicit DemoEvents(platform::EnvironmentRef environment);
    ~DemoEvents();

    /// One hour from the next full hour.
    Event makeInAppDemoEvent() const;
    /// Without `start` in a minute; without `end` one hour long.
    Event demo_makeOngoingEvent(std::optional<platform::Date> start = {},
                                std::optional<platform::Date> end = {}) const;
    /// Today from 15:00 to 16:00.
    Event demo_makeOngoingEventForScreenshots() const;
    const Event& demo_upcomingEvent1() const;
    const Event& demo_upcomingEvent2() const;
    const Event& demo_upcomingEvent3() const;
    const Event& demo_upcomingAppleReminderEvent1() const;

  private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace hbr
