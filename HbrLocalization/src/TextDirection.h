#pragma once

#include <string>
#include <string_view>

namespace hbr {

/// Whether the text holds letters of the other direction than the sentence it is put into, or marks that
/// would turn the direction of what follows it.
bool runsAgainst(std::string_view text, bool isRightToLeftSentence);

/// The text between U+2068 and U+2069: its direction is its own, and the words around it keep their places.
std::string isolatedText(std::string_view text);

}  // namespace hbr
