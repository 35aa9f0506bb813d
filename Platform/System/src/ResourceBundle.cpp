#include <System/ResourceBundle.h>

namespace platform {

std::optional<std::filesystem::path> findResource(const Environment& environment, std::string_view name) {
    for (const auto& directory : environment.resourceDirectories) {
        std::error_code ignored;
        auto candidate = directory / name;
        if (std::filesystem::exists(candidate, ignored)) return candidate;
    }
    return std::nullopt;
}

}  // namespace platform
