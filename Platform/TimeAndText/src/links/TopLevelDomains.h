#pragma once

#include <string_view>

namespace platform {

/// Whether a text that ends in this label is taken for a host although it has no scheme.
enum class TopLevelDomain {
    unknown,
    known,
    /// Also the ending of files or an everyday word: only a path behind it makes it a host.
    ambiguous
};

/// `label` in lower case, ASCII or UTF-8.
TopLevelDomain topLevelDomain(std::string_view label);

}  // namespace platform
