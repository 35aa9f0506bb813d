#include <TimeAndText/PersonName.h>
#include <TimeAndText/Text.h>
#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <vector>

#include "NameScript.h"
#include "NameWords.h"

namespace platform {
namespace {

using Words = std::vector<std::string>;

std::string joined(Words::const_iterator begin, Words::const_iterator end, std::string_view between = " ") {
    std::string text;
    for (auto word = begin; word != end; ++word) {
        if (word != begin) text += between;
        text += *word;
    }
    return text;
}

/// The pieces between characters for which `separates` holds, empty ones left out.
template <class Separates>
Words pieces(std::string_view text, const Separates& separates) {
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    Words words;
    std::size_t begin = 0;
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t at = i;
        UChar32 character = 0;
        U8_NEXT(bytes, i, text.size(), character);
        if (character < 0 || !separates(character)) continue;
        if (at > begin) words.emplace_back(text.substr(begin, at - begin));
        begin = i;
    }
    if (begin < text.size()) words.emplace_back(text.substr(begin));
    return words;
}

Words wordsOf(std::string_view text) {
    Words found = words(text);
    std::erase_if(found, [](const std::string& word) { return !hasLetter(word); });
    return found;
}

/// Without what is in brackets or angle brackets ("John Harper (Sales) <john@example.com>").
std::string withoutAsides(std::string_view text) {
    std::string kept;
    int depth = 0;
    for (const char c : text) {
        if (c == '(' || c == '[' || c == '<') ++depth;
        if (depth == 0 && c != '"') kept += c;
        if ((c == ')' || c == ']' || c == '>') && depth > 0) --depth;
    }
    return hasLetter(kept) ? kept : std::string(text);
}

PersonNameComponents eastAsian(std::string_view text, NameScript script) {
    constexpr UChar32 katakanaMiddleDot = 0x30FB;
    constexpr UChar32 halfWidthMiddleDot = 0xFF65;
    constexpr UChar32 doubleHyphen = 0xFF1D;
    const Words words = pieces(text, [](UChar32 c) {
        return u_isUWhiteSpace(c) || c == katakanaMiddleDot || c == halfWidthMiddleDot || c == doubleHyphen;
    });
    if (words.size() < 2) return {.givenName = trimmed(text)};
    if (script == NameScript::transcribed) {
        return {.givenName = words.front(),
                .middleName = joined(words.begin() + 1, words.end() - 1, "・"),
                .familyName = words.back()};
    }
    return {.givenName = joined(words.begin() + 1, words.end(), ""), .familyName = words.front()};
}

/// Takes suffixes from the end, as long as a word remains.
void moveSuffixes(Words& words, PersonNameComponents& name) {
    while (words.size() > 1 && isNameSuffix(words.back())) {
        name.nameSuffix = words.back() + (name.nameSuffix.empty() ? "" : " " + name.nameSuffix);
        words.pop_back();
    }
}

void moveTitles(Words& words, PersonNameComponents& name) {
    auto firstOther = words.begin();
    while (std::distance(firstOther, words.end()) > 1 && isTitle(*firstOther))
        ++firstOther;
    name.namePrefix = joined(words.begin(), firstOther);
    words.erase(words.begin(), firstOther);
}

void setGivenNames(const Words& words, PersonNameComponents& name) {
    if (words.empty()) return;
    name.givenName = words.front();
    name.middleName = joined(words.begin() + 1, words.end());
}

/// "Given middle … family", titles before and suffixes behind.
PersonNameComponents inReadingOrder(Words words) {
    PersonNameComponents name;
    moveTitles(words, name);
    moveSuffixes(words, name);
    if (words.size() < 2) {
        setGivenNames(words, name);
        return name;
    }
    const auto family = std::find_if(words.begin() + 1, words.end() - 1, isFamilyParticle);
    name.familyName = joined(family, words.end());
    words.erase(family, words.end());
    setGivenNames(words, name);
    return name;
}

/// "Family, given middle"; suffixes and titles may follow after further commas.
PersonNameComponents withCommas(const Words& parts) {
    PersonNameComponents name;
    Words family = wordsOf(parts.front());
    moveSuffixes(family, name);
    Words given;
    for (auto part = parts.begin() + 1; part != parts.end(); ++part) {
        for (auto& word : wordsOf(*part)) {
            if (isNameSuffix(word)) {
                name.nameSuffix += (name.nameSuffix.empty() ? "" : " ") + word;
            } else {
                given.push_back(std::move(word));
            }
        }
    }
    if (given.empty()) {
        auto whole = inReadingOrder(family);
        if (whole.nameSuffix.empty()) whole.nameSuffix = name.nameSuffix;
        return whole;
    }
    moveTitles(given, name);
    if (given.size() == 1 && isTitle(given.front())) {
        auto whole = inReadingOrder(family);
        whole.namePrefix = given.front();
        return whole;
    }
    setGivenNames(given, name);
    name.familyName = joined(family.begin(), family.end());
    return name;
}

}  // namespace

std::optional<PersonNameComponents> PersonNameComponentsFormatter::personNameComponents(
    std::string_view text) const {
    if (!hasLetter(text)) return std::nullopt;
    const std::string name = withoutAsides(sanitizedUtf8(text));
    const auto script = nameScript(name);
    if (script == NameScript::familyFirst || script == NameScript::transcribed)
        return eastAsian(name, script);

    constexpr UChar32 arabicComma = 0x060C;
    Words parts = pieces(name, [](UChar32 c) { return c == ',' || c == arabicComma; });
    std::erase_if(parts, [](const std::string& part) { return !hasLetter(part); });
    return parts.size() > 1 ? withCommas(parts) : inReadingOrder(wordsOf(parts.front()));
}

}  // namespace platform
