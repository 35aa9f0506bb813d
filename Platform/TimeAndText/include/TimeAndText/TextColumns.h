#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// How text stands in the columns of a terminal: East Asian wide letters and emoji take two, marks that join
// a letter none, one user-perceived character never more than two.
namespace platform {

std::size_t columnCount(std::string_view text);
/// Cut at a user-perceived character, with "…" for the rest, where it takes more columns.
std::string truncatedToColumns(std::string_view text, std::size_t columns);

}  // namespace platform
