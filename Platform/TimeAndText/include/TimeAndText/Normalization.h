#pragma once

#include <string>
#include <string_view>

namespace platform {

/// Canonical composition (NFC): canonically equivalent texts become equal bytes. Bad UTF-8 is replaced.
std::string canonicallyComposed(std::string_view text);
/// Canonical decomposition (NFD), likewise.
std::string canonicallyDecomposed(std::string_view text);

}  // namespace platform
