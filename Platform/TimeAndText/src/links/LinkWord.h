#pragma once

#include <cstddef>
#include <string_view>

namespace platform {

/// A run of letters, digits, ".", "-", "_" and "+". It ends where ASCII and another script touch: no name
/// mixes the two. Byte offsets, `end` not included.
struct LinkWord {
    std::size_t start = 0;
    std::size_t end = 0;
};

/// The word that the mark (".", ":" or "@") ends or, if it is a dot, is part of. It does not begin before
/// `earliest`.
LinkWord wordAtMark(std::string_view text, std::size_t mark, std::size_t earliest);

}  // namespace platform
