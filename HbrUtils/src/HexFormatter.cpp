#include <HbrUtils/HexFormatter.h>

#include <HbrUtils/Prefixes.h>

namespace hbr {

std::string HexFormatter::string(std::string_view text) const {
    return "#" + std::string(removingLeadingHash(text));
}

std::string HexFormatter::objectValue(std::string_view text) const {
    return std::string(removingLeadingHash(text));
}

bool HexFormatter::isPartialStringValid(std::string_view text) const {
    const auto digits = removingLeadingHash(text);
    return digits.size() <= 6 && digits.find_first_not_of(hexCharacterSet) == std::string_view::npos;
}

}  // namespace hbr
