#include <HbrCore/Scheduling/ReloadWindow.h>

#include <HbrUtils/DateOperations.h>

#include <algorithm>

namespace hbr {

ReloadWindow ReloadWindow::of(const platform::Calendar& calendar, platform::Date now, std::int64_t days) {
    const auto bounded = static_cast<int>(std::clamp<std::int64_t>(days, -36500, 36500));
    return {now, endOfDay(calendar.addingDays(now, bounded), calendar)};
}

}  // namespace hbr
