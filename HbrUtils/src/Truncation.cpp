#include <HbrUtils/Truncation.h>

#include <TimeAndText/Text.h>

namespace hbr {

std::string truncated(std::string_view text, int maxLength, std::string_view terminator) {
    if (maxLength < 1) return {};
    const auto kept = platform::firstCharacters(text, static_cast<std::size_t>(maxLength));
    std::string result(kept);
    if (kept.size() < text.size()) result += terminator;
    return result;
}

}  // namespace hbr
