#pragma once

#include <stdexcept>
#include <string>

namespace hbr {

enum class ExitStatus { done = 0, failed = 1, wrongUsage = 2, nothingThere = 3 };

/// Ends the program: one line for standard error and the exit status.
class HostFailure : public std::runtime_error {
  public:
    HostFailure(ExitStatus exitStatus, const std::string& message)
        : std::runtime_error(message), status(exitStatus) {}

    ExitStatus status;
};

}  // namespace hbr
