#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace platform {

/// On one line, with padding.
std::string encodedBase64(std::string_view bytes);
/// Blanks and line ends are skipped and padding may be missing; nothing for any other character and for a
/// text that was cut.
std::optional<std::string> decodedBase64(std::string_view text);

}  // namespace platform
