#pragma once

#include <functional>
#include <string>
#include <vector>

namespace platform {

/// How a program ended and what it wrote.
struct ProgramOutcome {
    /// Exit status 0.
    bool isSuccess = false;
    std::string output;
    /// Its standard error, or why it could not be started.
    std::string errors;
};

/// Starts the command in this process's environment, without standard input. `ended` is called once, on the
/// main queue. Main thread.
void runProgram(const std::vector<std::string>& command, std::function<void(ProgramOutcome)> ended);

}  // namespace platform
