#include "TextDirection.h"

#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <cstdint>

namespace hbr {

namespace {

bool disturbs(UCharDirection direction, bool isRightToLeftSentence) {
    switch (direction) {
        case U_LEFT_TO_RIGHT:
            return isRightToLeftSentence;
        case U_RIGHT_TO_LEFT:
        case U_RIGHT_TO_LEFT_ARABIC:
            return !isRightToLeftSentence;
        case U_LEFT_TO_RIGHT_EMBEDDING:
        case U_LEFT_TO_RIGHT_OVERRIDE:
        case U_RIGHT_TO_LEFT_EMBEDDING:
        case U_RIGHT_TO_LEFT_OVERRIDE:
            return true;
        default:
            return false;
    }
}

}  // namespace

bool runsAgainst(std::string_view text, bool isRightToLeftSentence) {
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    const auto length = static_cast<std::int32_t>(text.size());
    for (std::int32_t i = 0; i < length;) {
        UChar32 character = 0;
        U8_NEXT(bytes, i, length, character);
        if (character >= 0 && disturbs(u_charDirection(character), isRightToLeftSentence)) return true;
    }
    return false;
}

std::string isolatedText(std::string_view text) {
    std::string result = "\u2068";
    return (result += text) += "\u2069";
}

}  // namespace hbr
