#pragma once

#include <string_view>

namespace hbr {

/// The program `heedbanner-widgets`; gives the process's exit status.
int runWidgetProgram(int argc, const char* const* argv, std::string_view version);

}  // namespace hbr
