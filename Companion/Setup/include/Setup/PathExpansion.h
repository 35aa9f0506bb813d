#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace hbr {

/// A path as configurations write it: "~" and "~/" at the beginning stand for the home folder, "$NAME" and
/// "${NAME}" for variables of the process's environment (one that is not set stays as it is written).
std::filesystem::path expandedPath(std::string_view text, const std::filesystem::path& home);

/// The files and folders that match "*", "?" and "[…]"; without any of these the path itself, there or not.
std::vector<std::filesystem::path> matchingPaths(const std::filesystem::path& pattern);

/// Below the home folder "~/…".
std::string withTilde(const std::filesystem::path& path, const std::filesystem::path& home);

}  // namespace hbr
