#pragma once

#include <vector>

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace platform {

/// The options and arguments of a command, those of its option groups included.
std::vector<const CLI::Option*> optionsOf(const CLI::App& app);

/// The commands below a command. (CLI11 counts option groups among them, without a name.)
std::vector<const CLI::App*> commandsOf(const CLI::App& app);

}  // namespace platform
