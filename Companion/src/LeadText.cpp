#include "LeadText.h"

#include <utility>

namespace hbr {

std::string leadText(std::int64_t seconds) {
    if (seconds == 0) return "at its start";
    std::string text;
    for (const auto& [length, unit] : {std::pair(3600, "h"), std::pair(60, "m"), std::pair(1, "s")}) {
        const std::int64_t count = seconds / length;
        seconds %= length;
        if (count != 0) text += std::to_string(count) + unit;
    }
    return text + " before its start";
}

}  // namespace hbr
