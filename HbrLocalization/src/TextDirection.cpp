#include "TextDirection.h"

#include <unicode/uchar.h>
#include <unicode/uloc.h>
#include <unicode/utf8.h>

#include <cstdint>

namespace hbr {

bool isRightToLeftLanguage(std::string_view language) {
    return uloc_isRightToLeft(std::string(language).c_str());
}

bool runsAgainst(std::string_view text, bool isRightToLeftSentence) {
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    const auto length = static_cast<std::int32_t>(text.size());
    for (std::int32_t i = 0; i < length;) {
        UChar32 character = 0;
        U8_NEXT(bytes, i, length, character);
        if (character < 0) continue;
        const auto direction = u_charDirection(character);
        if (isRightToLeftSentence ? direction == U_LEFT_TO_RIGHT
                                  : direction == U_RIGHT_TO_LEFT || direction == U_RIGHT_TO_LEFT_ARABIC)
            return true;
    }
    return false;
}

std::string isolatedText(std::string_view text) {
    std::string result = "\u2068";
    return (result += text) += "\u2069";
}

}  // namespace hbr
