#pragma once

#include <string>
#include <string_view>

namespace platform {

/// Canonical composition (NFC): canonically equivalent texts become equal bytes. Bad UTF-8 is replaced.
std::string canonicallyComposed(std::string_view text);

}  // namespace platform
