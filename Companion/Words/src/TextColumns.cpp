#include <Words/TextColumns.h>

#include <TimeAndText/Text.h>

#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <cstdint>

namespace hbr {

namespace {

std::size_t columnsOf(UChar32 c) {
    const auto category = U_GET_GC_MASK(c);
    if ((category & (U_GC_MN_MASK | U_GC_ME_MASK | U_GC_CF_MASK | U_GC_CC_MASK)) != 0) return 0;
    const int width = u_getIntPropertyValue(c, UCHAR_EAST_ASIAN_WIDTH);
    return width == U_EA_WIDE || width == U_EA_FULLWIDTH ? 2 : 1;
}

std::size_t columnsOfCharacter(std::string_view character) {
    constexpr UChar32 emojiPresentation = 0xFE0F;
    std::size_t columns = 0;
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(character.data());
    for (std::size_t i = 0; i < character.size();) {
        UChar32 c = 0;
        U8_NEXT_OR_FFFD(bytes, i, character.size(), c);
        columns += c == emojiPresentation ? 1 : columnsOf(c);
    }
    return std::min<std::size_t>(columns, 2);
}

}  // namespace

std::size_t columns(std::string_view text) {
    std::size_t count = 0;
    const auto boundaries = platform::characterBoundaries(text);
    for (std::size_t i = 1; i < boundaries.size(); ++i)
        count += columnsOfCharacter(text.substr(boundaries[i - 1], boundaries[i] - boundaries[i - 1]));
    return count;
}

std::string padded(std::string_view text, std::size_t width) {
    std::string result(text);
    const std::size_t taken = columns(text);
    if (taken < width) result.append(width - taken, ' ');
    return result;
}

std::string truncatedToColumns(std::string_view text, std::size_t width) {
    if (columns(text) <= width) return std::string(text);
    if (width == 0) return {};
    const auto boundaries = platform::characterBoundaries(text);
    std::size_t taken = 1;
    std::size_t end = 0;
    for (std::size_t i = 1; i < boundaries.size(); ++i) {
        taken += columnsOfCharacter(text.substr(boundaries[i - 1], boundaries[i] - boundaries[i - 1]));
        if (taken > width) break;
        end = boundaries[i];
    }
    return platform::trimmed(text.substr(0, end)) + "…";
}

}  // namespace hbr
