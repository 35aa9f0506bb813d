#include <HbrUtils/Unused/HexFormatter.h>

#include <HbrUtils/Prefixes.h>

namespace hbr {

std::string_view removingLeadingHash(std::string_view text) {
    return deletingPrefix(text, "#");
}

std::optional<std::string> HexFormatter::string(const platform::PropertyValue& object) const {
    const auto* text = object.asString();
    if (!text) return std::nullopt;
    return "#" + std::string(removingLeadingHash(*text));
}

std::string HexFormatter::getObjectValue(std::string_view text) const {
    return std::string(removingLeadingHash(text));
}

bool HexFormatter::isPartialStringValid(std::string_view text) const {
    const auto digits = removingLeadingHash(text);
    return digits.size() <= 6 && digits.find_first_not_of(hexCharacterSet) == std::string_view::npos;
}

}  // namespace hbr
