#include "WrittenTime.h"

#include <chrono>

namespace platform {
namespace {

std::optional<int> digits(std::string_view text, std::size_t from, std::size_t count) {
    if (from + count > text.size()) return std::nullopt;
    int value = 0;
    for (std::size_t i = from; i < from + count; ++i) {
        if (text[i] < '0' || text[i] > '9') return std::nullopt;
        value = value * 10 + (text[i] - '0');
    }
    return value;
}

bool exists(int year, int month, int day) {
    using namespace std::chrono;
    return year_month_day(std::chrono::year(year), std::chrono::month(static_cast<unsigned>(month)),
                          std::chrono::day(static_cast<unsigned>(day)))
        .ok();
}

}  // namespace

std::optional<WrittenTime> parseWrittenTime(std::string_view value) {
    value = trimmedAscii(value);
    const auto year = digits(value, 0, 4);
    const auto month = digits(value, 4, 2);
    const auto day = digits(value, 6, 2);
    if (!year || !month || !day || !exists(*year, *month, *day)) return std::nullopt;
    WrittenTime time;
    time.local = {*year, *month, *day, 0, 0, 0};
    if (value.size() == 8) {
        time.isDate = true;
        return time;
    }
    if (value[8] != 'T' && value[8] != 't') return std::nullopt;
    if (value.ends_with('Z') || value.ends_with('z')) {
        time.isUtc = true;
        value.remove_suffix(1);
    }
    const auto hour = digits(value, 9, 2);
    const auto minute = digits(value, 11, 2);
    const auto second = value.size() == 13 ? std::optional<int>(0) : digits(value, 13, 2);
    if (!hour || !minute || !second || (value.size() != 13 && value.size() != 15)) return std::nullopt;
    const bool endOfDay = *hour == 24 && *minute == 0 && *second == 0;
    if ((*hour > 23 && !endOfDay) || *minute > 59 || *second > 60) return std::nullopt;
    time.local.hour = *hour;
    time.local.minute = *minute;
    // A leap second has no reading of its own here.
    time.local.second = *second == 60 ? 59 : *second;
    if (endOfDay) time.local = localTimeOf(secondsOf(time.local));
    return time;
}

std::optional<WrittenTime> parseWrittenTime(std::string_view value, const TimeParameters& parameters) {
    auto time = parseWrittenTime(value);
    if (!time || time->isDate) return time;
    if (parameters.isDate)
        return WrittenTime{{time->local.year, time->local.month, time->local.day, 0, 0, 0}, true, false, {}};
    if (!time->isUtc) time->tzid = parameters.tzid;
    return time;
}

std::optional<WrittenDuration> parseDuration(std::string_view text) {
    text = trimmedAscii(text);
    std::int64_t sign = 1;
    if (text.starts_with('-') || text.starts_with('+')) {
        if (text.front() == '-') sign = -1;
        text.remove_prefix(1);
    }
    if (!text.starts_with('P') && !text.starts_with('p')) return std::nullopt;
    text.remove_prefix(1);
    std::int64_t days = 0;
    std::int64_t seconds = 0;
    bool inTime = false;
    bool any = false;
    while (!text.empty()) {
        if (text.front() == 'T' || text.front() == 't') {
            inTime = true;
            text.remove_prefix(1);
            continue;
        }
        std::int64_t number = 0;
        std::size_t length = 0;
        for (; length < text.size() && text[length] >= '0' && text[length] <= '9'; ++length) {
            if (length >= 9) return std::nullopt;
            number = number * 10 + (text[length] - '0');
        }
        if (length == 0 || length == text.size()) return std::nullopt;
        switch (text[length] & ~0x20) {
            case 'W':
                days += number * 7;
                break;
            case 'D':
                days += number;
                break;
            case 'H':
                seconds += number * 3600;
                break;
            case 'M':
                seconds += number * 60;
                break;
            case 'S':
                seconds += number;
                break;
            default:
                return std::nullopt;
        }
        if (inTime == ((text[length] & ~0x20) == 'W' || (text[length] & ~0x20) == 'D')) return std::nullopt;
        any = true;
        text.remove_prefix(length + 1);
    }
    // Nothing lasts a thousand years; keeps later sums in range.
    if (!any || days > 366000 || seconds > std::int64_t{366000} * 86400) return std::nullopt;
    return WrittenDuration{static_cast<int>(sign * days), sign * seconds};
}

}  // namespace platform
