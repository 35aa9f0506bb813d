#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// The candidate that a slip of the fingers most likely meant: fewest inserted, deleted, changed or swapped
/// letters (letter case ignored), or one that the word begins; nothing when none is near. The first of
/// several equally near ones.
std::optional<std::string> nearestName(std::string_view word, const std::vector<std::string>& candidates);

/// " (did you mean \"NAME\"?)" or nothing.
std::string proposal(std::string_view word, const std::vector<std::string>& candidates);

}  // namespace platform
