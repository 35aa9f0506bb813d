#include <TimeAndText/Ascii.h>
#include <TimeAndText/RegularExpression.h>

#include <unicode/regex.h>
#include <unicode/utext.h>

#include <algorithm>

namespace platform {
namespace {

// The engine counts in units of 10,000 steps, about 0.3 ms each. A search may take a fixed number and, so
// that long texts are not cut off, ten steps for each byte.
constexpr std::size_t stepsPerTimeUnit = 10'000;
constexpr std::size_t baseTimeLimit = 100;
constexpr std::size_t bytesPerTimeUnit = 1000;
constexpr std::size_t largestTimeLimit = 10000;
constexpr std::int32_t stackLimitBytes = 1'000'000;

/// Looks at UTF-8 bytes in place; positions are byte offsets.
class Utf8Text {
  public:
    explicit Utf8Text(std::string_view text) {
        UErrorCode status = U_ZERO_ERROR;
        utext_openUTF8(&text_, text.data() ? text.data() : "", static_cast<std::int64_t>(text.size()),
                       &status);
        isOpen_ = U_SUCCESS(status);
    }
    ~Utf8Text() { utext_close(&text_); }
    Utf8Text(const Utf8Text&) = delete;
    Utf8Text& operator=(const Utf8Text&) = delete;

    bool isOpen() const { return isOpen_; }
    UText* get() { return &text_; }

  private:
    UText text_ = UTEXT_INITIALIZER;
    bool isOpen_ = false;
};

std::size_t timeLimitFor(std::string_view text) {
    return baseTimeLimit + std::min(text.size() / bytesPerTimeUnit, largestTimeLimit);
}

std::unique_ptr<icu::RegexMatcher> boundedMatcher(const icu::RegexPattern& pattern, std::size_t timeLimit) {
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::RegexMatcher> matcher(pattern.matcher(status));
    if (U_FAILURE(status) || !matcher) return nullptr;
    matcher->setTimeLimit(static_cast<std::int32_t>(timeLimit), status);
    matcher->setStackLimit(stackLimitBytes, status);
    return U_SUCCESS(status) ? std::move(matcher) : nullptr;
}

std::uint32_t flagsOf(const RegularExpression::Options& options) {
    std::uint32_t flags = 0;
    if (options.caseInsensitive) flags |= UREGEX_CASE_INSENSITIVE;
    if (options.allowCommentsAndWhitespace) flags |= UREGEX_COMMENTS;
    if (options.ignoreMetacharacters) flags |= UREGEX_LITERAL;
    if (options.dotMatchesLineSeparators) flags |= UREGEX_DOTALL;
    if (options.anchorsMatchLines) flags |= UREGEX_MULTILINE;
    if (options.useUnixLineSeparators) flags |= UREGEX_UNIX_LINES;
    if (options.useUnicodeWordBoundaries) flags |= UREGEX_UWORD;
    return flags;
}

/// The template as the engine takes it, which fails where a group does not exist or where "$" is alone.
std::string safeTemplate(std::string_view text, int groupCount) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char next = i + 1 < text.size() ? text[i + 1] : '\0';
        if (text[i] == '\\') {
            // The engine takes the next character as it is; at the end there is none.
            if (next == '\0') break;
            result.append(text.substr(i, 2));
            ++i;
        } else if (text[i] == '$' && isAsciiDigit(next)) {
            if (next - '0' <= groupCount) {
                result += '$';
            } else {
                ++i;
                // The digits behind it are text.
                if (i + 1 < text.size() && isAsciiDigit(text[i + 1])) result += '\\';
            }
        } else if (text[i] == '$' && next != '{') {
            result += "\\$";
        } else {
            result += text[i];
        }
    }
    return result;
}

icu::UnicodeString unicode(std::string_view text) {
    return icu::UnicodeString::fromUTF8({text.data(), static_cast<std::int32_t>(text.size())});
}

}  // namespace

struct RegularExpression::Compiled {
    std::unique_ptr<const icu::RegexPattern> pattern;

    /// Calls `found(range)` for each match until it says false. False when the search was given up.
    template <typename Found>
    bool search(std::string_view text, std::size_t timeLimit, Found found) const {
        Utf8Text utf8(text);
        const auto matcher = boundedMatcher(*pattern, timeLimit);
        if (!matcher || !utf8.isOpen()) return false;
        matcher->reset(utf8.get());
        UErrorCode status = U_ZERO_ERROR;
        while (matcher->find(status) && U_SUCCESS(status)) {
            const auto start = static_cast<std::size_t>(matcher->start64(status));
            const auto end = static_cast<std::size_t>(matcher->end64(status));
            if (U_FAILURE(status) || !found(Range{start, end})) break;
        }
        return U_SUCCESS(status);
    }
};

RegularExpression::RegularExpression(std::string_view pattern, Options options) {
    UErrorCode status = U_ZERO_ERROR;
    UParseError where{};
    std::unique_ptr<const icu::RegexPattern> compiled(
        icu::RegexPattern::compile(unicode(pattern), flagsOf(options), where, status));
    if (U_FAILURE(status) || !compiled) {
        throw Error("bad regular expression \"" + std::string(pattern) + "\": " + u_errorName(status) +
                    " at line " + std::to_string(where.line) + ", character " + std::to_string(where.offset));
    }
    compiled_ = std::make_shared<const Compiled>(Compiled{std::move(compiled)});
}

std::optional<RegularExpression> RegularExpression::compile(std::string_view pattern, Options options) {
    try {
        return RegularExpression(pattern, options);
    } catch (const Error&) {
        return std::nullopt;
    }
}

bool RegularExpression::matchesAnywhere(std::string_view text) const {
    return firstMatch(text).has_value();
}

std::optional<RegularExpression::Range> RegularExpression::firstMatch(std::string_view text) const {
    std::optional<Range> result;
    compiled_->search(text, timeLimitFor(text), [&result](const Range& range) {
        result = range;
        return false;
    });
    return result;
}

RegularExpression::Outcome RegularExpression::search(std::string_view text, std::size_t mostSteps) const {
    bool isFound = false;
    const auto timeLimit = std::max<std::size_t>(mostSteps / stepsPerTimeUnit, 1);
    const bool isComplete = compiled_->search(text, timeLimit, [&isFound](const Range&) {
        isFound = true;
        return false;
    });
    if (isFound) return Outcome::match;
    return isComplete ? Outcome::noMatch : Outcome::gaveUp;
}

std::vector<RegularExpression::Range> RegularExpression::allMatches(std::string_view text) const {
    std::vector<Range> result;
    compiled_->search(text, timeLimitFor(text), [&result](const Range& range) {
        result.push_back(range);
        return true;
    });
    return result;
}

std::string RegularExpression::replacingMatches(std::string_view text, std::string_view replacementTemplate,
                                                MatchingOptions options) const {
    const icu::UnicodeString input = unicode(text);
    const auto matcher = boundedMatcher(*compiled_->pattern, timeLimitFor(text));
    if (!matcher) return std::string(text);
    matcher->reset(input);
    matcher->useAnchoringBounds(!options.withoutAnchoringBounds);
    UErrorCode status = U_ZERO_ERROR;
    const icu::UnicodeString substitute = unicode(safeTemplate(replacementTemplate, matcher->groupCount()));
    icu::UnicodeString replaced;
    if (!options.anchored) {
        replaced = matcher->replaceAll(substitute, status);
    } else {
        if (!matcher->lookingAt(status)) return std::string(text);
        matcher->appendReplacement(replaced, substitute, status).appendTail(replaced);
    }
    if (U_FAILURE(status)) return std::string(text);
    std::string result;
    replaced.toUTF8String(result);
    return result;
}

}  // namespace platform
