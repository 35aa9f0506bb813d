#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace hbr {

/// Expands a path from a configuration: "~" and "~/" at the beginning to the home folder, "$NAME" and
/// "${NAME}" to variables of the process's environment (unset ones stay as written).
std::filesystem::path expandedPath(std::string_view text, const std::filesystem::path& home);

/// The files and folders that match "*", "?" and "[…]"; without wildcards the path itself, even if it does
/// not exist.
std::vector<std::filesystem::path> matchingPaths(const std::filesystem::path& pattern);

/// Paths below the home folder as "~/…".
std::string withTilde(const std::filesystem::path& path, const std::filesystem::path& home);

}  // namespace hbr
