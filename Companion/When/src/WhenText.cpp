#include <When/WhenText.h>

#include "WhenReading.h"
#include "WhenRefusing.h"

#include <TimeAndText/Text.h>

#include <cstdio>
#include <vector>

namespace hbr {

using platform::Date;
using platform::LocalTime;

namespace {

constexpr int daysAWeek = 7;
constexpr double secondsADay = 86400;
constexpr double furthestDays = 100 * 366.0;

std::string typedTime(int hour, int minute) {
    char text[32];
    std::snprintf(text, sizeof text, "%02d:%02d", hour, minute);
    return text;
}

std::string typedDay(const LocalTime& day) {
    char text[40];
    std::snprintf(text, sizeof text, "%04d-%02d-%02d", day.year, day.month, day.day);
    return text;
}

std::string typedOffset(int seconds) {
    const int minutes = std::abs(seconds) / 60;
    return (seconds < 0 ? "-" : "+") + typedTime(minutes / 60, minutes % 60);
}

bool isReal(const LocalTime& time) {
    return platform::localTimeOf(platform::secondsOf(time)) == time;
}

LocalTime daysLater(LocalTime day, int days) {
    day.day += days;
    return platform::localTimeOf(platform::secondsOf(day));
}

/// Turns what was read into a moment.
class Resolution {
  public:
    Resolution(const WhenReading& reading, const platform::Environment& environment)
        : reading_(reading),
          environment_(environment),
          calendar_(environment.calendar),
          zone_(calendar_.timeZone()),
          now_(environment.now()),
          today_(zone_.localTime(now_)) {
        today_.hour = today_.minute = today_.second = 0;
    }

    Date moment() const {
        const Date moment = resolved();
        if (moment <= now_) refuse("When.past", {typedMoment(moment, calendar_)});
        return moment;
    }

  private:
    [[noreturn]] void refuse(std::string_view key,
                             std::initializer_list<L10n::FormatArgument> arguments = {}) const {
        refuseWhen(environment_, key, arguments);
    }

    Date resolved() const {
        const bool namesDay = reading_.date || reading_.weekday || reading_.dayOffset;
        const bool hasLength = reading_.seconds || reading_.days;
        if (hasLength && !namesDay && !reading_.time) return afterLength();
        if (hasLength) {
            if (namesDay || reading_.seconds) refuse("When.lengthAndDay");
            return at(daysLater(today_, *reading_.days));
        }
        if (!namesDay && !reading_.time) refuse("When.noMoment");
        if (!reading_.time) refuse("When.noTimeOfDay", {reading_.text});
        if (reading_.date) return atDate();
        if (reading_.dayOffset) return atDayOffset();
        if (reading_.weekday) return atWeekday();
        return atTimeAlone();
    }

    Date afterLength() const {
        const double seconds = reading_.seconds.value_or(0);
        const int days = reading_.days.value_or(0);
        if (days > furthestDays || seconds > furthestDays * secondsADay) refuse("When.tooFar");
        if (days == 0 && seconds == 0) refuse("When.zero");
        return calendar_.addingDays(now_, days).addingTimeInterval(seconds);
    }

    Date atTimeAlone() const {
        const Date moment = at(today_);
        if (moment > now_) return moment;
        refuse("When.pastToday", {timeText()});
    }

    Date atDayOffset() const {
        const LocalTime day = daysLater(today_, *reading_.dayOffset);
        requireWeekday(day);
        return at(day);
    }

    Date atDate() const {
        LocalTime day = *reading_.date;
        if (day.year != 0) {
            if (!isReal(day)) refuse("When.noDay", {typedDay(day)});
            requireWeekday(day);
            return at(day);
        }
        // Without a year: the next such day. The next 29 February can be eight years away.
        constexpr int mostYears = 8;
        for (int year = today_.year; year <= today_.year + mostYears; ++year) {
            day.year = year;
            if (isReal(day) && (day > today_ || (day == today_ && at(day) > now_))) {
                requireWeekday(day);
                return at(day);
            }
        }
        refuse("When.noDay", {typedDay(day).substr(5)});
    }

    Date atWeekday() const {
        const int away = (*reading_.weekday - weekdayOf(today_) + daysAWeek) % daysAWeek;
        const LocalTime coming = daysLater(today_, away);
        const LocalTime weekLater = daysLater(coming, daysAWeek);
        if (away == 0) {
            if (reading_.isNext || at(today_) <= now_) return at(weekLater);
            refuse("When.isToday", {timeText(), typedDay(weekLater) + " " + timeText()});
        }
        if (reading_.isNext && !isNextWeekInEveryCount(away)) {
            refuse("When.twoWeeks",
                   {typedDay(coming), typedDay(weekLater), typedDay(coming) + " " + timeText()});
        }
        return at(coming);
    }

    /// Whether the day is in the next week, both with weeks that begin on Sunday and on Monday.
    bool isNextWeekInEveryCount(int away) const {
        const int sinceSunday = weekdayOf(today_) - 1;
        const int sinceMonday = (weekdayOf(today_) + 5) % daysAWeek;
        return sinceSunday + away >= daysAWeek && sinceMonday + away >= daysAWeek;
    }

    static int weekdayOf(LocalTime day) {
        const std::int64_t days = platform::secondsOf(day) / static_cast<std::int64_t>(secondsADay);
        // 1 January 1970 was a Thursday.
        return static_cast<int>((days + 4) % daysAWeek) + 1;
    }

    void requireWeekday(const LocalTime& day) const {
        if (reading_.weekday && *reading_.weekday != weekdayOf(day))
            refuse("When.otherWeekday", {typedDay(day)});
    }

    std::string timeText() const { return typedTime(reading_.time->hour, reading_.time->minute); }

    /// The time of day on that day; refused unless it exists exactly once.
    Date at(LocalTime day) const {
        day.hour = reading_.time->hour;
        day.minute = reading_.time->minute;
        day.second = reading_.time->second;
        const std::string text = typedDay(day) + " " + timeText();
        if (zone_.isInGap(day)) {
            refuse("When.gap", {text});
        }
        const Date first = zone_.date(day);
        constexpr double longestShift = 3 * 3600;
        const int before = zone_.offsetAt(first);
        const int after = zone_.offsetAt(first.addingTimeInterval(longestShift));
        if (after < before && zone_.localTime(first.addingTimeInterval(before - after)) == day) {
            const std::string start = typedDay(day) + "T" + timeText() + ":00";
            refuse("When.twice", {text, start + typedOffset(before), start + typedOffset(after)});
        }
        return first;
    }

    const WhenReading& reading_;
    const platform::Environment& environment_;
    const platform::Calendar& calendar_;
    const platform::TimeZone& zone_;
    Date now_;
    LocalTime today_;
};

}  // namespace

std::string typedMoment(Date moment, const platform::Calendar& calendar) {
    const LocalTime time = calendar.timeZone().localTime(moment);
    return typedDay(time) + " " + typedTime(time.hour, time.minute);
}

Date whenOf(std::string_view text, const platform::Environment& environment) {
    const std::string trimmed = platform::trimmed(text);
    if (const auto moment = platform::parseRfc3339(trimmed)) {
        if (*moment <= environment.now()) {
            refuseWhen(environment, "When.past", {typedMoment(*moment, environment.calendar)});
        }
        return *moment;
    }
    const WhenReading reading = readWhen(trimmed, WhenWords(environment));
    return Resolution(reading, environment).moment();
}

Date afterLength(std::string_view text, const platform::Environment& environment) {
    const std::string trimmed = platform::trimmed(text);
    const WhenReading reading = readWhen("in " + trimmed, WhenWords(environment));
    const bool isLength = (reading.seconds || reading.days) && !reading.time && !reading.date &&
                          !reading.weekday && !reading.dayOffset;
    if (!isLength) refuseWhen(environment, "When.noLength", {trimmed});
    return Resolution(reading, environment).moment();
}

}  // namespace hbr
