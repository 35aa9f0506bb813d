#pragma once

#include <optional>
#include <string>

namespace hbr {

/// Notes without the block that a conferencing add-in appended; nothing when nothing is left.
std::optional<std::string> removingVideoCallAnnotation(const std::string& text);

}  // namespace hbr
