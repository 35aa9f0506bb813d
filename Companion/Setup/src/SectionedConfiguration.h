#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace hbr {

/// One section of a configuration in the manner of INI files: "[name]", or "[[name]]" below another.
struct ConfigurationSection {
    std::string name = {};
    /// The number of its brackets.
    int depth = 0;
    std::vector<std::pair<std::string, std::string>> values = {};

    /// Without the quotes around it; the last one where the key stands twice.
    std::optional<std::string> value(std::string_view key) const;
};

/// Sections in their order. Lines that are none of section, "key = value" (or "key: value") and comment are
/// passed over: what is read here are the files of other programs, which complain themselves.
std::vector<ConfigurationSection> readSections(std::string_view text);

}  // namespace hbr
