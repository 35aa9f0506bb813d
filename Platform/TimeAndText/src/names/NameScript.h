#pragma once

#include <string_view>

namespace platform {

/// How the script of a name writes names.
enum class NameScript {
    /// Given name first, a blank between: Latin, Cyrillic, Greek, Devanagari …, and mixtures.
    spaced,
    /// As `spaced`, from right to left; letters stand apart by a blank so that they do not join.
    rightToLeft,
    /// Family name first, nothing between: Han (with or without kana), Hangul.
    familyFirst,
    /// Katakana alone writes foreign names: given name first, a middle dot between.
    transcribed
};

/// By the letters of the text; `spaced` without any.
NameScript nameScript(std::string_view name);
bool hasLetter(std::string_view text);
/// The first user-perceived character that begins with a letter, else the first one.
std::string_view initialOf(std::string_view word);

}  // namespace platform
