#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// The candidate that a mistyped word most likely means; empty when none is near.
std::string nearestName(std::string_view word, const std::vector<std::string>& candidates);

}  // namespace platform
