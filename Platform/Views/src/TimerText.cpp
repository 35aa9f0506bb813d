#include "TimerText.h"

#include <array>
#include <cmath>
#include <cstdio>

namespace platform {

namespace {

/// Negative before the target. Dates hold a microsecond; what is nearer to a whole second is that second.
double wholeSecondsSince(Date target, Date now) {
    constexpr double tolerance = 1e-5;
    return std::floor(now.timeIntervalSince(target) + tolerance);
}

}  // namespace

std::string timerText(Date target, Date now, const Locale& locale) {
    const auto seconds = static_cast<long long>(std::fabs(wholeSecondsSince(target, now)));
    std::array<char, 48> text{};
    if (seconds >= 3600) {
        std::snprintf(text.data(), text.size(), "%lld:%02lld:%02lld", seconds / 3600, seconds / 60 % 60,
                      seconds % 60);
    } else {
        std::snprintf(text.data(), text.size(), "%lld:%02lld", seconds / 60, seconds % 60);
    }
    return withLocalDigits(text.data(), locale);
}

Date nextTimerChange(Date target, Date now) {
    return target.addingTimeInterval(wholeSecondsSince(target, now) + 1);
}

}  // namespace platform
