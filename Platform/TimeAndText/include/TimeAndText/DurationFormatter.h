#pragma once

#include <TimeAndText/Calendar.h>
#include <TimeAndText/Date.h>
#include <TimeAndText/Locale.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace platform {

/// Texts of lengths of time. Zero units are dropped everywhere; the last kept unit is cut off, never rounded
/// up; all units zero: 0 of the smallest. Negative lengths keep their sign on each part.
/// Words come from ICU, or from a caller that has words of its own. Abbreviated: ICU's narrow width where it
/// can be read ("1d 15h"), else its short one ("1 dag, 15 uur").
/// Made once (0.1 to 4 ms), then immutable and safe from any thread.
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

}  // namespace platform
