#pragma once

#include <stdexcept>
#include <string>

namespace platform {

namespace exitStatus {
inline constexpr int done = 0;
inline constexpr int failed = 1;
inline constexpr int wrongUsage = 2;
}  // namespace exitStatus

/// Ends a command: one line for the user and the exit status.
class CommandFailure : public std::runtime_error {
  public:
    CommandFailure(int status, const std::string& message) : std::runtime_error(message), status_(status) {}
    int status() const { return status_; }

  private:
    int status_;
};

}  // namespace platform
