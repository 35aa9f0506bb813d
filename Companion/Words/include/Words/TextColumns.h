#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// How many columns of a terminal a text takes: two for East Asian wide letters and emoji, none for combining
// marks, never more than two for one user-perceived character.
namespace hbr {

std::size_t columns(std::string_view text);
/// Filled with blanks to that many columns.
std::string padded(std::string_view text, std::size_t width);
/// A text that takes more columns is cut after a user-perceived character and ends with "…".
std::string truncatedToColumns(std::string_view text, std::size_t width);

}  // namespace hbr
