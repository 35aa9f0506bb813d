#include "CardProperty.h"

#include <CalendarFiles/TextDecoding.h>
#include <TimeAndText/Text.h>

#include <charconv>

#include "CardLines.h"

namespace platform {
namespace {

std::vector<std::string_view> splitUnescaped(std::string_view text, char separator) {
    std::vector<std::string_view> pieces;
    std::size_t begin = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\\') {
            ++i;
        } else if (text[i] == separator) {
            pieces.push_back(text.substr(begin, i - begin));
            begin = i + 1;
        }
    }
    pieces.push_back(text.substr(begin));
    return pieces;
}

/// "Philip,Paul" as "Philip Paul".
std::string listAsWords(std::string_view piece) {
    std::string spaced;
    for (const auto word : splitUnescaped(piece, ',')) {
        if (!spaced.empty()) spaced += ' ';
        spaced += word;
    }
    return spaced;
}

}  // namespace

CardProperty::CardProperty(const ContentLine& content) : content_(content), name_(content.name) {
    const auto dot = name_.rfind('.');
    if (dot != std::string_view::npos) name_.remove_prefix(dot + 1);
}

bool CardProperty::hasUnknownCharset() const {
    const auto charset = content_.parameter("CHARSET");
    return charset && !utf8FromCharset("", *charset);
}

std::string CardProperty::inUtf8(std::string_view bytes) const {
    if (!content_.parameters.empty()) {
        if (const auto charset = content_.parameter("CHARSET")) {
            if (auto text = utf8FromCharset(bytes, *charset)) return *std::move(text);
        }
    }
    return lineAsUtf8(bytes);
}

std::vector<std::string> CardProperty::pieces(char separator) const {
    const auto text = [&](std::string_view piece) {
        return unescapedText(separator == ';' ? listAsWords(piece) : std::string(piece));
    };
    std::vector<std::string> result;
    if (isQuotedPrintable(content_)) {
        // Encoded characters do not separate.
        for (const auto piece : splitUnescaped(content_.value, separator))
            result.push_back(inUtf8(decodedQuotedPrintable(text(piece))));
        return result;
    }
    // Only in UTF-8 is every backslash one: other character sets have it inside of letters.
    const std::string value = inUtf8(content_.value);
    for (const auto piece : splitUnescaped(value, separator))
        result.push_back(text(piece));
    return result;
}

std::string CardProperty::text() const {
    return trimmed(pieces('\0').front());
}

std::vector<std::string> CardProperty::components() const {
    auto result = pieces(';');
    for (auto& piece : result)
        piece = trimmed(piece);
    return result;
}

std::vector<std::string> CardProperty::list() const {
    auto result = pieces(',');
    for (auto& piece : result)
        piece = trimmed(piece);
    return result;
}

int CardProperty::preference() const {
    constexpr int none = 101;
    if (content_.parameters.empty()) return none;
    if (const auto written = content_.parameter("PREF")) {
        int value = 0;
        const auto [end, error] = std::from_chars(written->data(), written->data() + written->size(), value);
        if (error == std::errc() && end == written->data() + written->size()) return value;
    }
    return content_.hasType("PREF") ? 1 : none;
}

}  // namespace platform
