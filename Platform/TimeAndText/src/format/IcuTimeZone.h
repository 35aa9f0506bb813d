#pragma once

#include <TimeAndText/Calendar.h>
#include <TimeAndText/TimeZone.h>
#include <unicode/timezone.h>

#include <string>

namespace platform {

/// Our zone as ICU sees it. The whole offset is standard time: no text here names daylight time.
class IcuTimeZone final : public icu::TimeZone {
  public:
    explicit IcuTimeZone(platform::TimeZone zone);

    bool operator==(const icu::TimeZone& other) const override;
    IcuTimeZone* clone() const override { return new IcuTimeZone(*this); }
    UBool hasSameRules(const icu::TimeZone& other) const override { return *this == other; }

    std::int32_t getOffset(std::uint8_t era, std::int32_t year, std::int32_t month, std::int32_t day,
                           std::uint8_t dayOfWeek, std::int32_t millis, UErrorCode& status) const override;
    std::int32_t getOffset(std::uint8_t era, std::int32_t year, std::int32_t month, std::int32_t day,
                           std::uint8_t dayOfWeek, std::int32_t millis, std::int32_t monthLength,
                           UErrorCode& status) const override;
    void getOffset(UDate date, UBool isLocal, std::int32_t& rawOffset, std::int32_t& dstOffset,
                   UErrorCode& status) const override;
    void setRawOffset(std::int32_t) override {}
    std::int32_t getRawOffset() const override;
    UBool useDaylightTime() const override { return false; }
    UBool inDaylightTime(UDate, UErrorCode&) const override { return false; }

    UClassID getDynamicClassID() const override;
    static UClassID getStaticClassID();

  private:
    platform::TimeZone zone_;
};

/// Milliseconds since 1970, cut off towards the past.
UDate icuDate(Date date);
std::string utf8(const icu::UnicodeString& text);

}  // namespace platform
