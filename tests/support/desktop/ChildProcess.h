#pragma once

#include <spawn.h>
#include <support/TemporaryDirectory.h>
#include <sys/types.h>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace test {

using Variables = std::map<std::string, std::string>;

/// The whole environment of a program in a home of its own, in Berlin; of the tester's environment only what
/// sanitizers want.
Variables variablesFor(const TemporaryDirectory& home);

std::optional<pid_t> spawned(std::vector<std::string> command, const Variables& variables,
                             const posix_spawn_file_actions_t& files);
/// Waits for the end of a child: its exit code, or 128 + signal. Nothing when it still runs after `seconds`.
std::optional<int> statusOf(pid_t process, double seconds);

/// A program with a pipe to its input and from its output; its errors go to a file. Asked to end, then
/// killed, when destroyed.
class ChildProcess {
  public:
    /// `variables` are its whole environment. Throws when it cannot be started.
    ChildProcess(std::vector<std::string> command, const Variables& variables,
                 const std::filesystem::path& errors);
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    void writeLine(std::string_view line);
    /// The next line of the output that begins so, lines before it are skipped; fails the test and gives
    /// nothing when none came in time.
    std::optional<std::string> waitForLine(std::string_view beginning, double seconds = patience);
    /// The output up to its end.
    std::string readToEnd();
    /// Orders and waits until the program says that it is done.
    void order(const std::string& line);
    /// Closes its input and waits; fails the test and kills it when it does not end. Exit code, 128 + signal.
    int end(double seconds = patience);
    std::string errors() const;

    /// A machine may be busy.
    static constexpr double patience = 60;

  private:
    std::optional<int> reap(double seconds);

    std::vector<std::string> command_;
    std::filesystem::path errors_;
    pid_t pid_ = -1;
    int input_ = -1;
    int output_ = -1;
    std::string pending_;
    std::optional<int> status_;
};

void pauseBriefly();
double secondsNow();

/// Asks until it holds or the time is over; its last answer.
template <class Condition>
bool waitUntil(const Condition& condition, double seconds = ChildProcess::patience) {
    const double deadline = secondsNow() + seconds;
    while (!condition()) {
        if (secondsNow() > deadline) return condition();
        pauseBriefly();
    }
    return true;
}

}  // namespace test
