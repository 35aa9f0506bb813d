#pragma once

#include <TimeAndText/Calendar.h>
#include <TimeAndText/Date.h>
#include <TimeAndText/Locale.h>

#include <memory>
#include <string>
#include <string_view>

namespace platform {

/// On ICU pieces, for one locale and zone. Made once (0.1 to 4 ms), then immutable and safe from any thread;
/// a call costs microseconds. Zone offsets come from TimeZone, never from ICU's own data.
class DateFormatter {
  public:
    enum class Style { none, short_, medium, long_ };

    static DateFormatter withStyles(const Locale& locale, const Calendar& calendar, Style date, Style time);
    /// Localized order of the fields of an ICU skeleton ("EdMMM").
    static DateFormatter withTemplate(const Locale& locale, const Calendar& calendar,
                                      std::string_view skeleton);
    /// A fixed ICU pattern.
    static DateFormatter withPattern(const Locale& locale, const Calendar& calendar,
                                     std::string_view pattern);
    /// Medium date and short time where days next to `now` are words (today, tomorrow, …) in the form that
    /// is in the middle of a sentence.
    static DateFormatter relativeDateAndTime(const Locale& locale, const Calendar& calendar);

    std::string string(Date date) const { return string(date, date); }
    /// `now` matters for the relative form only.
    std::string string(Date date, Date now) const;

  private:
    struct Engine;
    explicit DateFormatter(std::shared_ptr<const Engine> engine) : engine_(std::move(engine)) {}
    std::shared_ptr<const Engine> engine_;
};

}  // namespace platform
