#include "HostName.h"

#include "LinkCharacters.h"
#include "TopLevelDomains.h"

#include <algorithm>
#include <initializer_list>
#include <string>

namespace platform {

namespace {

/// RFC 1035, section 2.3.4.
constexpr std::size_t longestLabel = 63;

/// RFC 1123, section 2.1, with letters of other scripts (RFC 5890).
bool isLabel(std::string_view label) {
    return !label.empty() && label.size() <= longestLabel && label.front() != '-' && label.back() != '-' &&
           label.find('_') == std::string_view::npos;
}

bool areLabels(std::string_view host) {
    for (std::size_t start = 0, end = 0; end < host.size(); start = end + 1) {
        end = std::min(host.find('.', start), host.size());
        if (!isLabel(host.substr(start, end - start))) return false;
    }
    return !host.empty() && host.back() != '.';
}

bool isAlphabetic(std::string_view label) {
    return std::ranges::all_of(label, [](char c) { return !isAscii(c) || isAsciiLetter(c); });
}

bool hasMixedCase(std::string_view label) {
    return std::ranges::any_of(label, isAsciiUpper) && !std::ranges::all_of(label, isAsciiUpper);
}

bool areDigits(std::string_view label) {
    return std::ranges::all_of(label, isAsciiDigit);
}

bool isOneOf(std::string_view domain, std::initializer_list<std::string_view> domains) {
    return std::ranges::find(domains, domain) != domains.end();
}

/// What the rules ask of a host without a scheme.
struct BareHost {
    explicit BareHost(std::string_view host)
        : lastLabel(host.substr(host.rfind('.') + 1)),
          domain(asciiLower(lastLabel)),
          firstLabel(asciiLower(host.substr(0, host.find('.')))),
          hasTwoLabels(host.find('.') == host.rfind('.')) {}

    std::string_view lastLabel;
    /// Lower case, as the first label.
    std::string domain;
    std::string firstLabel;
    bool hasTwoLabels;
};

/// "www.example.anything".
bool isWwwHost(const BareHost& host) {
    return !host.hasTwoLabels && host.firstLabel == "www" && host.domain.size() > 1 &&
           isAlphabetic(host.domain);
}

/// "Co.KG".
bool isCompanyForm(const BareHost& host) {
    return host.hasTwoLabels && host.firstLabel == "co";
}

/// "9.am", "2.UG".
bool isTimeOrFloor(const BareHost& host) {
    return host.hasTwoLabels && host.firstLabel.size() < 3 && areDigits(host.firstLabel);
}

/// "com.example.app", as programs are called.
bool isReversedName(const BareHost& host) {
    return !host.hasTwoLabels && isOneOf(host.firstLabel, {"com", "net", "org"});
}

/// "That was all.In the evening": a sentence that follows without a blank.
bool isSentenceStart(const BareHost& host) {
    return hasMixedCase(host.lastLabel) && !isOneOf(host.domain, {"com", "net", "org"});
}

/// A name of one letter, as in "s.de": more often an abbreviation.
bool isAbbreviation(const BareHost& host) {
    return host.hasTwoLabels && host.firstLabel.size() == 1 && host.domain != "com";
}

/// "2024.de"; under a few domains numbers are usual names.
bool isNumberedName(const BareHost& host) {
    return host.hasTwoLabels && areDigits(host.firstLabel) &&
           !isOneOf(host.domain, {"com", "cn", "net", "org"});
}

}  // namespace

std::string_view bareHostIn(std::string_view word) {
    if (word.find('.') == std::string_view::npos) return {};
    while (!word.empty() && isAscii(word.back()) && !isAsciiAlphanumeric(word.back()))
        word.remove_suffix(1);
    if (const auto gap = word.rfind(".."); gap != std::string_view::npos) word.remove_prefix(gap + 2);
    if (const auto plus = word.find_last_of("+_"); plus != std::string_view::npos) {
        // Emphasis before a host may go, but a host does not hold such a character itself.
        if (plus != 0 && word.find_first_not_of("+_") < plus) return {};
        word.remove_prefix(plus + 1);
    }
    while (!word.empty() && (word.front() == '.' || word.front() == '-'))
        word.remove_prefix(1);
    return word;
}

HostJudgement judgeHostWithoutScheme(std::string_view text) {
    if (text.find('.') == std::string_view::npos || !areLabels(text)) return HostJudgement::noHost;
    const BareHost host(text);
    if (isWwwHost(host)) return HostJudgement::host;
    const auto known = topLevelDomain(host.domain);
    if (known == TopLevelDomain::unknown || isCompanyForm(host) || isTimeOrFloor(host))
        return HostJudgement::noHost;
    if (isReversedName(host)) return HostJudgement::hostWithPath;
    if (isSentenceStart(host)) return HostJudgement::noHost;
    if (known == TopLevelDomain::ambiguous || isAbbreviation(host) || isNumberedName(host))
        return HostJudgement::hostWithPath;
    return HostJudgement::host;
}

bool isMailHost(std::string_view host) {
    const auto lastDot = host.rfind('.');
    if (lastDot == std::string_view::npos || !areLabels(host)) return false;
    const auto domain = host.substr(lastDot + 1);
    return domain.size() > 1 && (isAlphabetic(domain) || asciiLower(domain).starts_with("xn--"));
}

}  // namespace platform
