#include "LinkEnd.h"

#include "Authority.h"
#include "CharacterReference.h"
#include "CharacterTraits.h"
#include "LinkCharacters.h"
#include "LinkSchemes.h"

namespace platform {

namespace {

/// The longest that is looked at after an "&".
constexpr std::size_t longestReference = 12;

/// Markup that is written directly before a link and directly after it.
bool isEmphasis(char c) {
    return c == '*' || c == '_' || c == '~';
}

}  // namespace

std::size_t LinkEnd::afterHost(std::size_t linkStart, std::size_t hostEnd) {
    const auto end = portEnd(text_, hostEnd);
    return beginsPath(text_, end) ? tailEnd(linkStart, end) : end;
}

std::size_t LinkEnd::afterScheme(std::size_t linkStart, std::size_t body, bool isNumber) {
    auto end = tailEnd(linkStart, body);
    // Codes of telephones: "tel:*21#".
    if (isNumber && end > body && before(linkStart) != '*') {
        while (end < text_.size() && (text_[end] == '*' || text_[end] == '#'))
            ++end;
    }
    return end;
}

std::size_t LinkEnd::tailEnd(std::size_t linkStart, std::size_t tail) {
    BracketDepth open;
    bool hasOtherScript = false;
    auto end = tail;
    while (end < text_.size()) {
        const char c = text_[end];
        if (hasTrait(c, plainInTail)) {
            ++end;
            continue;
        }
        if (!isAscii(c)) {
            const auto character = linkCharacterAt(text_, end);
            if (character.kind == LinkCharacter::Kind::separator) break;
            if (character.kind == LinkCharacter::Kind::otherScript) {
                // A sentence that continues without a blank, unless the link already held such letters.
                if (!hasOtherScript && isAsciiAlphanumeric(text_[end - 1])) break;
                hasOtherScript = true;
            }
            end += character.size;
            continue;
        }
        if (isAroundLink(end, before(linkStart)) || isOutOfBalance(end, open)) break;
        if (const auto next = c == ':' ? startOfNextLink(tail, end) : end; next < end) {
            end = next;
            break;
        }
        ++end;
    }
    return withoutTrailingPunctuation(tail, end, before(linkStart));
}

bool LinkEnd::isAroundLink(std::size_t position, char beforeLink) const {
    const char c = text_[position];
    if (hasTrait(c, endsLink)) return true;
    if (c == '\'') return beforeLink == '\'';
    if (c == '&') return isMarkupReference(text_.substr(position, longestReference));
    return isAt(text_, position, "[/");
}

bool LinkEnd::isOutOfBalance(std::size_t position, BracketDepth& open) {
    const char c = text_[position];
    if (isOpeningBracket(c)) {
        if (!brackets_.isClosed(position)) return true;
        ++open.of(c);
    } else if (isClosingBracket(c)) {
        if (open.of(c) == 0) return true;
        --open.of(c);
    }
    return false;
}

std::size_t LinkEnd::startOfNextLink(std::size_t tail, std::size_t colon) const {
    if (!isAt(text_, colon, "://")) return colon;
    const auto ahead = text_.substr(tail, colon - tail);
    for (const std::string_view scheme : {"https", "http"}) {
        if (ahead.size() <= scheme.size() || !isWebScheme(ahead.substr(ahead.size() - scheme.size())))
            continue;
        const char glue = ahead[ahead.size() - scheme.size() - 1];
        const bool isNext =
            isAsciiAlphanumeric(glue) || std::string_view(",;)([").find(glue) != std::string_view::npos;
        return isNext ? colon - scheme.size() : colon;
    }
    const auto start = schemeStart(ahead, true);
    const bool isNext = start && *start > 0 && (ahead[*start - 1] == ',' || ahead[*start - 1] == ';');
    return isNext ? tail + *start : colon;
}

std::size_t LinkEnd::withoutTrailingPunctuation(std::size_t minimum, std::size_t end, char beforeLink) const {
    const auto isPunctuation = [beforeLink](char c) {
        return hasTrait(c, trailing) || (isEmphasis(c) && (c == beforeLink || c == '*'));
    };
    while (end > minimum && isPunctuation(text_[end - 1]))
        --end;
    return end;
}

}  // namespace platform
