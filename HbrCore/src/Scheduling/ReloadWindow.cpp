#include <HbrCore/Scheduling/ReloadWindow.h>

#include <HbrUtils/DateOperations.h>

#include <algorithm>

namespace hbr {

platform::Date endOfReloadWindow(const platform::Calendar& calendar, platform::Date now, std::int64_t days) {
    const auto bounded = static_cast<int>(std::clamp<std::int64_t>(days, -36500, 36500));
    return endOfDay(calendar.addingDays(now, bounded), calendar);
}

}  // namespace hbr
