#pragma once

#include <string>
#include <string_view>

namespace platform {

/// The text's begin, of at most so many bytes, with "…" where something was cut off. Whole characters of
/// UTF-8.
inline std::string shortened(std::string_view text, std::size_t mostBytes) {
    if (text.size() <= mostBytes) return std::string(text);
    while (mostBytes > 0 && (static_cast<unsigned char>(text[mostBytes]) & 0xC0) == 0x80)
        --mostBytes;
    return std::string(text.substr(0, mostBytes)) + "…";
}

}  // namespace platform
