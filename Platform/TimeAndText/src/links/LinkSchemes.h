#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace platform {

/// Where the scheme (RFC 3986, section 3.1) begins in a word that a colon follows; nothing when the word does
/// not end in one. Without "//" only schemes that are known to be written so, else every "Note:" would open a
/// link.
std::optional<std::size_t> schemeStart(std::string_view word, bool hasSlashes);
/// "http" and "https", letter case ignored.
bool isWebScheme(std::string_view scheme);
/// "tel" and similar ones, whose links may end in "*" and "#".
bool takesNumbers(std::string_view scheme);
/// Whether what follows the scheme's colon (and slashes), not empty, can be the rest of such a link.
bool mayFollowScheme(std::string_view scheme, std::string_view rest);
/// "http://" or "https://", letter case ignored.
bool beginsWebAddress(std::string_view text);
bool beginsWww(std::string_view text);

}  // namespace platform
