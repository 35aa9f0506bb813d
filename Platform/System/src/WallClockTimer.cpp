#include <System/SystemClock.h>
#include "FileDescriptor.h"

#include <System/WallClockTimer.h>

#include <glib-unix.h>
#include <sys/timerfd.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdint>
#include <system_error>

namespace platform {

struct WallClockTimer::Source {
    Source(Date firstDate, double seconds, std::function<void()> work)
        : next(firstDate),
          interval(seconds),
          action(std::make_shared<const std::function<void()>>(std::move(work))),
          timer(timerfd_create(CLOCK_REALTIME, TFD_NONBLOCK | TFD_CLOEXEC)) {
        if (!timer) throw std::system_error(errno, std::generic_category(), "timerfd_create");
        arm();
        source = g_unix_fd_source_new(timer.number(), G_IO_IN);
        g_source_set_callback(source, G_SOURCE_FUNC(ready), this, nullptr);
        g_source_attach(source, nullptr);
    }
    ~Source() {
        g_source_destroy(source);
        g_source_unref(source);
    }
    Source(const Source&) = delete;
    Source& operator=(const Source&) = delete;

    void arm() {
        itimerspec when{};
        double seconds = std::floor(next.timeIntervalSince1970());
        double fraction = next.timeIntervalSince1970() - seconds;
        when.it_value.tv_sec = static_cast<time_t>(seconds);
        when.it_value.tv_nsec = std::min(static_cast<long>(std::ceil(fraction * 1e9)), 999'999'999L);
        if (when.it_value.tv_sec <= 0) when.it_value = {0, 1};  // zero would disarm
        // A clock change between two calls is reported as ECANCELED; the timer runs by the new clock then.
        timerfd_settime(timer.number(), TFD_TIMER_ABSTIME | TFD_TIMER_CANCEL_ON_SET, &when, nullptr);
    }

    /// The first point of the grid `next + n * interval` that lies after `now`, also to the left.
    void align(Date now) {
        double steps = std::floor(now.timeIntervalSince(next) / interval) + 1;
        next = next.addingTimeInterval(steps * interval);
    }

    static gboolean ready(gint, GIOCondition, gpointer data) noexcept {
        auto* self = static_cast<Source*>(data);
        std::uint64_t expirations = 0;
        ssize_t count = read(self->timer.number(), &expirations, sizeof expirations);
        if (count < 0 && errno != ECANCELED) return G_SOURCE_CONTINUE;
        Date now = systemNow();
        bool isDue = now >= self->next;
        if (self->interval <= 0) {
            if (isDue) g_source_destroy(self->source);
        } else if (isDue || count < 0) {
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
    FileDescriptor timer;
    GSource* source = nullptr;
};

WallClockTimer::WallClockTimer(Date first, double interval, std::function<void()> action)
    : source_(std::make_unique<Source>(first, interval, std::move(action))) {}
WallClockTimer::~WallClockTimer() = default;

}  // namespace platform
