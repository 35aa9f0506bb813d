#include <When/DurationText.h>

#include <charconv>

namespace hbr {

std::optional<std::int64_t> secondsOfDuration(std::string_view text) {
    if (text.empty()) return std::nullopt;
    std::int64_t total = 0;
    // "1h30" is an hour and thirty minutes: a number without a unit has the next smaller unit.
    std::int64_t unitlessFactor = 1;
    while (!text.empty()) {
        std::int64_t amount = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), amount);
        if (error != std::errc{} || text.front() == '-') return std::nullopt;
        text.remove_prefix(static_cast<std::size_t>(end - text.data()));
        std::int64_t unit = unitlessFactor;
        if (!text.empty()) {
            switch (text.front()) {
                case 's':
                    unit = 1;
                    break;
                case 'm':
                    unit = 60;
                    break;
                case 'h':
                    unit = 3600;
                    break;
                default:
                    return std::nullopt;
            }
            text.remove_prefix(1);
            unitlessFactor = unit == 3600 ? 60 : 1;
        }
        std::int64_t part = 0;
        if (__builtin_mul_overflow(amount, unit, &part) || __builtin_add_overflow(total, part, &total)) {
            return std::nullopt;
        }
    }
    return total;
}

}  // namespace hbr
