#include "WhenTokens.h"

#include <TimeAndText/Ascii.h>
#include <TimeAndText/Text.h>
#include <When/WhenText.h>
#include <Words/CompanionText.h>
#include <Words/NameProposal.h>

#include <charconv>
#include <optional>

namespace hbr {

namespace {

using Kind = WhenToken::Kind;
using platform::isAsciiDigit;

/// "12-01-2026" split into its numbers, the marks between them and the number of digits of each.
struct Digits {
    std::vector<int> numbers;
    std::vector<std::size_t> lengths;
    std::string marks;
};

std::optional<Digits> digitsOf(std::string_view text) {
    constexpr std::size_t mostDigits = 9;
    Digits result;
    while (!text.empty()) {
        int value = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
        const auto length = static_cast<std::size_t>(end - text.data());
        if (error != std::errc{} || length > mostDigits || !isAsciiDigit(text.front())) return std::nullopt;
        result.numbers.push_back(value);
        result.lengths.push_back(length);
        text.remove_prefix(length);
        if (text.empty()) break;
        result.marks += text.front();
        text.remove_prefix(1);
    }
    return result;
}

int fullYear(int year, std::size_t digits) {
    return digits == 2 ? 2000 + year : year;
}

std::optional<WhenToken> numericToken(std::string text) {
    WhenToken token;
    token.text = text;
    if (text.ends_with(':') || text.ends_with('-') || text.ends_with('/')) text.pop_back();
    const auto digits = digitsOf(text);
    if (!digits) return std::nullopt;
    const auto& [numbers, lengths, marks] = *digits;
    const auto set = [&](Kind kind, int a, int b = 0, int c = 0) {
        token.kind = kind;
        token.parts[0] = a;
        token.parts[1] = b;
        token.parts[2] = c;
        return token;
    };
    const bool endsInYear = numbers.size() == 3 && (lengths[2] == 2 || lengths[2] == 4);
    if (marks.empty()) return set(Kind::number, numbers[0]);
    if (marks == ".") {
        if (numbers.size() == 2) return set(Kind::dotted, numbers[0], numbers[1]);
        token.isOrdinal = true;
        return set(Kind::number, numbers[0]);
    }
    const bool isTime = (marks == ":" && numbers.size() == 2) || (marks == ":." && numbers.size() == 2);
    if (isTime && lengths[1] == 2) return set(Kind::time, numbers[0], numbers[1]);
    if (marks == "::" && numbers.size() == 3 && lengths[1] == 2 && lengths[2] == 2)
        return set(Kind::time, numbers[0], numbers[1], numbers[2]);
    if ((marks == "--" || marks == "//") && numbers.size() == 3 && lengths[0] == 4)
        return set(Kind::date, numbers[0], numbers[1], numbers[2]);
    if (marks == ".." && (numbers.size() == 2 || endsInYear)) {
        const int year = numbers.size() == 3 ? fullYear(numbers[2], lengths[2]) : 0;
        return set(Kind::date, year, numbers[1], numbers[0]);
    }
    if (marks == "/" && numbers.size() == 2) return set(Kind::slashed, numbers[0], numbers[1]);
    if ((marks == "//" || marks == "--") && endsInYear)
        return set(Kind::slashed, numbers[0], numbers[1], fullYear(numbers[2], lengths[2]));
    return std::nullopt;
}

/// Cuts where digits meet letters: "1h30" is "1", "h", "30".
std::vector<std::string> pieces(std::string_view text) {
    std::vector<std::string> list;
    for (std::string_view raw : platform::split(text, " ", false)) {
        while (!raw.empty()) {
            const bool isNumeric = isAsciiDigit(raw.front());
            std::size_t end = 1;
            while (end < raw.size() &&
                   (isNumeric ? isAsciiDigit(raw[end]) ||
                                    std::string_view(":.-/").find(raw[end]) != std::string_view::npos
                              : !isAsciiDigit(raw[end])))
                ++end;
            list.emplace_back(raw.substr(0, end));
            raw.remove_prefix(end);
        }
    }
    return list;
}

std::string wordOf(std::string piece) {
    while (piece.size() > 1 && (piece.back() == '.' || piece.back() == '-' || piece.back() == ':'))
        piece.pop_back();
    return piece;
}

/// The longest phrase of the table that begins at `at`; moves `at` behind it.
std::optional<WhenToken> wordToken(const std::vector<std::string>& list, std::size_t& at,
                                   const WhenWords& words) {
    for (std::size_t count = std::min(WhenWords::longestPhrase, list.size() - at); count > 0; --count) {
        std::string phrase;
        for (std::size_t i = 0; i < count; ++i)
            phrase += (i == 0 ? "" : " ") + wordOf(list[at + i]);
        if (const auto meaning = words.meaning(phrase)) {
            at += count;
            WhenToken token;
            token.meaning = *meaning;
            token.text = phrase;
            return token;
        }
    }
    return std::nullopt;
}

[[noreturn]] void refuse(const std::string& piece, const WhenWords& words) {
    const platform::Environment& environment = words.environment();
    throw WhenRefusal(companionText(environment, "When.notUnderstood", {piece}) +
                          nameProposal(environment, piece, words.all()) + "; " +
                          companionText(environment, "When.examples"),
                      false);
}

}  // namespace

std::vector<WhenToken> whenTokens(std::string_view text, const WhenWords& words) {
    const auto list = pieces(plainWords(text));
    std::vector<WhenToken> tokens;
    for (std::size_t at = 0; at < list.size();) {
        const std::string& piece = list[at];
        const bool followsDate = !tokens.empty() && tokens.back().is(Kind::date);
        if (piece == "t" && followsDate) {
            ++at;
            continue;
        }
        if (isAsciiDigit(piece.front())) {
            const auto token = numericToken(piece);
            if (!token) refuse(piece, words);
            tokens.push_back(*token);
            ++at;
        } else if (auto token = wordToken(list, at, words)) {
            if (token->is(WhenWord::ordinal) && !tokens.empty() && tokens.back().is(Kind::number)) {
                tokens.back().isOrdinal = true;
            } else if (!token->is(WhenWord::filler)) {
                tokens.push_back(*std::move(token));
            }
        } else {
            refuse(piece, words);
        }
    }
    return tokens;
}

}  // namespace hbr
