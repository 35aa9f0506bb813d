#include <CalendarFiles/FileCache.h>
#include <System/Files.h>

namespace platform {
namespace {

/// Ten years of a full calendar take a fifth of it.
constexpr std::uintmax_t largestFile = std::uintmax_t{64} << 20;

}  // namespace

std::optional<std::string> readForCache(const std::filesystem::path& file, DiagnosticsSink& diagnostics) {
    std::error_code error;
    auto bytes = readRegularFile(file, error, largestFile, Holes::skipped);
    if (!bytes) {
        const auto reason = error == std::errc::file_too_large
                                ? "larger than " + std::to_string(largestFile >> 20U) + " MB; not read"
                                : "cannot be read: " + error.message();
        diagnostics.report({.severity = Diagnostic::Severity::error, .file = file, .text = reason});
    }
    return bytes;
}

}  // namespace platform
