#include <System/ClockChange.h>

#include "TimerSource.h"

#include <cstdint>
#include <limits>
#include <utility>

namespace platform {

struct ClockChange::Source {
    explicit Source(std::function<void()> work)
        : changed(std::make_shared<const std::function<void()>>(std::move(work))), timer(ready, this) {
        arm();
    }

    /// Never falls due: only a change of the clock is of interest.
    void arm() { timer.set({.tv_sec = std::numeric_limits<std::int32_t>::max() * 2L, .tv_nsec = 0}); }

    static gboolean ready(gint, GIOCondition, gpointer data) noexcept {
        auto* self = static_cast<Source*>(data);
        const bool isChange = self->timer.takeEvent().has_value();
        self->arm();
        // The callback may destroy this.
        if (isChange) {
            const auto changed = self->changed;
            (*changed)();
        }
        return G_SOURCE_CONTINUE;
    }

    std::shared_ptr<const std::function<void()>> changed;
    TimerSource timer;
};

ClockChange::ClockChange(std::function<void()> changed)
    : source_(std::make_unique<Source>(std::move(changed))) {}
ClockChange::~ClockChange() = default;

}  // namespace platform
