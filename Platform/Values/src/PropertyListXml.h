#pragma once

#include <Values/PropertyValue.h>

#include <optional>
#include <string_view>

namespace platform {

/// Deeper lists are refused: reading, writing and destroying a value recurse.
constexpr std::size_t deepestNesting = 512;

/// Strict where the library's own XML reader is lenient: that one makes numbers of any text, depends on
/// the process's locale for fractions and lets a key without a value pass.
std::optional<PropertyValue> readXmlPropertyList(std::string_view text);

}  // namespace platform
