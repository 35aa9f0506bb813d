#pragma once

#include <System/Environment.h>

#include <filesystem>
#include <optional>
#include <string_view>

namespace platform {

/// The first of the environment's resource directories that holds `name` (a file or a folder).
std::optional<std::filesystem::path> findResource(const Environment& environment, std::string_view name);

}  // namespace platform
