#pragma once

#include <TimeAndText/Calendar.h>

#include <cstdint>

namespace hbr {

/// The interval that a reload looks at: from now to 23:59:59 of the day that lies `days` days after today.
struct ReloadWindow {
    platform::Date start;
    platform::Date end;

    static ReloadWindow of(const platform::Calendar& calendar, platform::Date now, std::int64_t days);
};

}  // namespace hbr
