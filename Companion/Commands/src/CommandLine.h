#pragma once

#include "Command.h"

#include <Session/GeneralOptions.h>

#include <optional>

namespace hbr {

/// What the arguments ask for: a command to run, or an answer that was given already (help, version, a
/// complaint), then with its exit code.
struct CommandLine {
    GeneralOptions general;
    Command* command = nullptr;
    ExitCode exitCode = ExitCode::done;
};

/// Names every command and option in `root`; what a parse finds goes into `result`, which has to outlive it.
void declareCommands(CLI::App& root, CommandLine& result,
                     const std::vector<std::unique_ptr<Command>>& commands);

/// Reads the arguments into the options of `commands`; prints help and version on standard output,
/// complaints on standard error.
CommandLine readCommandLine(int argc, char** argv, const std::vector<std::unique_ptr<Command>>& commands);

}  // namespace hbr
