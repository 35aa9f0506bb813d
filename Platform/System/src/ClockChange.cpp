#include <System/ClockChange.h>

#include "FileDescriptor.h"

#include <glib-unix.h>
#include <sys/timerfd.h>

#include <cerrno>
#include <cstdint>
#include <ctime>
#include <limits>
#include <system_error>
#include <utility>

namespace platform {

struct ClockChange::Source {
    explicit Source(std::function<void()> work)
        : changed(std::make_shared<const std::function<void()>>(std::move(work))),
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

    /// Never falls due: only the cancellation that a change of the clock causes is of interest.
    void arm() {
        itimerspec when{};
        when.it_value.tv_sec = std::numeric_limits<std::int32_t>::max() * 2L;
        timerfd_settime(timer.number(), TFD_TIMER_ABSTIME | TFD_TIMER_CANCEL_ON_SET, &when, nullptr);
    }

    static gboolean ready(gint, GIOCondition, gpointer data) noexcept {
        auto* self = static_cast<Source*>(data);
        std::uint64_t expirations = 0;
        const bool isChange =
            read(self->timer.number(), &expirations, sizeof expirations) >= 0 || errno == ECANCELED;
        self->arm();
        // The callback may destroy this.
        if (isChange) {
            const auto changed = self->changed;
            (*changed)();
        }
        return G_SOURCE_CONTINUE;
    }

    std::shared_ptr<const std::function<void()>> changed;
    FileDescriptor timer;
    GSource* source = nullptr;
};

ClockChange::ClockChange(std::function<void()> changed)
    : source_(std::make_unique<Source>(std::move(changed))) {}
ClockChange::~ClockChange() = default;

}  // namespace platform
