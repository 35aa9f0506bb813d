#pragma once

#include <TimeAndText/Date.h>

#include <functional>
#include <memory>
#include <optional>

namespace platform {

/// The one timer of everything that waits for a moment of the wall clock. Main thread.
class WakeSchedule {
    struct Alarms;

  public:
    struct World {
        std::function<Date()> clock;
        /// Takes the moment at which to call `wake` next, in place of the moment named before.
        std::function<void(std::optional<Date>)> wakeAt;
    };
    explicit WakeSchedule(World world);
    /// On a timer of the main queue. `clock` may be ahead of the system's or behind it.
    static std::shared_ptr<WakeSchedule> onMainQueue(std::function<Date()> clock);
    ~WakeSchedule();
    WakeSchedule(const WakeSchedule&) = delete;
    WakeSchedule& operator=(const WakeSchedule&) = delete;

    Date now() const;

    /// One thing that waits, until it is destroyed.
    class Alarm {
      public:
        ~Alarm();
        Alarm(const Alarm&) = delete;
        Alarm& operator=(const Alarm&) = delete;
        /// In place of the moment named before.
        void set(std::optional<Date> moment);

      private:
        friend class WakeSchedule;
        struct State;
        Alarm(std::shared_ptr<State> state, std::shared_ptr<Alarms> alarms);
        std::shared_ptr<State> state_;
        std::shared_ptr<Alarms> alarms_;
    };
    /// `action` is called once for each moment that is set and comes. It may set, make and destroy alarms.
    std::unique_ptr<Alarm> add(std::function<void()> action);

    /// The moment that was named to `wakeAt` has come.
    void wake();

  private:
    void arm();

    World world_;
    std::optional<Date> wakeDate_;
    std::shared_ptr<Alarms> alarms_;
};

}  // namespace platform
