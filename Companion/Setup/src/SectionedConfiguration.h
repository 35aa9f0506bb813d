#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace hbr {

/// One section of an INI-like configuration: "[name]", or "[[name]]" below another.
struct ConfigurationSection {
    std::string name = {};
    /// The number of its brackets.
    int depth = 0;
    std::vector<std::pair<std::string, std::string>> values = {};

    /// Without quotes; the last one if the key is repeated.
    std::optional<std::string> value(std::string_view key) const;
};

/// Sections in their order. Lines other than sections, "key = value" (or "key: value") and comments are
/// ignored: the programs that own these files report them.
std::vector<ConfigurationSection> readSections(std::string_view text);

}  // namespace hbr
