#pragma once

#include <string>
#include <string_view>

namespace hbr {

bool isRightToLeftLanguage(std::string_view language);

/// Whether the text holds letters of the other direction than the sentence it is put into.
bool runsAgainst(std::string_view text, bool isRightToLeftSentence);

/// The text between U+2068 and U+2069: its direction is its own, and the words around it keep their places.
std::string isolatedText(std::string_view text);

}  // namespace hbr
