#pragma once

#include <filesystem>
#include <string_view>
#include <system_error>

namespace platform {

/// As writeFileAtomically, by way of `temporary` in the same folder; left over content there is replaced.
/// The caller sees to it that nobody else writes `temporary` meanwhile.
bool writeThrough(const std::filesystem::path& temporary, const std::filesystem::path& file,
                  std::string_view content, unsigned mode, std::error_code& error);

/// Where a write through a symbolic link goes, so that a linked file stays linked.
std::filesystem::path linkTarget(const std::filesystem::path& file);

}  // namespace platform
