#include <Setup/DesktopProgram.h>

#include <System/Environment.h>

#include <unistd.h>

namespace hbr {

std::optional<std::filesystem::path> desktopProgram() {
    const auto program = platform::programPath("").parent_path() / "heedbanner-desktop";
    if (access(program.c_str(), X_OK) == 0) return program;
    return std::nullopt;
}

}  // namespace hbr
