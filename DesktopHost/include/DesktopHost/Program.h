#pragma once

#include <string_view>

namespace hbr {

/// The program `heedbanner-desktop`; gives the process's exit status (0 done, 1 failed, 2 wrong usage,
/// 3 nothing there to act on).
int runDesktopProgram(int argc, char** argv, std::string_view version);

}  // namespace hbr
