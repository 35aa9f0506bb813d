#pragma once

#include <TimeAndText/Date.h>
#include <TimeAndText/Locale.h>

#include <string>

namespace platform {

/// Whole seconds to `target`, a begun one counted, so that 0:00 shows at the target and not before; or
/// whole seconds since it. "0:59", "12:03", "1:02:03", in the digits of the locale.
std::string timerText(Date target, Date now, const Locale& locale);
/// The first moment after `now` at which timerText differs.
Date nextTimerChange(Date target, Date now);

}  // namespace platform
