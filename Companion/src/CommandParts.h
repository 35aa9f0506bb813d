#pragma once

#include <CLI/App.hpp>

#include <vector>

namespace hbr {

/// The options and arguments of a command, those of its option groups included.
std::vector<const CLI::Option*> optionsOf(const CLI::App& app);

/// The commands below a command. (CLI11 counts option groups among them, without a name.)
std::vector<const CLI::App*> commandsOf(const CLI::App& app);

}  // namespace hbr
