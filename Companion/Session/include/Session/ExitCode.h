#pragma once

#include <stdexcept>
#include <string>

namespace hbr {

enum class ExitCode { done = 0, failed = 1, wrongUsage = 2, nothingThere = 3 };

/// Ends a command with an exit code and one line on standard error.
class CommandFailure : public std::runtime_error {
  public:
    CommandFailure(ExitCode exitCode, const std::string& message)
        : std::runtime_error(message), code(exitCode) {}

    ExitCode code;
};

}  // namespace hbr
