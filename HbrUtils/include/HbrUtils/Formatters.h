#pragma once

#include <System/Environment.h>
#include <TimeAndText/DateFormatter.h>
#include <TimeAndText/DurationFormatter.h>
#include <TimeAndText/RelativeDateTimeFormatter.h>

#include <memory>

namespace hbr {

/// The shared date and duration formatters of one environment, each made on first use (thread-safe) and
/// then only read. Dates follow the formats of the locale; words of amounts and days next to today are in the
/// language of the string tables.
class Formatters {
  public:
    explicit Formatters(platform::EnvironmentRef environment);
    ~Formatters();
    /// Of Environment::current().
    static Formatters& shared();

    const platform::RelativeDateTimeFormatter& relativeDefault() const;
    const platform::DateFormatter& timeOnly() const;
    const platform::DateFormatter& timeAndDateFormatter() const;
    const platform::DateFormatter& dateOnly() const;
    /// Long date, short time.
    const platform::DateFormatter& longDateAndTime() const;
    const platform::DateFormatter& dateOnlyNoYearWeekDay() const;
    const platform::DateFormatter& calendarEventOccurrence() const;
    const platform::DateFormatter& weekDay() const;
    /// Largest unit of what is left, as the phrase "… remaining".
    std::optional<std::string> timeRemaining(double seconds) const;
    const platform::DurationFormatter& countdownFormatter() const;
    const platform::DurationFormatter& durationFormatter() const;
    const platform::DurationFormatter& durationFormatterForAccessibility() const;
    const platform::DurationFormatter& durationFormatterForTimeOffset() const;

    const platform::Environment& environment() const;

  private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace hbr
