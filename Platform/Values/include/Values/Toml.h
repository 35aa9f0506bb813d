#pragma once

#include <Values/PropertyValue.h>

#include <optional>
#include <string>
#include <string_view>

namespace platform {

struct TomlError {
    int line = 0;
    std::string text;
};

/// Reads a TOML document; on failure nothing, with line and reason in `error`. Dates become texts.
std::optional<PropertyDictionary> parseToml(std::string_view text, TomlError& error);
/// Arrays of dictionaries become arrays of tables.
std::string writeToml(const PropertyDictionary& root);

}  // namespace platform
