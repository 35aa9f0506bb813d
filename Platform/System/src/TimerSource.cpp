#include "TimerSource.h"

#include <cerrno>
#include <cstdint>
#include <system_error>

namespace platform {

TimerSource::TimerSource(GUnixFDSourceFunc ready, gpointer data)
    : timer_(timerfd_create(CLOCK_REALTIME, TFD_NONBLOCK | TFD_CLOEXEC)) {
    if (!timer_) throw std::system_error(errno, std::generic_category(), "timerfd_create");
    source_ = g_unix_fd_source_new(timer_.number(), G_IO_IN);
    g_source_set_callback(source_, G_SOURCE_FUNC(ready), data, nullptr);
    g_source_attach(source_, nullptr);
}

TimerSource::~TimerSource() {
    stop();
    g_source_unref(source_);
}

void TimerSource::set(const timespec& moment) {
    itimerspec when{};
    when.it_value = moment;
    timerfd_settime(timer_.number(), TFD_TIMER_ABSTIME | TFD_TIMER_CANCEL_ON_SET, &when, nullptr);
}

std::optional<TimerSource::Event> TimerSource::takeEvent() {
    std::uint64_t expirations = 0;
    if (read(timer_.number(), &expirations, sizeof expirations) >= 0) return Event::due;
    // Set between two calls: the timer runs by the new clock from then on.
    return errno == ECANCELED ? std::optional(Event::clockSet) : std::nullopt;
}

void TimerSource::stop() {
    g_source_destroy(source_);
}

}  // namespace platform
