#pragma once

#include <Values/PropertyValue.h>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

// Changes to the text of a TOML document that leave everything else as it is written: comments, order,
// layout. They work on the tables [[array]] at the top of a document and give nothing where there is no such
// table, or where the array is written in brackets.
namespace platform {

/// Without one of the tables and the comment lines directly above it (at the beginning of the
/// document they stay: they may speak of all of it).
std::optional<std::string> withoutTomlTable(std::string_view text, std::string_view array, std::size_t index);

/// With a new value of a key in one of the tables; null takes the key out.
std::optional<std::string> withTomlValue(std::string_view text, std::string_view array, std::size_t index,
                                         std::string_view key, const PropertyValue* value);

/// With one more table at the end.
std::optional<std::string> withMoreToml(std::string_view text, std::string_view array,
                                        const PropertyDictionary& table);

}  // namespace platform
