#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

namespace platform {

/// What becomes of the parts of a sparse file that were never written: zeros, or nothing. Skipping them makes
/// a large empty file cheap.
enum class Holes { read, skipped };

/// Reads a regular file whole. Nothing but regular files is opened (no FIFO, no device), and never blocks.
/// `error` says why there is no result; `limit` in bytes, above it the result is absent (file_too_large).
std::optional<std::string> readRegularFile(const std::filesystem::path& file, std::error_code& error,
                                           std::uintmax_t limit = UINTMAX_MAX, Holes holes = Holes::read);

/// New file beside, synced, renamed over: the old or the new whole file is there at any instant.
bool writeFileAtomically(const std::filesystem::path& file, std::string_view content, unsigned mode,
                         std::error_code& error);

/// Creates the folder and its missing parents with the mode given.
bool createDirectories(const std::filesystem::path& directory, unsigned mode, std::error_code& error);

/// Moves a file that cannot be read out of the way, as "NAME.unreadable-N"; the new name, or nothing.
std::optional<std::filesystem::path> setAside(const std::filesystem::path& file, std::error_code& error);

}  // namespace platform
