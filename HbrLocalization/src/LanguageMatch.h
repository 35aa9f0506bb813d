#pragma once

#include <string>
#include <vector>

namespace hbr {

/// The available language that serves the wanted ones (most wanted first) best; "en" when none does and it
/// is there, else empty. BCP 47 tags; the result is spelled as in `available`.
std::string bestLanguage(const std::vector<std::string>& wanted, const std::vector<std::string>& available);

}  // namespace hbr
