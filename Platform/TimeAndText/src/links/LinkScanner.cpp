#include "LinkScanner.h"

#include "CharacterReference.h"
#include "HostName.h"
#include "LinkCharacters.h"
#include "LinkSchemes.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace platform {

namespace {

constexpr std::size_t longestHost = 253;
constexpr std::size_t longestLocalPart = 128;
constexpr std::size_t longestAddressInBrackets = 64;

/// What the scanner asks of an ASCII character, as bits.
enum CharacterTrait : std::uint8_t {
    /// Of a scheme, a host or the name before an "@".
    inWord = 1,
    /// White space, controls and what a URL never holds unescaped.
    endsLink = 2,
    trailing = 4,
    /// Of a user and password before an "@".
    inUserInfo = 8,
    /// Goes on with a link without a second look.
    plainInTail = 16,
    /// A link has one of these behind its scheme, in its host or in its address.
    mark = 32,
    blank = 64
};

constexpr auto characterTraits = [] {
    std::array<std::uint8_t, 256> table{};
    const auto give = [&table](std::string_view characters, std::uint8_t trait) {
        for (const char c : characters)
            table[static_cast<unsigned char>(c)] |= trait;
    };
    for (std::size_t c = 0; c <= 0x20; ++c)
        table[c] |= endsLink;
    table[0x7F] |= endsLink;
    give(asciiAlphanumerics, inWord | inUserInfo | plainInTail);
    give(".-_+", inWord);
    give("<>\"`{}|\\^", endsLink);
    give(".,;:!?'([&", trailing);
    give("-._~%!$*+=:;", inUserInfo);
    give("-._~%!$*+=;,/?#@", plainInTail);
    give(".:@", mark);
    give(" \t\r\n", blank);
    return table;
}();

bool has(char c, CharacterTrait trait) {
    return (characterTraits[static_cast<unsigned char>(c)] & trait) != 0;
}

/// Markup that may stand directly before a link and then directly behind it too.
bool isEmphasis(char c) {
    return c == '*' || c == '_' || c == '~';
}

/// "&#39;" and "&#x27;" too.
bool isNumericEntity(std::string_view rest) {
    constexpr std::size_t mostDigits = 7;
    if (!rest.starts_with("&#")) return false;
    rest.remove_prefix(2);
    const bool isHexadecimal = !rest.empty() && asciiLower(rest.front()) == 'x';
    if (isHexadecimal) rest.remove_prefix(1);
    const auto end = std::min(rest.find(';'), rest.size());
    return end > 0 && end < rest.size() && end <= mostDigits &&
           std::ranges::all_of(
               rest.substr(0, end),
               [isHexadecimal](char c) { return isAsciiDigit(c) || (isHexadecimal && isAsciiLetter(c)); });
}

/// What ends a link in HTML. A reference to a character of URLs is part of the link.
bool isMarkupEntity(std::string_view rest) {
    if (urlCharacterReference(rest)) return false;
    constexpr auto named = std::to_array<std::string_view>(
        {"&quot;", "&lt;", "&gt;", "&nbsp;", "&apos;", "&lsquo;", "&rsquo;", "&ldquo;", "&rdquo;"});
    return isNumericEntity(rest) ||
           std::ranges::any_of(named, [&](std::string_view entity) { return rest.starts_with(entity); });
}

/// Text of another script glued to ASCII letters or digits: none of the two is written so in one name.
bool changesScript(LinkCharacter::Kind one, LinkCharacter::Kind other) {
    using enum LinkCharacter::Kind;
    return (one == otherScript && other == ascii) || (one == ascii && other == otherScript);
}

/// A dot, dash or the like stands between scripts without dividing them.
LinkCharacter::Kind glueKind(char c, LinkCharacter::Kind kind) {
    return kind == LinkCharacter::Kind::ascii && !isAsciiAlphanumeric(c) ? LinkCharacter::Kind::latin : kind;
}

}  // namespace

std::vector<DetectedLink> LinkScanner::links() {
    std::vector<DetectedLink> found;
    std::size_t position = 0;
    for (auto at = nextMark(0); at < text_.size(); at = nextMark(std::max(at + 1, position))) {
        // The end of a sentence or of a label: an earlier mark of the same word has been here before.
        const bool isLast = at + 1 == text_.size() || has(text_[at + 1], blank);
        if (isLast && text_[at] != '@') continue;
        const Word word{wordStart(at, position), text_[at] == '.' ? wordEnd(at) : at};
        if (word.start == word.end) continue;
        const auto link = linkAt(word);
        if (link) found.push_back(*link);
        position = link ? link->end : word.end;
    }
    return found;
}

std::size_t LinkScanner::nextMark(std::size_t from) const {
    while (from < text_.size() && !has(text_[from], mark))
        ++from;
    return from;
}

std::size_t LinkScanner::wordStart(std::size_t end, std::size_t earliest) const {
    auto start = end;
    auto behind = LinkCharacter::Kind::separator;
    while (start > earliest) {
        const char last = text_[start - 1];
        if (isAscii(last) && !has(last, inWord)) break;
        const auto before = isAscii(last) ? start - 1 : previousCharacterStart(text_, start);
        const auto character = linkCharacterAt(text_, before);
        if (character.kind == LinkCharacter::Kind::separator || before + character.size != start) break;
        const auto kind = glueKind(last, character.kind);
        if (changesScript(kind, behind)) break;
        behind = kind;
        start = before;
    }
    return std::max(start, earliest);
}

std::size_t LinkScanner::wordEnd(std::size_t start) const {
    auto end = start;
    auto before = LinkCharacter::Kind::separator;
    while (end < text_.size()) {
        if (isAscii(text_[end]) && !has(text_[end], inWord)) break;
        const auto character = linkCharacterAt(text_, end);
        if (character.kind == LinkCharacter::Kind::separator) break;
        const auto kind = glueKind(text_[end], character.kind);
        if (changesScript(before, kind)) break;
        before = kind;
        end += character.size;
    }
    return end;
}

std::optional<DetectedLink> LinkScanner::linkAt(Word word) {
    const char next = word.end < text_.size() ? text_[word.end] : ' ';
    if (next == ':') {
        if (auto link = linkWithScheme(word)) return link;
    }
    if (next == '@') {
        if (auto link = mailAddress(word)) return link;
        return std::nullopt;
    }
    return bareHost(word);
}

std::optional<DetectedLink> LinkScanner::linkWithScheme(Word word) {
    const bool hasSlashes = isAt(word.end, "://");
    const auto start = schemeStart(text_.substr(word.start, word.end - word.start), hasSlashes);
    if (!start) return std::nullopt;
    const auto linkStart = word.start + *start;
    const auto scheme = text_.substr(linkStart, word.end - linkStart);
    if (isWebScheme(scheme)) return webLink(linkStart, word.end + 3);

    const auto body = word.end + (hasSlashes ? 3 : 1);
    if (body >= text_.size() || !mayFollowScheme(scheme, text_.substr(body))) return std::nullopt;
    // "Skype:https://…": a label.
    if (!hasSlashes && (beginsWebAddress(body) || beginsWww(body))) return std::nullopt;
    auto end = tailEnd(linkStart, body);
    if (end <= body) return std::nullopt;
    if (takesNumbers(scheme) && (linkStart == 0 || text_[linkStart - 1] != '*')) {
        while (end < text_.size() && (text_[end] == '*' || text_[end] == '#'))
            ++end;
    }
    return DetectedLink{linkStart, end};
}

std::optional<DetectedLink> LinkScanner::webLink(std::size_t start, std::size_t authority) {
    // "https://https://…": the inner one is the address.
    if (beginsWebAddress(authority)) return std::nullopt;
    const auto host = userInfoEnd(authority);
    auto end = hostEnd(host);
    if (end == host) return std::nullopt;
    // A host written in full, down to the root.
    if (isAt(end, "./") || isAt(end, ".:")) ++end;
    const auto behindPort = portEnd(end);
    const bool hasTail = behindPort < text_.size() &&
                         (text_[behindPort] == '/' || text_[behindPort] == '?' || text_[behindPort] == '#');
    return DetectedLink{start, hasTail ? tailEnd(start, behindPort) : behindPort};
}

std::optional<DetectedLink> LinkScanner::mailAddress(Word word) const {
    auto local = text_.substr(word.start, word.end - word.start);
    if (local.back() == '.') return std::nullopt;
    if (const auto gap = local.rfind(".."); gap != std::string_view::npos) local.remove_prefix(gap + 2);
    while (!local.empty() && isAscii(local.front()) && !isAsciiAlphanumeric(local.front()) &&
           local.front() != '_')
        local.remove_prefix(1);
    if (local.empty() || local.size() > longestLocalPart) return std::nullopt;
    const auto hostStart = word.end + 1;
    const auto end = hostEnd(hostStart);
    if (!isMailHost(text_.substr(hostStart, end - hostStart))) return std::nullopt;
    if (local.size() > 1 && local.front() == '_' && isAt(end, "_")) local.remove_prefix(1);
    return DetectedLink{word.end - local.size(), end};
}

std::optional<DetectedLink> LinkScanner::bareHost(Word word) {
    auto whole = text_.substr(word.start, word.end - word.start);
    if (whole.find('.') == std::string_view::npos) return std::nullopt;
    if (word.start > 0 && std::string_view("/\\@#$").find(text_[word.start - 1]) != std::string_view::npos)
        return std::nullopt;
    while (!whole.empty() && isAscii(whole.back()) && !isAsciiAlphanumeric(whole.back()))
        whole.remove_suffix(1);
    if (const auto gap = whole.rfind(".."); gap != std::string_view::npos) whole.remove_prefix(gap + 2);
    if (const auto plus = whole.find_last_of("+_"); plus != std::string_view::npos) {
        // Emphasis around a host may go, but an underscore within one makes it a name of another kind.
        if (plus != 0 && whole.find_first_not_of("+_") < plus) return std::nullopt;
        whole.remove_prefix(plus + 1);
    }
    while (!whole.empty() && (whole.front() == '.' || whole.front() == '-'))
        whole.remove_prefix(1);
    const auto start = static_cast<std::size_t>(whole.data() - text_.data());
    const auto end = std::min(hostEnd(start), start + whole.size());
    if (isAt(end, "()")) return std::nullopt;
    const auto host = text_.substr(start, end - start);
    const auto judgement = judgeHostWithoutScheme(host);
    if (judgement == HostJudgement::noHost) return std::nullopt;

    const auto behindPort = end == word.end ? portEnd(end) : end;
    const bool hasTail = behindPort < text_.size() &&
                         (text_[behindPort] == '/' || text_[behindPort] == '?' || text_[behindPort] == '#');
    const auto linkEnd = hasTail ? tailEnd(start, behindPort) : behindPort;
    const bool hasPath = linkEnd > behindPort + 1;
    if (judgement == HostJudgement::hostWithPath && !hasPath) return std::nullopt;
    return DetectedLink{start, linkEnd};
}

std::size_t LinkScanner::hostEnd(std::size_t start) const {
    if (start < text_.size() && text_[start] == '[') {
        const auto close = text_.substr(start, longestAddressInBrackets).find(']');
        const auto inner = text_.substr(start + 1, close == std::string_view::npos ? 0 : close - 1);
        const auto address = inner.substr(0, inner.find('%'));
        const auto zone = inner.substr(address.size());
        const bool isAddress =
            address.find(':') != std::string_view::npos &&
            address.find_first_not_of("0123456789abcdefABCDEF:.") == std::string_view::npos &&
            std::ranges::all_of(zone, [](char c) { return c == '%' || has(c, inWord); });
        return isAddress ? start + close + 1 : start;
    }
    auto end = start;
    while (end < text_.size() && end - start <= longestHost) {
        const char c = text_[end];
        if (isAscii(c)) {
            if (!isAsciiAlphanumeric(c) && c != '.' && c != '-' && c != '_') break;
            if (end == start && !isAsciiAlphanumeric(c)) break;
            ++end;
            continue;
        }
        const auto character = linkCharacterAt(text_, end);
        if (character.kind == LinkCharacter::Kind::separator) break;
        // Text in another script glued to the host's end.
        if (character.kind == LinkCharacter::Kind::otherScript && end > start &&
            isAsciiAlphanumeric(text_[end - 1]))
            break;
        end += character.size;
    }
    if (end - start > longestHost) return start;
    while (end > start && (text_[end - 1] == '.' || text_[end - 1] == '-' || text_[end - 1] == '_'))
        --end;
    return end;
}

std::size_t LinkScanner::portEnd(std::size_t hostEnd) const {
    if (hostEnd >= text_.size() || text_[hostEnd] != ':') return hostEnd;
    auto end = hostEnd + 1;
    while (end < text_.size() && isAsciiDigit(text_[end]) && end - hostEnd <= 6)
        ++end;
    const auto digits = end - hostEnd - 1;
    const bool goesOn = end < text_.size() && isAsciiAlphanumeric(text_[end]);
    return digits >= 1 && digits <= 5 && !goesOn ? end : hostEnd;
}

std::size_t LinkScanner::userInfoEnd(std::size_t start) const {
    auto end = start;
    while (end < text_.size() && has(text_[end], inUserInfo))
        ++end;
    return end > start && end < text_.size() && text_[end] == '@' ? end + 1 : start;
}

std::size_t LinkScanner::tailEnd(std::size_t linkStart, std::size_t position) {
    const char before = linkStart > 0 ? text_[linkStart - 1] : ' ';
    std::size_t open[2] = {0, 0};
    bool hasOtherScript = false;
    auto end = position;
    while (end < text_.size()) {
        const char c = text_[end];
        if (has(c, plainInTail)) {
            ++end;
            continue;
        }
        if (!isAscii(c)) {
            const auto character = linkCharacterAt(text_, end);
            if (character.kind == LinkCharacter::Kind::separator) break;
            if (character.kind == LinkCharacter::Kind::otherScript) {
                if (!hasOtherScript && isAsciiAlphanumeric(text_[end - 1])) break;
                hasOtherScript = true;
            }
            end += character.size;
            continue;
        }
        if (has(c, endsLink) || (c == '\'' && before == '\'')) break;
        if (c == '&' && isMarkupEntity(text_.substr(end, 12))) break;
        if (c == ':') {
            if (const auto another = startOfAnotherLink(position, end); another < end) {
                end = another;
                break;
            }
        }
        // "[/url]" and the like.
        if (c == '[' && isAt(end + 1, "/")) break;
        const bool round = c == '(' || c == ')';
        if (c == '(' || c == '[') {
            if (!isClosedLater(end)) break;
            ++open[round];
        } else if (c == ')' || c == ']') {
            if (open[round] == 0) break;
            --open[round];
        }
        ++end;
    }
    return withoutTrailingPunctuation(linkStart, position, end);
}

std::size_t LinkScanner::startOfAnotherLink(std::size_t earliest, std::size_t colon) const {
    if (!isAt(colon, "://")) return colon;
    const auto ahead = text_.substr(earliest, colon - earliest);
    for (const std::string_view scheme : {"https", "http"}) {
        if (ahead.size() <= scheme.size() || !isWebScheme(ahead.substr(ahead.size() - scheme.size())))
            continue;
        const char glue = ahead[ahead.size() - scheme.size() - 1];
        const bool opens =
            isAsciiAlphanumeric(glue) || std::string_view(",;)([").find(glue) != std::string_view::npos;
        return opens ? colon - scheme.size() : colon;
    }
    const auto start = schemeStart(ahead, true);
    const bool opens = start && *start > 0 && (ahead[*start - 1] == ',' || ahead[*start - 1] == ';');
    return opens ? earliest + *start : colon;
}

bool LinkScanner::beginsWebAddress(std::size_t position) const {
    const auto ahead = text_.substr(position, std::string_view("https://").size());
    const auto colon = ahead.find("://");
    return colon != std::string_view::npos && isWebScheme(ahead.substr(0, colon));
}

bool LinkScanner::beginsWww(std::size_t position) const {
    return equalIgnoringCase(text_.substr(position, 4), "www.");
}

bool LinkScanner::isClosedLater(std::size_t bracket) {
    if (bracket >= matchedUntil_) matchBrackets(bracket);
    while (nextClosedBracket_ < closedBrackets_.size() && closedBrackets_[nextClosedBracket_] < bracket)
        ++nextClosedBracket_;
    return nextClosedBracket_ < closedBrackets_.size() && closedBrackets_[nextClosedBracket_] == bracket;
}

void LinkScanner::matchBrackets(std::size_t from) {
    std::vector<std::size_t> open[2];
    closedBrackets_.clear();
    nextClosedBracket_ = 0;
    auto end = from;
    for (; end < text_.size() && !has(text_[end], endsLink); ++end) {
        const char c = text_[end];
        const bool round = c == '(' || c == ')';
        if (c == '(' || c == '[') {
            open[round].push_back(end);
        } else if ((c == ')' || c == ']') && !open[round].empty()) {
            closedBrackets_.push_back(open[round].back());
            open[round].pop_back();
        }
    }
    std::ranges::sort(closedBrackets_);
    matchedUntil_ = end;
}

std::size_t LinkScanner::withoutTrailingPunctuation(std::size_t linkStart, std::size_t minimum,
                                                    std::size_t end) const {
    const char before = linkStart > 0 ? text_[linkStart - 1] : ' ';
    while (end > minimum &&
           (has(text_[end - 1], trailing) ||
            (isEmphasis(text_[end - 1]) && (text_[end - 1] == before || text_[end - 1] == '*'))))
        --end;
    return end;
}

}  // namespace platform
