#pragma once

#include <TimeAndText/TimeZone.h>

#include <array>
#include <cstdint>
#include <cstdio>
#include <random>
#include <set>
#include <string>
#include <utility>

namespace test {

/// "20260304T094100"
inline std::string written(std::int64_t seconds) {
    const auto t = platform::localTimeOf(seconds);
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%04d%02d%02dT%02d%02d%02d", t.year, t.month, t.day, t.hour,
                  t.minute, t.second);
    return text.data();
}

/// Rules of every frequency with the parts that RFC 5545 allows for it.
class RandomRecurrenceRules {
  public:
    std::string rule() {
        constexpr std::array<const char*, 5> frequencies = {"HOURLY", "DAILY", "WEEKLY", "MONTHLY", "YEARLY"};
        frequency_ = below(5);
        hasParts_ = false;
        text_ = std::string("FREQ=") + frequencies[static_cast<std::size_t>(frequency_)];
        if (below(2)) text_ += ";INTERVAL=" + std::to_string(1 + below(4));
        // libical drops the start's week for some starts late in it where WKST is Wednesday to Saturday.
        if (below(2)) text_ += std::string(";WKST=") + dayNames[static_cast<std::size_t>(below(3))];
        // BYSETPOS chooses among an interval's instances; libical chooses among days of months and years
        // only.
        choosesByPosition_ = frequency_ >= monthly && below(3) == 0;
        dayParts();
        if (choosesByPosition_) {
            if (hasParts_) numbers("BYSETPOS", 1, 3, true, 2);
        } else {
            // libical hands out the first instance twice for BYHOUR in an hourly rule.
            if (frequency_ != hourly && below(4) == 0) numbers("BYHOUR", 0, 23, false, 3);
            if (below(6) == 0) numbers("BYMINUTE", 0, 59, false, 3);
        }
        return text_;
    }

    /// COUNT, UNTIL or neither.
    std::string end(std::int64_t start) {
        const int kind = below(3);
        if (kind == 0) return ";COUNT=" + std::to_string(1 + below(20));
        if (kind == 1) {
            const int days = frequency_ == hourly ? 1 + below(20) : frequency_ == yearly ? 5000 : 400;
            return ";UNTIL=" + written(start + std::int64_t{86400} * (1 + below(days)));
        }
        return "";
    }

    std::int64_t moment() {
        const int year = 1997 + below(30);
        const int month = 1 + below(12);
        const int day = 1 + below(28);
        const int hour = below(24);
        return platform::secondsOf({year, month, day, hour, below(60), 0});
    }

    int below(int bound) { return static_cast<int>(random_() % static_cast<unsigned>(bound)); }

  private:
    enum Frequency { hourly, daily, weekly, monthly, yearly };
    static constexpr std::array<const char*, 7> dayNames = {"SU", "MO", "TU", "WE", "TH", "FR", "SA"};

    void dayParts() {
        const int kind = below(6);
        const bool hasYearDays = kind == 1 && (frequency_ == yearly || frequency_ == hourly);
        const bool hasWeeks = kind == 2 && frequency_ == yearly;
        // Where the parts only limit, libical knows no values counted from the end; elsewhere it takes a
        // list's order for that of the days, so that BYSETPOS chooses wrongly.
        const bool negativeToo = frequency_ > daily && !choosesByPosition_;
        // libical keeps a yearly BYMONTHDAY to the start's month instead of expanding it in every month,
        // finds nothing for BYYEARDAY and misses days for BYWEEKNO beside BYMONTH.
        const bool needsMonth = kind == 0 && frequency_ == yearly;
        const bool bearsMonth = frequency_ != yearly || (!hasYearDays && !hasWeeks);
        if (bearsMonth && (needsMonth || below(3) == 0)) numbers("BYMONTH", 1, 12, false, 4);
        if (kind == 0 && frequency_ != weekly) numbers("BYMONTHDAY", 1, 31, negativeToo, 4);
        if (hasYearDays) numbers("BYYEARDAY", 1, 366, negativeToo, 4);
        // libical misses days of weeks that two years share, counts wrongly from the last week, and yields
        // nothing without BYDAY, where the start's weekday counts.
        if (hasWeeks) numbers("BYWEEKNO", 2, 51, false, 3);
        if (kind == 3 || hasWeeks || below(3) == 0) weekdays(!hasWeeks && frequency_ >= monthly && below(2));
    }

    void numbers(const char* name, int low, int high, bool negativeToo, int most) {
        text_ += std::string(";") + name + "=";
        // Sorted: libical 3.0.16 follows lists of times of day in the order in which they are written.
        std::set<int> values;
        for (int i = 1 + below(most); i > 0; --i) {
            const int value = low + below(high - low + 1);
            values.insert(negativeToo && below(2) ? -value : value);
        }
        const char* separator = "";
        for (const int value : values)
            text_ += std::exchange(separator, ",") + std::to_string(value);
        hasParts_ = true;
    }

    void weekdays(bool withPositions) {
        std::set<std::string> values;
        for (int i = 1 + below(3); i > 0; --i) {
            const std::string position =
                withPositions ? std::to_string((below(2) ? 1 : -1) * (1 + below(5))) : "";
            values.insert(position + dayNames[static_cast<std::size_t>(below(7))]);
        }
        const char* separator = ";BYDAY=";
        for (const auto& value : values)
            text_ += std::exchange(separator, ",") + value;
        hasParts_ = true;
    }

    std::mt19937 random_{20260304};
    int frequency_ = 0;
    bool hasParts_ = false;
    bool choosesByPosition_ = false;
    std::string text_;
};

}  // namespace test
