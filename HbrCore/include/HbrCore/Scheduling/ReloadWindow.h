#pragma once

#include <Foundation/Calendar.h>

#include <cstdint>

namespace hbr {

/// Where the interval that a reload looks at ends: 23:59:59 of the day that lies `days` days after today.
platform::Date endOfReloadWindow(const platform::Calendar& calendar, platform::Date now, std::int64_t days);

}  // namespace hbr
