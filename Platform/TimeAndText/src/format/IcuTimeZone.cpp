#include "IcuTimeZone.h"

#include <cmath>

#include "../time/WholeSeconds.h"

namespace platform {

UOBJECT_DEFINE_RTTI_IMPLEMENTATION(IcuTimeZone)

namespace {

constexpr std::int32_t millisPerSecond = 1000;

std::int64_t secondsOfUDate(UDate millis) {
    return static_cast<std::int64_t>(std::floor(millis / millisPerSecond));
}

std::int32_t offsetOfReading(const platform::TimeZone& zone, std::int64_t localSeconds) {
    const std::int64_t moment = wholeSecondsSince1970(zone.date(localTimeOf(localSeconds)));
    return static_cast<std::int32_t>(localSeconds - moment) * millisPerSecond;
}

}  // namespace

IcuTimeZone::IcuTimeZone(platform::TimeZone zone)
    : icu::TimeZone(icu::UnicodeString::fromUTF8(zone.name())), zone_(std::move(zone)) {}

bool IcuTimeZone::operator==(const icu::TimeZone& other) const {
    const auto* same = dynamic_cast<const IcuTimeZone*>(&other);
    return same && zone_ == same->zone_;
}

std::int32_t IcuTimeZone::getOffset(std::uint8_t era, std::int32_t year, std::int32_t month, std::int32_t day,
                                    std::uint8_t, std::int32_t millis, UErrorCode& status) const {
    if (U_FAILURE(status)) return 0;
    const int properYear = era == 0 ? 1 - year : year;
    return offsetOfReading(
        zone_, secondsOf({.year = properYear, .month = month + 1, .day = day}) + millis / millisPerSecond);
}

std::int32_t IcuTimeZone::getOffset(std::uint8_t era, std::int32_t year, std::int32_t month, std::int32_t day,
                                    std::uint8_t dayOfWeek, std::int32_t millis, std::int32_t,
                                    UErrorCode& status) const {
    return getOffset(era, year, month, day, dayOfWeek, millis, status);
}

void IcuTimeZone::getOffset(UDate date, UBool isLocal, std::int32_t& rawOffset, std::int32_t& dstOffset,
                            UErrorCode& status) const {
    rawOffset = 0;
    dstOffset = 0;
    if (U_FAILURE(status)) return;
    const std::int64_t seconds = secondsOfUDate(date);
    rawOffset =
        isLocal ? offsetOfReading(zone_, seconds) : zone_.offsetAt(dateOfSeconds(seconds)) * millisPerSecond;
}

std::int32_t IcuTimeZone::getRawOffset() const {
    return zone_.offsetAt(Date()) * millisPerSecond;
}

UDate icuDate(Date date) {
    return static_cast<double>(wholeSecondsSince1970(date)) * millisPerSecond +
           std::floor(fractionOfSecond(date) * millisPerSecond);
}

std::string utf8(const icu::UnicodeString& text) {
    std::string result;
    text.toUTF8String(result);
    return result;
}

}  // namespace platform
