#include <System/WallClockTimer.h>

#include <System/SystemClock.h>
#include "TimerSource.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace platform {

struct WallClockTimer::Source {
    Source(Date firstDate, double seconds, std::function<void()> work)
        : next(firstDate),
          interval(seconds),
          action(std::make_shared<const std::function<void()>>(std::move(work))),
          timer(ready, this) {
        arm();
    }

    void arm() {
        const double seconds = std::floor(next.timeIntervalSince1970());
        const double fraction = next.timeIntervalSince1970() - seconds;
        timespec moment{.tv_sec = static_cast<time_t>(seconds),
                        .tv_nsec = std::min(static_cast<long>(std::ceil(fraction * 1e9)), 999'999'999L)};
        if (moment.tv_sec <= 0) moment = {.tv_sec = 0, .tv_nsec = 1};  // zero would disarm
        timer.set(moment);
    }

    /// The first point of the grid `next + n * interval` that lies after `now`, also to the left.
    void align(Date now) {
        double steps = std::floor(now.timeIntervalSince(next) / interval) + 1;
        next = next.addingTimeInterval(steps * interval);
    }

    static gboolean ready(gint, GIOCondition, gpointer data) noexcept {
        auto* self = static_cast<Source*>(data);
        const auto event = self->timer.takeEvent();
        if (!event) return G_SOURCE_CONTINUE;
        Date now = systemNow();
        bool isDue = now >= self->next;
        if (self->interval <= 0) {
            if (isDue) self->timer.stop();
        } else if (isDue || event == TimerSource::Event::clockSet) {
            self->align(now);
        }
        self->arm();
        // The action may destroy the timer: nothing of `self` is touched after it.
        if (isDue) {
            auto action = self->action;
            (*action)();
        }
        return G_SOURCE_CONTINUE;
    }

    Date next;
    double interval;
    std::shared_ptr<const std::function<void()>> action;
    TimerSource timer;
};

WallClockTimer::WallClockTimer(Date first, double interval, std::function<void()> action)
    : source_(std::make_unique<Source>(first, interval, std::move(action))) {}
WallClockTimer::~WallClockTimer() = default;

}  // namespace platform
