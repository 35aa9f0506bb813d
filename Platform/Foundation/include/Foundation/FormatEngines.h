#pragma once

#include <Foundation/Calendar.h>
#include <Foundation/Date.h>
#include <Foundation/Locale.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

// Formatters on ICU pieces for one locale and zone. Made once (0.1 to 4 ms each), then immutable and safe
// from any thread; a call costs microseconds. Zone offsets come from TimeZone, never from ICU's own data.
namespace platform {

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
    /// stands in the middle of a sentence.
    static DateFormatter relativeDateAndTime(const Locale& locale, const Calendar& calendar);

    std::string string(Date date) const { return string(date, date); }
    /// `now` matters for the relative form only.
    std::string string(Date date, Date now) const;

  private:
    struct Engine;
    explicit DateFormatter(std::shared_ptr<const Engine> engine) : engine_(std::move(engine)) {}
    std::shared_ptr<const Engine> engine_;
};

/// Texts of lengths of time. Zero units are dropped everywhere; the last kept unit is cut off, never rounded
/// up; all units zero: 0 of the smallest. Negative lengths keep their sign on each part.
/// Words come from ICU, or from a caller that has words of its own. Abbreviated: ICU's narrow width where it
/// can be read ("1d 15h"), else its short one ("1 dag, 15 uur").
class DurationFormatter {
  public:
    enum class UnitsStyle { abbreviated, full };
    enum class Unit { day, hour, minute, second };
    struct Words {
        /// "2 days".
        std::function<std::string(Unit unit, std::int64_t count)> amount;
        /// Two amounts in one text, the larger unit first.
        std::function<std::string(const std::string& larger, const std::string& smaller)> joined;
    };
    struct Configuration {
        UnitsStyle style = UnitsStyle::abbreviated;
        bool days = true;
        bool hours = true;
        bool minutes = true;
        bool seconds = false;
        /// 0: no limit.
        int maximumUnitCount = 0;
        std::optional<Words> words = std::nullopt;
    };

    DurationFormatter(const Locale& locale, const Calendar& calendar, Configuration configuration);

    /// Nothing when the value is not finite.
    std::optional<std::string> string(double seconds) const;
    /// Days by the calendar: noon to noon across a change of offset is one day.
    std::optional<std::string> string(Date from, Date to) const;

  private:
    struct Engine;
    std::shared_ptr<const Engine> engine_;
};

/// "in 5 minutes", "2 hours ago"; the largest unit that differs, cut off.
class RelativeDateTimeFormatter {
  public:
    RelativeDateTimeFormatter(const Locale& locale, const Calendar& calendar);
    std::string string(Date date, Date relativeTo) const;

  private:
    struct Engine;
    std::shared_ptr<const Engine> engine_;
};

}  // namespace platform
