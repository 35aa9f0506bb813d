#include "NecessaryTexts.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <utility>

namespace hbr {

namespace {

using Texts = std::vector<std::string>;

constexpr int deepestNesting = 50;
constexpr std::size_t mostTexts = 32;

bool isAsciiAlphanumeric(char c) {
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

/// Length of the shortest, which decides how much the whole says.
std::size_t strength(const Texts& texts) {
    if (texts.empty()) return 0;
    return std::ranges::min_element(texts, {}, &std::string::size)->size();
}

/// Reads a pattern from left to right. Whatever it does not know for certain makes the whole unknown.
class PatternReader {
  public:
    explicit PatternReader(std::string_view pattern) : rest_(pattern) {}

    /// Nothing when the pattern holds something unknown.
    std::optional<Texts> read() {
        auto texts = alternatives(0);
        if (!isKnown_ || !rest_.empty()) return std::nullopt;
        return texts;
    }

  private:
    /// Up to a closing parenthesis or the end.
    Texts alternatives(int depth) {
        Texts all = sequence(depth);
        bool isStrong = !all.empty();
        while (isKnown_ && !rest_.empty() && rest_.front() == '|') {
            rest_.remove_prefix(1);
            const Texts branch = sequence(depth);
            isStrong = isStrong && !branch.empty();
            all.insert(all.end(), branch.begin(), branch.end());
        }
        return isStrong && all.size() <= mostTexts ? all : Texts{};
    }

    /// Up to "|", a closing parenthesis or the end.
    Texts sequence(int depth) {
        Texts best;
        std::string run;
        const auto offer = [&best](Texts texts) {
            if (strength(texts) > strength(best)) best = std::move(texts);
        };
        const auto endRun = [&] {
            if (!run.empty()) offer({std::exchange(run, {})});
        };
        while (isKnown_ && !rest_.empty() && rest_.front() != '|' && rest_.front() != ')') {
            if (const auto character = literal()) {
                const auto times = quantifier();
                if (times == Times::once) {
                    run += *character;
                    continue;
                }
                if (times == Times::onceOrMore) run += *character;
                endRun();
                continue;
            }
            if (!isKnown_) break;
            endRun();
            if (rest_.front() == '(') {
                Texts inner = group(depth);
                if (quantifier() != Times::maybeNever) offer(std::move(inner));
            } else if (rest_.front() == '[') {
                skipSet();
                quantifier();
            } else {
                // ".", "^", "$" or an escape for a class of characters or a position.
                rest_.remove_prefix(rest_.front() == '\\' ? 2 : 1);
                quantifier();
            }
        }
        endRun();
        return best;
    }

    /// The next character when it is a literal; else nothing is read.
    std::optional<char> literal() {
        const char c = rest_.front();
        if (c == '\\') {
            if (rest_.size() < 2) return unknown();
            const char escaped = rest_[1];
            if (isAsciiAlphanumeric(escaped)) {
                constexpr std::string_view kinds = "sSdDwWbB";
                return kinds.find(escaped) == std::string_view::npos ? unknown() : std::nullopt;
            }
            if (static_cast<unsigned char>(escaped) >= 0x80) return unknown();
            rest_.remove_prefix(2);
            return escaped;
        }
        if (c == '*' || c == '+' || c == '?' || c == '{' || c == ']' || c == '}') return unknown();
        if (c == '(' || c == '[' || c == '.' || c == '^' || c == '$') return std::nullopt;
        if (static_cast<unsigned char>(c) >= 0x80) return unknown();
        rest_.remove_prefix(1);
        return c;
    }

    Texts group(int depth) {
        rest_.remove_prefix(1);
        bool isLookAround = false;
        if (rest_.starts_with('?')) {
            if (rest_.starts_with("?:")) {
                rest_.remove_prefix(2);
            } else if (rest_.starts_with("?=") || rest_.starts_with("?!")) {
                rest_.remove_prefix(2);
                isLookAround = true;
            } else {
                // Options, comments and the rarer kinds.
                unknown();
            }
        }
        if (depth >= deepestNesting) unknown();
        if (!isKnown_) return {};
        Texts inner = alternatives(depth + 1);
        if (!rest_.starts_with(')')) unknown();
        if (!isKnown_) return {};
        rest_.remove_prefix(1);
        return isLookAround ? Texts{} : inner;
    }

    /// A set without sets, properties and operators in it.
    void skipSet() {
        rest_.remove_prefix(1);
        if (rest_.starts_with('^')) rest_.remove_prefix(1);
        if (rest_.starts_with(']')) unknown();
        while (isKnown_ && !rest_.starts_with(']')) {
            const bool isEscape = rest_.starts_with('\\');
            if (rest_.size() < 2 || rest_.front() == '[' || rest_.starts_with("&&") ||
                rest_.starts_with("--") ||
                (isEscape && isAsciiAlphanumeric(rest_[1]) &&
                 std::string_view("sSdDwWntr").find(rest_[1]) == std::string_view::npos)) {
                unknown();
                return;
            }
            rest_.remove_prefix(isEscape ? 2 : 1);
        }
        if (isKnown_) rest_.remove_prefix(1);
    }

    enum class Times { once, onceOrMore, maybeNever };
    Times quantifier() {
        if (!isKnown_ || rest_.empty()) return Times::once;
        Times times = Times::once;
        switch (rest_.front()) {
            case '?':
            case '*':
                times = Times::maybeNever;
                rest_.remove_prefix(1);
                break;
            case '+':
                times = Times::onceOrMore;
                rest_.remove_prefix(1);
                break;
            case '{': {
                const auto end = rest_.find('}');
                if (end == std::string_view::npos) {
                    unknown();
                    return times;
                }
                // Without a look at the numbers: it may be none.
                times = Times::maybeNever;
                rest_.remove_prefix(end + 1);
                break;
            }
            default:
                return times;
        }
        if (rest_.starts_with('?') || rest_.starts_with('+')) rest_.remove_prefix(1);
        return times;
    }

    std::nullopt_t unknown() {
        isKnown_ = false;
        return std::nullopt;
    }

    std::string_view rest_;
    bool isKnown_ = true;
};

}  // namespace

std::vector<std::string> necessaryTexts(std::string_view pattern) {
    return PatternReader(pattern).read().value_or(Texts{});
}

}  // namespace hbr
