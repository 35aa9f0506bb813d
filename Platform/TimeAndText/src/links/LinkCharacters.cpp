#include "LinkCharacters.h"

#include <unicode/uchar.h>
#include <unicode/uscript.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <cstdint>

namespace platform {

namespace {

bool isVariationSelector(UChar32 c) {
    return c >= 0xFE00 && c <= 0xFE0F;
}

LinkCharacter::Kind kindOf(UChar32 c) {
    constexpr auto wordCharacters = U_GC_L_MASK | U_GC_N_MASK | U_GC_MN_MASK | U_GC_MC_MASK;
    if (c < 0 || isVariationSelector(c) || !(U_GET_GC_MASK(c) & wordCharacters))
        return LinkCharacter::Kind::separator;
    UErrorCode status = U_ZERO_ERROR;
    const auto script = uscript_getScript(c, &status);
    return script == USCRIPT_LATIN || script == USCRIPT_INHERITED ? LinkCharacter::Kind::latin
                                                                  : LinkCharacter::Kind::otherScript;
}

}  // namespace

LinkCharacter linkCharacterAt(std::string_view text, std::size_t offset) {
    if (isAscii(text[offset])) return {LinkCharacter::Kind::ascii, 1};
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data() + offset);
    // Four bytes are the longest character; a cut keeps the offsets within ICU's range.
    const auto available = static_cast<std::int32_t>(std::min<std::size_t>(text.size() - offset, 4));
    std::int32_t read = 0;
    UChar32 c = 0;
    U8_NEXT(bytes, read, available, c);
    return {kindOf(c), static_cast<std::size_t>(read)};
}

std::size_t previousCharacterStart(std::string_view text, std::size_t offset) {
    std::size_t start = offset - 1;
    for (int back = 0; back < 3 && start > 0 && (static_cast<unsigned char>(text[start]) & 0xC0) == 0x80;
         ++back)
        --start;
    return start;
}

}  // namespace platform
