#include "NameWords.h"

#include <TimeAndText/Ascii.h>
#include <TimeAndText/Text.h>

#include <algorithm>
#include <array>
#include <string>

namespace platform {
namespace {

using namespace std::string_view_literals;

// In lower case, without full stops.
constexpr std::array titles = {
    "capt"sv, "dame"sv, "dipl-ing"sv, "dott"sv,    "dr"sv,    "dra"sv,     "frau"sv, "herr"sv, "hon"sv,
    "hr"sv,   "lady"sv, "lord"sv,     "miss"sv,    "mlle"sv,  "mme"sv,     "mr"sv,   "mrs"sv,  "ms"sv,
    "mx"sv,   "prof"sv, "rabbi"sv,    "rev"sv,     "sir"sv,   "sra"sv,     "sr"sv,   "srta"sv, "г-н"sv,
    "д-р"sv,  "ד\"ר"sv, "أستاذ"sv,    "الأستاذ"sv, "دكتور"sv, "الدكتور"sv, "د"sv,
};
constexpr std::array suffixes = {"jr"sv, "jnr"sv, "sr"sv, "snr"sv, "esq"sv};
/// Only where at least two capitals say so: "Pe" and "Md" are names.
constexpr std::array degrees = {"bsc"sv, "cbe"sv, "cpa"sv, "dds"sv, "dphil"sv, "dvm"sv, "llm"sv, "mba"sv,
                                "mbe"sv, "md"sv,  "mph"sv, "msc"sv, "obe"sv,   "pe"sv,  "phd"sv, "rn"sv};
/// Only in capitals: "Vi" and "Iv" are names.
constexpr std::array numerals = {"II"sv, "III"sv, "IV"sv, "VI"sv, "VII"sv, "VIII"sv};
constexpr std::array particles = {
    "abu"sv, "af"sv,  "al"sv,  "ap"sv,  "av"sv,  "ben"sv, "bin"sv, "bint"sv,  "da"sv,    "dal"sv,
    "das"sv, "de"sv,  "del"sv, "den"sv, "der"sv, "des"sv, "di"sv,  "do"sv,    "dos"sv,   "du"sv,
    "el"sv,  "ibn"sv, "la"sv,  "las"sv, "le"sv,  "los"sv, "op"sv,  "st"sv,    "te"sv,    "ten"sv,
    "ter"sv, "van"sv, "von"sv, "zu"sv,  "zum"sv, "zur"sv, "'t"sv,  "della"sv, "dello"sv,
};

std::string plain(std::string_view word) {
    std::string text = lowercased(word);
    std::erase(text, '.');
    return text;
}

template <class Words>
bool isAmong(const Words& words, std::string_view word) {
    return std::find(words.begin(), words.end(), word) != words.end();
}

}  // namespace

bool isTitle(std::string_view word) {
    return isAmong(titles, plain(word));
}

bool isNameSuffix(std::string_view word) {
    const std::string text = plain(word);
    const auto capitals = std::count_if(word.begin(), word.end(), isAsciiUpper);
    return isAmong(numerals, word) || isAmong(suffixes, text) || (capitals >= 2 && isAmong(degrees, text));
}

bool isFamilyParticle(std::string_view word) {
    return isAmong(particles, plain(word));
}

}  // namespace platform
