#include "ChildProcess.h"

#include <gtest/gtest.h>
#include <support/TemporaryDirectory.h>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>
#include <algorithm>
#include <cctype>
#include <chrono>
#include <csignal>
#include <stdexcept>
#include <thread>
#include <utility>

extern char** environ;

namespace test {

namespace {

std::vector<char*> pointers(std::vector<std::string>& texts) {
    std::vector<char*> result;
    for (auto& text : texts)
        result.push_back(text.data());
    result.push_back(nullptr);
    return result;
}

/// Those of the tester's own that sanitizers want.
Variables sanitizerVariables() {
    Variables variables;
    for (char** entry = environ; *entry; ++entry) {
        const std::string_view text(*entry);
        const auto name = text.substr(0, text.find('='));
        if (name.ends_with("SAN_OPTIONS")) variables[std::string(name)] = text.substr(name.size() + 1);
    }
    return variables;
}

}  // namespace

double secondsNow() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

void pauseBriefly() {
    std::this_thread::sleep_for(std::chrono::milliseconds(15));
}

Variables variablesFor(const TemporaryDirectory& home) {
    Variables variables = sanitizerVariables();
    variables["HOME"] = home.path();
    variables["PATH"] = "/usr/bin:/bin";
    for (const char* kind : {"CONFIG", "DATA", "CACHE", "STATE"}) {
        std::string folder = kind;
        std::ranges::transform(folder, folder.begin(), [](unsigned char c) { return std::tolower(c); });
        variables["XDG_" + std::string(kind) + "_HOME"] = home / folder;
    }
    variables["TMPDIR"] = home / "tmp";
    variables["LANG"] = "C.UTF-8";
    variables["TZ"] = "Europe/Berlin";
    std::filesystem::create_directories(home / "tmp");
    return variables;
}

std::optional<pid_t> spawned(std::vector<std::string> command, const Variables& variables,
                             const posix_spawn_file_actions_t& files) {
    std::vector<std::string> environment;
    for (const auto& [name, value] : variables)
        environment.push_back(name + "=" + value);
    pid_t process = -1;
    if (posix_spawnp(&process, command[0].c_str(), &files, nullptr, pointers(command).data(),
                     pointers(environment).data()) != 0)
        return std::nullopt;
    return process;
}

std::optional<int> statusOf(pid_t process, double seconds) {
    const int handle = static_cast<int>(syscall(SYS_pidfd_open, process, 0));
    if (handle < 0) return std::nullopt;
    pollfd ended{handle, POLLIN, 0};
    const bool hasEnded = poll(&ended, 1, static_cast<int>(seconds * 1000)) == 1;
    close(handle);
    if (!hasEnded) return std::nullopt;
    int status = 0;
    waitpid(process, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

ChildProcess::ChildProcess(std::vector<std::string> command, const Variables& variables,
                           const std::filesystem::path& errors)
    : command_(std::move(command)), errors_(errors) {
    // A write to a program that has ended is no reason to end too.
    std::signal(SIGPIPE, SIG_IGN);
    int toChild[2], fromChild[2];
    if (pipe2(toChild, O_CLOEXEC) != 0 || pipe2(fromChild, O_CLOEXEC) != 0)
        throw std::runtime_error("no pipe");
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, toChild[0], 0);
    posix_spawn_file_actions_adddup2(&actions, fromChild[1], 1);
    posix_spawn_file_actions_addopen(&actions, 2, errors_.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600);
    const auto process = spawned(command_, variables, actions);
    posix_spawn_file_actions_destroy(&actions);
    close(toChild[0]);
    close(fromChild[1]);
    input_ = toChild[1];
    output_ = fromChild[0];
    if (!process) throw std::runtime_error(command_[0] + " could not be started");
    pid_ = *process;
}

ChildProcess::~ChildProcess() {
    if (input_ >= 0) close(input_);
    if (!status_) {
        kill(pid_, SIGTERM);
        constexpr double grace = 5;
        if (!reap(grace)) {
            kill(pid_, SIGKILL);
            reap(patience);
        }
    }
    close(output_);
}

void ChildProcess::writeLine(std::string_view line) {
    const std::string bytes = std::string(line) + "\n";
    if (write(input_, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size()))
        ADD_FAILURE() << command_[0] << " does not take \"" << line << "\"";
}

std::optional<std::string> ChildProcess::waitForLine(std::string_view beginning, double seconds) {
    const double deadline = secondsNow() + seconds;
    std::string passedOver;
    for (;;) {
        for (std::size_t end; (end = pending_.find('\n')) != std::string::npos;) {
            std::string line = pending_.substr(0, end);
            pending_.erase(0, end + 1);
            if (line.starts_with(beginning)) return line;
            passedOver += line + "\n";
        }
        const int rest = static_cast<int>(std::max(0.0, (deadline - secondsNow()) * 1000));
        pollfd ready{output_, POLLIN, 0};
        char bytes[4096];
        const ssize_t count = poll(&ready, 1, rest) == 1 ? read(output_, bytes, sizeof bytes) : 0;
        if (count <= 0) break;
        pending_.append(bytes, static_cast<std::size_t>(count));
    }
    ADD_FAILURE() << command_[0] << " did not say \"" << beginning << "\" but:\n" << passedOver << errors();
    return std::nullopt;
}

std::string ChildProcess::readToEnd() {
    char bytes[4096];
    for (ssize_t count; (count = read(output_, bytes, sizeof bytes)) > 0;)
        pending_.append(bytes, static_cast<std::size_t>(count));
    return std::exchange(pending_, {});
}

void ChildProcess::order(const std::string& line) {
    writeLine(line);
    waitForLine("done " + line);
}

std::optional<int> ChildProcess::reap(double seconds) {
    if (!status_) status_ = statusOf(pid_, seconds);
    return status_;
}

int ChildProcess::end(double seconds) {
    if (input_ >= 0) close(input_);
    input_ = -1;
    if (const auto status = reap(seconds)) return *status;
    ADD_FAILURE() << command_[0] << " did not end";
    kill(pid_, SIGKILL);
    return reap(patience).value_or(-1);
}

std::string ChildProcess::errors() const {
    return readFile(errors_);
}

}  // namespace test
