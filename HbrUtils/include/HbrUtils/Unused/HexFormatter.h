#pragma once

#include <Values/PropertyValue.h>

#include <optional>
#include <string>
#include <string_view>

namespace hbr {

/// Without one "#" at the front. The result lives as long as the text.
std::string_view removingLeadingHash(std::string_view text);

/// Colours written as "#" and up to six hexadecimal digits.
class HexFormatter {
  public:
    static constexpr std::string_view hexCharacterSet = "0123456789ABCDEFabcdef";

    /// A text with exactly the one "#" that it may already have; nothing for any other object.
    std::optional<std::string> string(const platform::PropertyValue& object) const;
    /// The text without one leading "#"; always succeeds.
    std::string getObjectValue(std::string_view text) const;
    /// Whether the text is valid in the field while the user types.
    bool isPartialStringValid(std::string_view text) const;
};

}  // namespace hbr
