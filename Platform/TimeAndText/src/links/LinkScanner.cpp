#include "LinkScanner.h"

#include "Authority.h"
#include "CharacterTraits.h"
#include "HostName.h"
#include "LinkSchemes.h"
#include "MailAddress.h"

#include <algorithm>

namespace platform {

std::vector<DetectedLink> LinkScanner::links() {
    std::vector<DetectedLink> found;
    std::size_t position = 0;
    for (auto at = nextMark(0); at < text_.size(); at = nextMark(std::max(at + 1, position))) {
        // The end of a sentence or of a label: an earlier mark of the same word was judged before.
        const bool isLast = at + 1 == text_.size() || hasTrait(text_[at + 1], blank);
        if (isLast && text_[at] != '@') continue;
        const LinkWord word = wordAtMark(text_, at, position);
        if (word.start == word.end) continue;
        const auto link = linkAt(word);
        if (link) found.push_back(*link);
        position = link ? link->end : word.end;
    }
    return found;
}

std::size_t LinkScanner::nextMark(std::size_t from) const {
    while (from < text_.size() && !hasTrait(text_[from], mark))
        ++from;
    return from;
}

std::optional<DetectedLink> LinkScanner::linkAt(LinkWord word) {
    if (isAt(text_, word.end, "@")) return mailAddress(word);
    if (isAt(text_, word.end, ":")) {
        if (auto link = linkWithScheme(word)) return link;
    }
    return bareHost(word);
}

std::optional<DetectedLink> LinkScanner::linkWithScheme(LinkWord word) {
    const bool hasSlashes = isAt(text_, word.end, "://");
    const auto start = schemeStart(text_.substr(word.start, word.end - word.start), hasSlashes);
    if (!start) return std::nullopt;
    const auto linkStart = word.start + *start;
    const auto scheme = text_.substr(linkStart, word.end - linkStart);
    const auto body = word.end + (hasSlashes ? 3 : 1);
    if (isWebScheme(scheme)) return webLink(linkStart, body);

    const auto rest = text_.substr(std::min(body, text_.size()));
    if (rest.empty() || !mayFollowScheme(scheme, rest)) return std::nullopt;
    // "Skype:https://…": a label.
    if (!hasSlashes && (beginsWebAddress(rest) || beginsWww(rest))) return std::nullopt;
    const auto end = linkEnd_.afterScheme(linkStart, body, takesNumbers(scheme));
    if (end <= body) return std::nullopt;
    return DetectedLink{linkStart, end};
}

std::optional<DetectedLink> LinkScanner::webLink(std::size_t start, std::size_t authority) {
    // "https://https://…": the inner one is the address.
    if (beginsWebAddress(text_.substr(authority))) return std::nullopt;
    const auto host = userInfoEnd(text_, authority);
    auto end = hostEnd(text_, host);
    if (end == host) return std::nullopt;
    // The dot of the root, as in "example.com./path" (RFC 3986, section 3.2.2).
    if (isAt(text_, end, "./") || isAt(text_, end, ".:")) ++end;
    return DetectedLink{start, linkEnd_.afterHost(start, end)};
}

std::optional<DetectedLink> LinkScanner::mailAddress(LinkWord word) const {
    auto local = localPartAtEnd(text_.substr(word.start, word.end - word.start));
    if (local.empty()) return std::nullopt;
    const auto host = word.end + 1;
    const auto end = hostEnd(text_, host);
    if (!isMailHost(text_.substr(host, end - host))) return std::nullopt;
    // "_me@example.com_": emphasis.
    if (local.size() > 1 && local.front() == '_' && isAt(text_, end, "_")) local.remove_prefix(1);
    return DetectedLink{word.end - local.size(), end};
}

std::optional<DetectedLink> LinkScanner::bareHost(LinkWord word) {
    constexpr std::string_view partsOfOtherNames = "/\\@#$";
    if (word.start > 0 && partsOfOtherNames.find(text_[word.start - 1]) != std::string_view::npos)
        return std::nullopt;
    const auto candidate = bareHostIn(text_.substr(word.start, word.end - word.start));
    if (candidate.empty()) return std::nullopt;
    const auto start = static_cast<std::size_t>(candidate.data() - text_.data());
    const auto end = std::min(hostEnd(text_, start), start + candidate.size());
    // "object.method()".
    if (isAt(text_, end, "()")) return std::nullopt;
    const auto judgement = judgeHostWithoutScheme(text_.substr(start, end - start));
    if (judgement == HostJudgement::noHost) return std::nullopt;
    const DetectedLink link{start, linkEnd_.afterHost(start, end)};
    const bool hasPath = link.end > portEnd(text_, end) + 1;
    if (judgement == HostJudgement::hostWithPath && !hasPath) return std::nullopt;
    return link;
}

}  // namespace platform
