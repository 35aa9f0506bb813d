#include "LinkScanner.h"

#include "HostName.h"
#include "LinkCharacters.h"
#include "LinkSchemes.h"

#include <algorithm>

namespace platform {

namespace {

constexpr std::size_t longestHost = 253;
constexpr std::size_t longestLocalPart = 128;

bool isWordCharacter(char c) {
    return isAsciiAlphanumeric(c) || c == '.' || c == '-' || c == '_' || c == '+';
}

/// Characters that end every link: white space, controls and those that a URL never holds unescaped.
bool endsLink(char c) {
    return static_cast<unsigned char>(c) <= 0x20 || c == 0x7F ||
           std::string_view("<>\"`{}|\\^").find(c) != std::string_view::npos;
}

bool isTrailingPunctuation(char c) {
    return std::string_view(".,;:!?'([&").find(c) != std::string_view::npos;
}

/// Markup that may stand directly before a link and then directly behind it too.
bool isEmphasis(char c) {
    return c == '*' || c == '_' || c == '~';
}

bool isMarkupEntity(std::string_view rest) {
    return std::ranges::any_of(
        std::initializer_list<std::string_view>{"&quot;", "&lt;", "&gt;", "&nbsp;", "&#39;", "&#34;",
                                                "&apos;", "&rsquo;", "&rdquo;"},
        [&](std::string_view entity) { return rest.starts_with(entity); });
}

}  // namespace

std::vector<DetectedLink> LinkScanner::links() {
    std::vector<DetectedLink> found;
    std::size_t position = 0;
    while (position < text_.size()) {
        const auto end = wordEnd(position);
        if (end == position) {
            position += linkCharacterAt(text_, position).size;
            continue;
        }
        if (auto link = linkAt({position, end})) {
            found.push_back(*link);
            position = std::max(link->end, position + 1);
        } else {
            position = end;
        }
    }
    return found;
}

std::size_t LinkScanner::wordEnd(std::size_t start) const {
    auto end = start;
    while (end < text_.size()) {
        if (isAscii(text_[end])) {
            if (!isWordCharacter(text_[end])) break;
            ++end;
            continue;
        }
        const auto character = linkCharacterAt(text_, end);
        if (character.kind == LinkCharacter::Kind::separator) break;
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
    const auto end = tailEnd(linkStart, body);
    if (end <= body) return std::nullopt;
    return DetectedLink{linkStart, end};
}

std::optional<DetectedLink> LinkScanner::webLink(std::size_t start, std::size_t authority) {
    const auto host = userInfoEnd(authority);
    const auto end = hostEnd(host);
    if (end == host) return std::nullopt;
    const auto behindPort = portEnd(end);
    const bool hasTail = behindPort < text_.size() &&
                         (text_[behindPort] == '/' || text_[behindPort] == '?' || text_[behindPort] == '#');
    return DetectedLink{start, hasTail ? tailEnd(start, behindPort) : behindPort};
}

std::optional<DetectedLink> LinkScanner::mailAddress(Word word) const {
    auto local = text_.substr(word.start, word.end - word.start);
    if (local.back() == '.') return std::nullopt;
    if (const auto gap = local.rfind(".."); gap != std::string_view::npos) local.remove_prefix(gap + 2);
    local.remove_prefix(scriptChangeBeforeAscii(local));
    while (!local.empty() && isAscii(local.front()) && !isAsciiAlphanumeric(local.front()) &&
           local.front() != '_')
        local.remove_prefix(1);
    if (local.empty() || local.size() > longestLocalPart) return std::nullopt;
    const auto hostStart = word.end + 1;
    const auto end = hostEnd(hostStart);
    if (!isMailHost(text_.substr(hostStart, end - hostStart))) return std::nullopt;
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
    whole.remove_prefix(scriptChangeBeforeAscii(whole.substr(0, whole.find('.'))));
    const auto start = static_cast<std::size_t>(whole.data() - text_.data());
    const auto end = std::min(hostEnd(start), start + whole.size());
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
        const auto close = text_.substr(start, 48).find(']');
        const auto inner = text_.substr(start + 1, close == std::string_view::npos ? 0 : close - 1);
        const bool isAddress = inner.find(':') != std::string_view::npos &&
                               inner.find_first_not_of("0123456789abcdefABCDEF:.") == std::string_view::npos;
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
    while (end < text_.size() &&
           (isAsciiAlphanumeric(text_[end]) ||
            std::string_view("-._~%!$*+=:;").find(text_[end]) != std::string_view::npos))
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
        if (endsLink(c) || (c == '\'' && before == '\'')) break;
        if (c == '&' && isMarkupEntity(text_.substr(end, 8))) break;
        if (c == ':' && opensAnotherLink(end)) {
            end -= asciiLowercased(text_[end - 1]) == 's' ? 5 : 4;
            break;
        }
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

bool LinkScanner::opensAnotherLink(std::size_t colon) const {
    if (!isAt(colon, "://")) return false;
    const auto matches = [&](std::string_view scheme) {
        if (colon < scheme.size() + 1) return false;
        const auto written = text_.substr(colon - scheme.size(), scheme.size());
        return std::ranges::equal(written, scheme, {}, asciiLowercased);
    };
    const auto size = matches("https") ? 5U : matches("http") ? 4U : 0U;
    if (size == 0) return false;
    const char glue = text_[colon - size - 1];
    return isAsciiAlphanumeric(glue) || glue == ',' || glue == ';' || glue == ')';
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
    for (; end < text_.size() && !endsLink(text_[end]); ++end) {
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
           (isTrailingPunctuation(text_[end - 1]) ||
            (isEmphasis(text_[end - 1]) && (text_[end - 1] == before || text_[end - 1] == '*'))))
        --end;
    return end;
}

}  // namespace platform
