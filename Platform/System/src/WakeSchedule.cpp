#include <System/WakeSchedule.h>

#include <System/SystemClock.h>
#include <System/WallClockTimer.h>

#include <algorithm>
#include <utility>
#include <vector>

namespace platform {

struct WakeSchedule::Alarm::State {
    std::function<void()> action;
    std::optional<Date> moment;
};

struct WakeSchedule::Alarms {
    /// Gone before its alarms: then nothing wakes any more.
    WakeSchedule* schedule = nullptr;
    std::vector<std::shared_ptr<Alarm::State>> waiting;

    void changed() const {
        if (schedule) schedule->arm();
    }
};

WakeSchedule::WakeSchedule(World world) : world_(std::move(world)), alarms_(std::make_shared<Alarms>()) {
    alarms_->schedule = this;
}

WakeSchedule::~WakeSchedule() {
    alarms_->schedule = nullptr;
}

std::shared_ptr<WakeSchedule> WakeSchedule::onMainQueue(std::function<Date()> clock) {
    struct OnTimer {
        explicit OnTimer(std::function<Date()> given)
            : clock(std::move(given)),
              schedule({.clock = clock, .wakeAt = [this](std::optional<Date> moment) { set(moment); }}) {}

        void set(std::optional<Date> moment) {
            timer.reset();
            if (!moment) return;
            const Date bySystem = systemNow().addingTimeInterval(moment->timeIntervalSince(clock()));
            timer = std::make_unique<WallClockTimer>(bySystem, 0, [this, armedAt = clock()] {
                // A clock that does not advance never gets there.
                if (clock() != armedAt) schedule.wake();
            });
        }

        std::function<Date()> clock;
        std::unique_ptr<WallClockTimer> timer;
        WakeSchedule schedule;
    };
    const auto onTimer = std::make_shared<OnTimer>(std::move(clock));
    return {onTimer, &onTimer->schedule};
}

Date WakeSchedule::now() const {
    return world_.clock();
}

std::unique_ptr<WakeSchedule::Alarm> WakeSchedule::add(std::function<void()> action) {
    auto state = std::make_shared<Alarm::State>();
    state->action = std::move(action);
    alarms_->waiting.push_back(state);
    return std::unique_ptr<Alarm>(new Alarm(std::move(state), alarms_));
}

void WakeSchedule::wake() {
    wakeDate_.reset();
    const Date now = world_.clock();
    std::vector<std::shared_ptr<Alarm::State>> due;
    for (const auto& alarm : alarms_->waiting) {
        if (alarm->moment && *alarm->moment <= now) due.push_back(alarm);
    }
    for (const auto& alarm : due) {
        // Unless one before it destroyed it or gave it another moment.
        if (!alarm->moment || *alarm->moment > now) continue;
        alarm->moment.reset();
        alarm->action();
    }
    arm();
}

void WakeSchedule::arm() {
    std::optional<Date> next;
    for (const auto& alarm : alarms_->waiting) {
        if (alarm->moment && (!next || *alarm->moment < *next)) next = alarm->moment;
    }
    if (next == wakeDate_) return;
    wakeDate_ = next;
    world_.wakeAt(next);
}

WakeSchedule::Alarm::Alarm(std::shared_ptr<State> state, std::shared_ptr<Alarms> alarms)
    : state_(std::move(state)), alarms_(std::move(alarms)) {}

WakeSchedule::Alarm::~Alarm() {
    state_->moment.reset();
    std::erase(alarms_->waiting, state_);
    alarms_->changed();
}

void WakeSchedule::Alarm::set(std::optional<Date> moment) {
    if (state_->moment == moment) return;
    state_->moment = moment;
    alarms_->changed();
}

}  // namespace platform
