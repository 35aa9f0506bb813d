#include <When/MomentText.h>

#include <charconv>
#include <string>

namespace hbr {

namespace {

/// Reads "NN" or "NNNN" at `at`; moves `at` behind it.
std::optional<int> digits(std::string_view text, std::size_t& at, std::size_t count) {
    if (at + count > text.size()) return std::nullopt;
    int value = 0;
    const char* first = text.data() + at;
    const auto [end, error] = std::from_chars(first, first + count, value);
    if (error != std::errc{} || end != first + count || *first == '-') return std::nullopt;
    at += count;
    return value;
}

bool skip(std::string_view text, std::size_t& at, std::string_view oneOf) {
    if (at >= text.size() || oneOf.find(text[at]) == std::string_view::npos) return false;
    ++at;
    return true;
}

std::optional<platform::LocalTime> localTime(std::string_view text) {
    platform::LocalTime time;
    std::size_t at = 0;
    const auto year = digits(text, at, 4);
    if (!year || !skip(text, at, "-")) return std::nullopt;
    const auto month = digits(text, at, 2);
    if (!month || !skip(text, at, "-")) return std::nullopt;
    const auto day = digits(text, at, 2);
    if (!day) return std::nullopt;
    time = {*year, *month, *day, 0, 0, 0};
    if (at < text.size()) {
        if (!skip(text, at, "Tt ")) return std::nullopt;
        const auto hour = digits(text, at, 2);
        if (!hour || !skip(text, at, ":")) return std::nullopt;
        const auto minute = digits(text, at, 2);
        if (!minute) return std::nullopt;
        time.hour = *hour;
        time.minute = *minute;
        if (at < text.size()) {
            if (!skip(text, at, ":")) return std::nullopt;
            const auto second = digits(text, at, 2);
            if (!second || at != text.size()) return std::nullopt;
            time.second = *second;
        }
    }
    // A date or time that does not exist changes on the way there and back.
    return platform::localTimeOf(platform::secondsOf(time)) == time ? std::optional(time) : std::nullopt;
}

}  // namespace

std::optional<platform::Date> momentOf(std::string_view text, const platform::Calendar& calendar,
                                       platform::Date now) {
    if (text == "now") return now;
    if (text == "today") return calendar.startOfDay(now);
    if (text == "tomorrow") return calendar.startOfDay(calendar.addingDays(calendar.startOfDay(now), 1));
    if (const auto moment = platform::parseRfc3339(text)) return moment;
    const auto local = localTime(text);
    if (!local) return std::nullopt;
    const platform::Date moment = calendar.timeZone().date(*local);
    return text.size() == 10 ? calendar.startOfDay(moment) : moment;
}

}  // namespace hbr
