#include "NameScript.h"

#include <TimeAndText/Text.h>
#include <unicode/uchar.h>
#include <unicode/uscript.h>
#include <unicode/utf8.h>

#include <cstdint>

namespace platform {
namespace {

/// Calls `visit` with each code point until it says false.
template <class Visit>
void forEachCodePoint(std::string_view text, const Visit& visit) {
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    for (std::size_t i = 0; i < text.size();) {
        UChar32 character = 0;
        U8_NEXT(bytes, i, text.size(), character);
        if (character >= 0 && !visit(character)) return;
    }
}

bool beginsWithLetter(std::string_view text) {
    bool result = false;
    forEachCodePoint(text, [&](UChar32 c) {
        result = u_isalpha(c);
        return false;
    });
    return result;
}

bool isRightToLeft(UChar32 c) {
    const auto direction = u_charDirection(c);
    return direction == U_RIGHT_TO_LEFT || direction == U_RIGHT_TO_LEFT_ARABIC;
}

}  // namespace

NameScript nameScript(std::string_view name) {
    int letters = 0;
    int katakana = 0;
    int eastAsian = 0;
    int rightToLeft = 0;
    forEachCodePoint(name, [&](UChar32 c) {
        if (!u_isalpha(c)) return true;
        // The prolonged sound mark belongs to every kana script.
        constexpr UChar32 prolongedSound = 0x30FC;
        UErrorCode status = U_ZERO_ERROR;
        const auto script = c == prolongedSound ? USCRIPT_KATAKANA : uscript_getScript(c, &status);
        ++letters;
        if (script == USCRIPT_KATAKANA) ++katakana;
        if (script == USCRIPT_HAN || script == USCRIPT_HIRAGANA || script == USCRIPT_KATAKANA ||
            script == USCRIPT_HANGUL || script == USCRIPT_BOPOMOFO) {
            ++eastAsian;
        }
        if (isRightToLeft(c)) ++rightToLeft;
        return true;
    });
    if (letters == 0) return NameScript::spaced;
    if (katakana == letters) return NameScript::transcribed;
    if (eastAsian == letters) return NameScript::familyFirst;
    return rightToLeft == letters ? NameScript::rightToLeft : NameScript::spaced;
}

bool hasLetter(std::string_view text) {
    bool result = false;
    forEachCodePoint(text, [&](UChar32 c) { return !(result = u_isalpha(c)); });
    return result;
}

std::string_view initialOf(std::string_view word) {
    const auto first = firstCharacters(word, 1);
    for (auto rest = word; !rest.empty();) {
        const auto character = firstCharacters(rest, 1);
        if (beginsWithLetter(character)) return character;
        rest.remove_prefix(character.size());
    }
    return first;
}

}  // namespace platform
