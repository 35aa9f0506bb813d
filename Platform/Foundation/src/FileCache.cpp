#include <Foundation/FileCache.h>
#include <Foundation/Files.h>

namespace platform {
namespace {

/// More than any collection; keeps a wrong file from filling the memory.
constexpr std::uintmax_t largestFile = std::uintmax_t{256} << 20;

}  // namespace

std::optional<std::string> readForCache(const std::filesystem::path& file, DiagnosticsSink& diagnostics) {
    std::error_code error;
    auto bytes = readRegularFile(file, error, largestFile);
    if (!bytes) {
        diagnostics.report({.severity = Diagnostic::Severity::error,
                            .file = file,
                            .text = "cannot be read: " + error.message()});
    }
    return bytes;
}

}  // namespace platform
