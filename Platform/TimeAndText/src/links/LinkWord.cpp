#include "LinkWord.h"

#include "CharacterTraits.h"
#include "LinkCharacters.h"

#include <algorithm>

namespace platform {

namespace {

bool changesScript(LinkCharacter::Kind one, LinkCharacter::Kind other) {
    using enum LinkCharacter::Kind;
    return (one == otherScript && other == ascii) || (one == ascii && other == otherScript);
}

/// Between scripts a dot, dash or the like does not end a word.
LinkCharacter::Kind scriptOf(char c, LinkCharacter::Kind kind) {
    return kind == LinkCharacter::Kind::ascii && !isAsciiAlphanumeric(c) ? LinkCharacter::Kind::latin : kind;
}

std::size_t wordStart(std::string_view text, std::size_t end, std::size_t earliest) {
    auto start = end;
    auto behind = LinkCharacter::Kind::separator;
    while (start > earliest) {
        const char last = text[start - 1];
        if (isAscii(last) && !hasTrait(last, inWord)) break;
        const auto before = isAscii(last) ? start - 1 : previousCharacterStart(text, start);
        const auto character = linkCharacterAt(text, before);
        if (character.kind == LinkCharacter::Kind::separator || before + character.size != start) break;
        const auto script = scriptOf(last, character.kind);
        if (changesScript(script, behind)) break;
        behind = script;
        start = before;
    }
    return std::max(start, earliest);
}

std::size_t wordEnd(std::string_view text, std::size_t start) {
    auto end = start;
    auto before = LinkCharacter::Kind::separator;
    while (end < text.size()) {
        if (isAscii(text[end]) && !hasTrait(text[end], inWord)) break;
        const auto character = linkCharacterAt(text, end);
        if (character.kind == LinkCharacter::Kind::separator) break;
        const auto script = scriptOf(text[end], character.kind);
        if (changesScript(before, script)) break;
        before = script;
        end += character.size;
    }
    return end;
}

}  // namespace

LinkWord wordAtMark(std::string_view text, std::size_t mark, std::size_t earliest) {
    return {wordStart(text, mark, earliest), text[mark] == '.' ? wordEnd(text, mark) : mark};
}

}  // namespace platform
