#pragma once

#include "Framework/Command.h"

#include <Session/GeneralOptions.h>

#include <optional>

namespace hbr {

/// The result of parsing the arguments: a command to run, or an exit code when help, the version or an error
/// message was already printed.
struct CommandLine {
    GeneralOptions general;
    Command* command = nullptr;
    ExitCode exitCode = ExitCode::done;
};

/// Declares every command and option in `root`. Parsing writes into `result`, which must outlive it.
void declareCommands(CLI::App& root, CommandLine& result,
                     const std::vector<std::unique_ptr<Command>>& commands);

/// Reads the arguments into the options of `commands`. Prints help and version on standard output, errors on
/// standard error.
CommandLine readCommandLine(int argc, char** argv, const std::vector<std::unique_ptr<Command>>& commands);

}  // namespace hbr
