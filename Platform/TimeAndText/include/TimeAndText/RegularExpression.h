#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// A pattern in ICU syntax over UTF-8 text. Immutable after construction, safe from any thread. Every
/// search is bounded in steps and stack: one that exceeds the bound does not match.
class RegularExpression {
  public:
    struct Options {
        bool caseInsensitive = false;
        bool allowCommentsAndWhitespace = false;
        bool ignoreMetacharacters = false;
        bool dotMatchesLineSeparators = false;
        bool anchorsMatchLines = false;
        bool useUnixLineSeparators = false;
        bool useUnicodeWordBoundaries = false;
    };
    struct MatchingOptions {
        /// Only a match that begins where the text begins.
        bool anchored = false;
        /// "^" and "$" do not match at the ends of the text.
        bool withoutAnchoringBounds = false;
    };
    /// Byte offsets into the text, end not included.
    struct Range {
        std::size_t start = 0;
        std::size_t end = 0;
        friend bool operator==(const Range&, const Range&) = default;
    };
    /// The pattern does not compile; says where and why.
    class Error : public std::runtime_error {
      public:
        using std::runtime_error::runtime_error;
    };

    /// Throws Error.
    explicit RegularExpression(std::string_view pattern, Options options);
    explicit RegularExpression(std::string_view pattern) : RegularExpression(pattern, Options{}) {}
    static std::optional<RegularExpression> compile(std::string_view pattern, Options options);
    static std::optional<RegularExpression> compile(std::string_view pattern) {
        return compile(pattern, Options{});
    }

    bool matchesAnywhere(std::string_view text) const;
    enum class Outcome { match, noMatch, gaveUp };
    /// As matchesAnywhere, but within about `mostSteps` steps of the engine (3 ms for 100,000), and saying
    /// when they did not suffice.
    Outcome search(std::string_view text, std::size_t mostSteps) const;
    std::optional<Range> firstMatch(std::string_view text) const;
    std::vector<Range> allMatches(std::string_view text) const;
    /// "$1" is the first group, "$0" the match; a group that the pattern does not have is empty.
    std::string replacingMatches(std::string_view text, std::string_view replacementTemplate,
                                 MatchingOptions options) const;
    std::string replacingMatches(std::string_view text, std::string_view replacementTemplate) const {
        return replacingMatches(text, replacementTemplate, MatchingOptions{});
    }

  private:
    struct Compiled;
    std::shared_ptr<const Compiled> compiled_;
};

}  // namespace platform
