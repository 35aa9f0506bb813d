#pragma once

#include <filesystem>
#include <optional>

namespace hbr {

/// The desktop program in the folder of this one; nothing when it is not installed.
std::optional<std::filesystem::path> desktopProgram();

}  // namespace hbr
