#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace platform {

/// A URL as its text. Characters that are not valid in a URL are percent-encoded when it is made, the rest
/// is left as written (letter case of the host too). Equality is that of the texts.
class Url {
  public:
    /// Nothing for text that percent-encoding cannot turn into a URL (empty, broken scheme, unbalanced IPv6
    /// brackets, bad port).
    static std::optional<Url> parse(std::string_view text);

    const std::string& absoluteString() const { return text_; }
    std::optional<std::string> scheme() const;
    std::optional<std::string> user() const;
    /// Without user and port; absent without "//" or when empty.
    std::optional<std::string> host() const;
    std::optional<int> port() const;
    /// As written and percent-decoded.
    std::string percentEncodedPath() const;
    std::string path() const;
    /// Percent-decoded last piece of the path, trailing slashes ignored; "" for an empty path.
    std::string lastPathComponent() const;
    std::optional<std::string> query() const;
    std::optional<std::string> fragment() const;
    /// The part after "scheme:".
    std::optional<std::string> resourceSpecifier() const;

    struct QueryItem {
        std::string name;
        std::optional<std::string> value;
    };
    /// Percent-decoded, in order; "+" stays. An item without "=" has no value.
    std::vector<QueryItem> queryItems() const;
    /// Value of the first item of that exact name.
    std::optional<std::string> queryValue(std::string_view name) const;

    /// Joins with "/" and percent-encodes what is not valid in a path; "/" stays, "%" becomes %25.
    Url appendingPathComponent(std::string_view component) const;

    friend bool operator==(const Url&, const Url&) = default;
    friend auto operator<=>(const Url&, const Url&) = default;

  private:
    explicit Url(std::string text) : text_(std::move(text)) {}
    std::string text_;
};

/// Nothing when a "%" is not followed by two hexadecimal digits or the result is not UTF-8.
std::optional<std::string> removingPercentEncoding(std::string_view text);
/// Encodes what is not valid in a query, as in "mailto:" fields.
std::string percentEncodedForQuery(std::string_view text);

}  // namespace platform

template <>
struct std::hash<platform::Url> {
    std::size_t operator()(const platform::Url& url) const noexcept {
        return std::hash<std::string>{}(url.absoluteString());
    }
};
