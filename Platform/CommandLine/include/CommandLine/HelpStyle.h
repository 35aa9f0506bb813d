#pragma once

namespace CLI {
class App;
}

namespace platform {

/// The group of the options that every command has.
inline constexpr const char* generalOptions = "General";

/// Help of the program and of the commands that are then added to it: how it is used, its commands, its own
/// options, and the general ones at the end.
void setHelpStyle(CLI::App& program);

}  // namespace platform
