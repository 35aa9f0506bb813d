#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace platform {

/// Where the scheme begins in a word that a colon follows; nothing when the word ends in none. Without "//"
/// only schemes that are known to do without count, else every "Note:" would open a link.
std::optional<std::size_t> schemeStart(std::string_view word, bool hasSlashes);
/// "http" and "https", letter case ignored.
bool isWebScheme(std::string_view scheme);
/// "tel" and its like, whose links may end in "*" and "#".
bool takesNumbers(std::string_view scheme);
/// Whether what stands behind the scheme's colon (and slashes) can be the rest of such a link.
bool mayFollowScheme(std::string_view scheme, std::string_view rest);

}  // namespace platform
