#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// The texts with `separator` between them.
std::string joined(const std::vector<std::string>& texts, std::string_view separator = ", ");

}  // namespace platform
