#include <TimeAndText/Ascii.h>
#include <TimeAndText/Url.h>

#include <algorithm>
#include <charconv>

#include "PercentEncoding.h"

namespace platform {
namespace {

/// The pieces of a URL's text as RFC 3986 divides it, without checking their characters.
struct Pieces {
    std::optional<std::string_view> scheme;
    std::optional<std::string_view> authority;
    std::string_view path;
    std::optional<std::string_view> query;
    std::optional<std::string_view> fragment;
};

Pieces piecesOf(std::string_view text) {
    Pieces pieces;
    const std::size_t colon = text.find_first_of(":/?#");
    if (colon != std::string_view::npos && text[colon] == ':') {
        pieces.scheme = text.substr(0, colon);
        text.remove_prefix(colon + 1);
    }
    if (const std::size_t hash = text.find('#'); hash != std::string_view::npos) {
        pieces.fragment = text.substr(hash + 1);
        text = text.substr(0, hash);
    }
    if (const std::size_t mark = text.find('?'); mark != std::string_view::npos) {
        pieces.query = text.substr(mark + 1);
        text = text.substr(0, mark);
    }
    if (text.starts_with("//")) {
        text.remove_prefix(2);
        const std::size_t end = std::min(text.find('/'), text.size());
        pieces.authority = text.substr(0, end);
        text.remove_prefix(end);
    }
    pieces.path = text;
    return pieces;
}

struct Authority {
    std::optional<std::string_view> userInfo;
    std::string_view host;
    std::optional<std::string_view> port;
};

/// Nothing when an address in brackets is not closed or is followed by something other than a port.
std::optional<Authority> authorityOf(std::string_view text) {
    Authority authority;
    if (const std::size_t at = text.rfind('@'); at != std::string_view::npos) {
        authority.userInfo = text.substr(0, at);
        text.remove_prefix(at + 1);
    }
    std::size_t hostEnd = std::min(text.find(':'), text.size());
    if (text.starts_with('[')) {
        const std::size_t bracket = text.find(']');
        if (bracket == std::string_view::npos) return std::nullopt;
        hostEnd = bracket + 1;
        if (hostEnd < text.size() && text[hostEnd] != ':') return std::nullopt;
    }
    authority.host = text.substr(0, hostEnd);
    if (hostEnd < text.size()) authority.port = text.substr(hostEnd + 1);
    return authority;
}

bool isScheme(std::string_view text) {
    return !text.empty() && isAsciiLetter(text.front()) && std::all_of(text.begin(), text.end(), [](char c) {
        return isAsciiAlphanumeric(c) || c == '+' || c == '-' || c == '.';
    });
}

bool isAddressInBrackets(std::string_view host) {
    const std::string_view inside = host.substr(1, host.size() - 2);
    return inside.find(':') != std::string_view::npos &&
           std::all_of(inside.begin(), inside.end(),
                       [](char c) { return c == ':' || c == '%' || mayStandIn(UrlPart::host, c); });
}

std::optional<int> portNumber(std::string_view text) {
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || value < 0 || value > 65535) {
        return std::nullopt;
    }
    return value;
}

bool appendAuthority(std::string& url, std::string_view text) {
    const auto authority = authorityOf(text);
    if (!authority) return false;
    url += "//";
    if (authority->userInfo) {
        appendEncoded(url, *authority->userInfo, UrlPart::userInfo, true);
        url += '@';
    }
    if (authority->host.starts_with('[')) {
        if (!isAddressInBrackets(authority->host)) return false;
        url += authority->host;
    } else {
        if (authority->host.find_first_of("[]") != std::string_view::npos) return false;
        appendEncoded(url, authority->host, UrlPart::host, true);
    }
    if (authority->port) {
        if (!authority->port->empty() && !portNumber(*authority->port)) return false;
        url += ':';
        url += *authority->port;
    }
    return true;
}

/// As written where it does not decode to text.
std::string decodedOrAsWritten(std::string_view text) {
    return removingPercentEncoding(text).value_or(std::string(text));
}

std::optional<std::string> owned(const std::optional<std::string_view>& piece) {
    return piece ? std::optional<std::string>(*piece) : std::nullopt;
}

std::optional<Authority> authorityOfUrl(std::string_view url) {
    const auto authority = piecesOf(url).authority;
    return authority ? authorityOf(*authority) : std::nullopt;
}

}  // namespace

std::optional<Url> Url::parse(std::string_view text) {
    if (text.empty()) return std::nullopt;
    const Pieces pieces = piecesOf(text);
    std::string url;
    url.reserve(text.size());
    if (pieces.scheme) {
        if (!isScheme(*pieces.scheme)) return std::nullopt;
        url += *pieces.scheme;
        url += ':';
    }
    if (pieces.authority && !appendAuthority(url, *pieces.authority)) return std::nullopt;
    appendEncoded(url, pieces.path, UrlPart::path, true);
    if (pieces.query) {
        url += '?';
        appendEncoded(url, *pieces.query, UrlPart::query, true);
    }
    if (pieces.fragment) {
        url += '#';
        appendEncoded(url, *pieces.fragment, UrlPart::fragment, true);
    }
    return Url(std::move(url));
}

std::optional<std::string> Url::scheme() const {
    return owned(piecesOf(text_).scheme);
}

std::optional<std::string> Url::user() const {
    const auto authority = authorityOfUrl(text_);
    if (!authority || !authority->userInfo) return std::nullopt;
    return decodedOrAsWritten(authority->userInfo->substr(0, authority->userInfo->find(':')));
}

std::optional<std::string> Url::host() const {
    const auto authority = authorityOfUrl(text_);
    if (!authority || authority->host.empty()) return std::nullopt;
    std::string_view host = authority->host;
    if (host.starts_with('[')) host = host.substr(1, host.size() - 2);
    return decodedOrAsWritten(host);
}

std::optional<int> Url::port() const {
    const auto authority = authorityOfUrl(text_);
    return authority && authority->port ? portNumber(*authority->port) : std::nullopt;
}

std::string Url::percentEncodedPath() const {
    return std::string(piecesOf(text_).path);
}

std::string Url::path() const {
    return decodedOrAsWritten(piecesOf(text_).path);
}

std::string Url::lastPathComponent() const {
    std::string_view path = piecesOf(text_).path;
    while (path.ends_with('/'))
        path.remove_suffix(1);
    const std::size_t slash = path.rfind('/');
    return decodedOrAsWritten(slash == std::string_view::npos ? path : path.substr(slash + 1));
}

std::optional<std::string> Url::query() const {
    return owned(piecesOf(text_).query);
}

std::optional<std::string> Url::fragment() const {
    return owned(piecesOf(text_).fragment);
}

std::optional<std::string> Url::resourceSpecifier() const {
    const auto scheme = piecesOf(text_).scheme;
    return scheme ? std::optional(text_.substr(scheme->size() + 1)) : std::nullopt;
}

std::vector<Url::QueryItem> Url::queryItems() const {
    std::vector<QueryItem> items;
    std::string_view rest = piecesOf(text_).query.value_or("");
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find('&'), rest.size());
        const std::string_view item = rest.substr(0, end);
        const std::size_t equals = item.find('=');
        QueryItem& added = items.emplace_back();
        added.name = decodedOrAsWritten(item.substr(0, equals));
        if (equals != std::string_view::npos) added.value = decodedOrAsWritten(item.substr(equals + 1));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return items;
}

std::optional<std::string> Url::queryValue(std::string_view name) const {
    auto items = queryItems();
    const auto found =
        std::find_if(items.begin(), items.end(), [name](const QueryItem& item) { return item.name == name; });
    return found == items.end() ? std::nullopt : std::move(found->value);
}

Url Url::appendingPathComponent(std::string_view component) const {
    const Pieces pieces = piecesOf(text_);
    const auto pathEnd = static_cast<std::size_t>(pieces.path.data() + pieces.path.size() - text_.data());
    std::string url = text_.substr(0, pathEnd);
    if (!pieces.path.ends_with('/') && !component.starts_with('/')) url += '/';
    appendEncoded(url, component, UrlPart::path, false);
    return Url(url + text_.substr(pathEnd));
}

}  // namespace platform
