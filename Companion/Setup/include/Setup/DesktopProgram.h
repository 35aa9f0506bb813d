#pragma once

#include <filesystem>
#include <optional>

namespace hbr {

/// The program of the desktop, installed beside this one; nothing when its package is not.
std::optional<std::filesystem::path> desktopProgram();

}  // namespace hbr
