#pragma once

#include <string>
#include <string_view>

namespace hbr {

/// Colours written as "#" and up to six hexadecimal digits.
class HexFormatter {
  public:
    static constexpr std::string_view hexCharacterSet = "0123456789ABCDEFabcdef";

    /// With exactly the one "#" that the text may already have.
    std::string string(std::string_view text) const;
    /// Without one leading "#"; always succeeds.
    std::string objectValue(std::string_view text) const;
    /// Whether the text may stand in the field while the user types.
    bool isPartialStringValid(std::string_view text) const;
};

}  // namespace hbr
