#include <TimeAndText/Ascii.h>
#include <TimeAndText/Date.h>
#include <TimeAndText/TimeZone.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>

#include "WholeSeconds.h"

namespace platform {
namespace {

/// Reads a text from the left; every step fails for good once one has failed.
class Reader {
  public:
    explicit Reader(std::string_view text) : rest_(text) {}

    bool done() const { return rest_.empty(); }
    char next() const { return rest_.empty() ? '\0' : rest_.front(); }

    std::optional<char> oneOf(std::string_view allowed) {
        if (rest_.empty() || allowed.find(rest_.front()) == std::string_view::npos) return std::nullopt;
        const char found = rest_.front();
        rest_.remove_prefix(1);
        return found;
    }

    /// Exactly `count` digits with a value from `lowest` to `highest`.
    std::optional<int> number(std::size_t count, int lowest, int highest) {
        if (rest_.size() < count) return std::nullopt;
        int value = 0;
        for (std::size_t i = 0; i < count; ++i) {
            if (!isAsciiDigit(rest_[i])) return std::nullopt;
            value = value * 10 + (rest_[i] - '0');
        }
        rest_.remove_prefix(count);
        if (value < lowest || value > highest) return std::nullopt;
        return value;
    }

    /// The digits after the point, as a fraction of one.
    std::optional<double> fraction() {
        double value = 0;
        double weight = 0.1;
        std::size_t count = 0;
        for (; count < rest_.size() && isAsciiDigit(rest_[count]); ++count, weight /= 10) {
            value += weight * (rest_[count] - '0');
        }
        if (count == 0) return std::nullopt;
        rest_.remove_prefix(count);
        // Many nines must not carry into the next second.
        return std::min(value, 0.999999);
    }

  private:
    std::string_view rest_;
};

int daysInMonth(int year, int month) {
    constexpr std::array<int, 12> days{31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool leap = year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
    return month == 2 && leap ? 29 : days.at(static_cast<std::size_t>(month - 1));
}

/// Seconds to subtract from the reading; nothing when the offset is malformed.
std::optional<int> parseOffset(Reader& reader) {
    const auto sign = reader.oneOf("Zz+-");
    if (!sign) return std::nullopt;
    if (*sign == 'Z' || *sign == 'z') return 0;
    const auto hours = reader.number(2, 0, 23);
    if (!hours || !reader.oneOf(":")) return std::nullopt;
    const auto minutes = reader.number(2, 0, 59);
    if (!minutes) return std::nullopt;
    const int seconds = *hours * 3600 + *minutes * 60;
    return *sign == '-' ? -seconds : seconds;
}

std::string formatted(const char* format, const LocalTime& t, int milliseconds) {
    std::array<char, 96> buffer{};
    const int length = std::snprintf(buffer.data(), buffer.size(), format, t.year, t.month, t.day, t.hour,
                                     t.minute, t.second, milliseconds);
    return std::string(buffer.data(), static_cast<std::size_t>(length));
}

}  // namespace

std::string Date::description() const {
    return formatted("%04d-%02d-%02d %02d:%02d:%02d +0000", localTimeOf(wholeSecondsSince1970(*this)), 0);
}

std::string formatRfc3339(Date date) {
    // To the nearest millisecond: the binary value of ".123" may lie just below it.
    const std::int64_t seconds = wholeSecondsSince1970(date);
    const auto milliseconds = static_cast<int>(std::lround(fractionOfSecond(date) * 1000));
    return formatted("%04d-%02d-%02dT%02d:%02d:%02d.%03dZ", localTimeOf(seconds + milliseconds / 1000),
                     milliseconds % 1000);
}

std::optional<Date> parseRfc3339(std::string_view text) {
    Reader reader(text);
    LocalTime local;
    const auto read = [&reader](int& field, std::size_t digits, int lowest, int highest) {
        const auto value = reader.number(digits, lowest, highest);
        if (value) field = *value;
        return value.has_value();
    };
    if (!read(local.year, 4, 0, 9999) || !reader.oneOf("-")) return std::nullopt;
    if (!read(local.month, 2, 1, 12) || !reader.oneOf("-")) return std::nullopt;
    if (!read(local.day, 2, 1, daysInMonth(local.year, local.month)) || !reader.oneOf("Tt "))
        return std::nullopt;
    if (!read(local.hour, 2, 0, 23) || !reader.oneOf(":")) return std::nullopt;
    if (!read(local.minute, 2, 0, 59) || !reader.oneOf(":")) return std::nullopt;
    if (!read(local.second, 2, 0, 60)) return std::nullopt;

    double fraction = 0;
    if (reader.oneOf(".")) {
        const auto digits = reader.fraction();
        if (!digits) return std::nullopt;
        fraction = *digits;
    }
    // A leap second has no number of its own in this count: it is the end of the second before it.
    if (local.second == 60) {
        local.second = 59;
        fraction = 0.999;
    }
    const auto offset = parseOffset(reader);
    if (!offset || !reader.done()) return std::nullopt;
    return dateOfSeconds(secondsOf(local) - *offset).addingTimeInterval(fraction);
}

}  // namespace platform
