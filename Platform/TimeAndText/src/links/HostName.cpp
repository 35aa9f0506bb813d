#include "HostName.h"

#include "LinkCharacters.h"
#include "TopLevelDomains.h"

#include <algorithm>
#include <initializer_list>

namespace platform {

namespace {

constexpr std::size_t longestLabel = 63;

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

bool isOneOf(std::string_view domain, std::initializer_list<std::string_view> domains) {
    return std::ranges::find(domains, domain) != domains.end();
}

}  // namespace

HostJudgement judgeHostWithoutScheme(std::string_view host) {
    const auto lastDot = host.rfind('.');
    if (lastDot == std::string_view::npos || !areLabels(host)) return HostJudgement::noHost;
    const auto domain = asciiLower(host.substr(lastDot + 1));
    const bool hasTwoLabels = host.find('.') == lastDot;
    if (!hasTwoLabels && asciiLower(host.substr(0, 4)) == "www." && domain.size() > 1 && isAlphabetic(domain))
        return HostJudgement::host;

    const auto known = topLevelDomain(domain);
    if (known == TopLevelDomain::unknown) return HostJudgement::noHost;
    const auto first = asciiLower(host.substr(0, host.find('.')));
    // "Co.KG"; a floor, a time or a date: "2.UG", "9.am".
    if (hasTwoLabels && (first == "co" || (first.size() < 3 && std::ranges::all_of(first, isAsciiDigit))))
        return HostJudgement::noHost;
    // A name written backwards, as programs have: "com.example.app".
    if (!hasTwoLabels && isOneOf(first, {"com", "net", "org"})) return HostJudgement::hostWithPath;
    // A sentence that goes on without a blank: "That was all.In the evening".
    if (hasMixedCase(host.substr(lastDot + 1)) && !isOneOf(domain, {"com", "net", "org"}))
        return HostJudgement::noHost;
    if (known == TopLevelDomain::ambiguous) return HostJudgement::hostWithPath;
    if (hasTwoLabels) {
        const auto name = host.substr(0, lastDot);
        if (name.size() == 1 && domain != "com") return HostJudgement::hostWithPath;
        if (std::ranges::all_of(name, isAsciiDigit) && !isOneOf(domain, {"com", "cn", "net", "org"}))
            return HostJudgement::hostWithPath;
    }
    return HostJudgement::host;
}

bool isMailHost(std::string_view host) {
    const auto lastDot = host.rfind('.');
    if (lastDot == std::string_view::npos || !areLabels(host)) return false;
    const auto domain = host.substr(lastDot + 1);
    return domain.size() > 1 && (isAlphabetic(domain) || asciiLower(domain).starts_with("xn--"));
}

}  // namespace platform
