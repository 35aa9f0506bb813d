#include "Journey.h"

#include <Foundation/PropertyList.h>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>
#include <csignal>

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

/// False when the process is still there after `milliseconds`.
bool waitFor(pid_t process, int milliseconds) {
    const int handle = static_cast<int>(syscall(SYS_pidfd_open, process, 0));
    if (handle < 0) return false;
    pollfd ended{handle, POLLIN, 0};
    const bool hasEnded = poll(&ended, 1, milliseconds) == 1;
    close(handle);
    return hasEnded;
}

}  // namespace

Journey::Started Journey::start(const std::string& program, const Arguments& arguments) {
    const std::string number = std::to_string(++count_);
    Started started{-1, home / ("out-" + number), home / ("err-" + number)};

    std::map<std::string, std::string> values;
    for (char** entry = environ; *entry; ++entry) {
        // Of the tester's own environment only what the sanitizers want.
        const std::string_view text(*entry);
        const auto name = text.substr(0, text.find('='));
        if (name.ends_with("SAN_OPTIONS")) values[std::string(name)] = text.substr(name.size() + 1);
    }
    values["HOME"] = home.path();
    values["PATH"] = "/usr/bin:/bin";
    values["XDG_CONFIG_HOME"] = home / "config";
    values["XDG_DATA_HOME"] = home / "data";
    values["XDG_CACHE_HOME"] = home / "cache";
    values["XDG_STATE_HOME"] = home / "state";
    values["TMPDIR"] = home / "tmp";
    values["LANG"] = "C.UTF-8";
    std::filesystem::create_directories(home / "tmp");
    for (const auto& [name, value] : variables)
        values[name] = value;

    std::vector<std::string> environment;
    for (const auto& [name, value] : values)
        environment.push_back(name + "=" + value);
    std::vector<std::string> command = {(std::filesystem::path(PROGRAMS) / program).string()};
    command.insert(command.end(), arguments.begin(), arguments.end());

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, 1, started.out.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    posix_spawn_file_actions_addopen(&actions, 2, started.err.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    const int failed = posix_spawn(&started.process, command[0].c_str(), &actions, nullptr,
                                   pointers(command).data(), pointers(environment).data());
    posix_spawn_file_actions_destroy(&actions);
    if (failed != 0) {
        started.process = -1;
        ADD_FAILURE() << command[0] << " could not be started";
    }
    return started;
}

Outcome Journey::finish(const Started& started) {
    if (started.process < 0) return {};
    constexpr int patience = 60'000;
    if (!waitFor(started.process, patience)) {
        kill(started.process, SIGKILL);
        ADD_FAILURE() << "a program did not end";
    }
    int status = 0;
    waitpid(started.process, &status, 0);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status), readFile(started.out),
            readFile(started.err)};
}

Outcome Journey::run(const std::string& program, const Arguments& arguments) {
    return finish(start(program, arguments));
}

std::vector<Outcome> Journey::runTogether(const std::vector<std::pair<std::string, Arguments>>& programs) {
    std::vector<Started> started;
    for (const auto& [program, arguments] : programs)
        started.push_back(start(program, arguments));
    std::vector<Outcome> outcomes;
    for (const auto& one : started)
        outcomes.push_back(finish(one));
    return outcomes;
}

std::string Journey::examples() {
    return EXAMPLES;
}

std::string Journey::calendars() {
    return CALENDARS;
}

std::string Journey::edgeCases() {
    return EDGE_CASES;
}

std::string Journey::documents() {
    return DOCUMENTS;
}

std::string Journey::programs() {
    return PROGRAMS;
}

platform::JsonValue Journey::json(const Outcome& outcome) {
    auto value = platform::parseJson(outcome.out);
    if (!value) ADD_FAILURE() << "no JSON: " << outcome.out << outcome.err;
    return value.value_or(platform::JsonValue());
}

platform::PropertyDictionary Journey::readSettings(std::string_view name) const {
    const std::string content = readFile(configFile(name));
    const platform::Data bytes(content.begin(), content.end());
    const auto root = platform::readPropertyList(bytes);
    return root && root->asDictionary() ? *root->asDictionary() : platform::PropertyDictionary();
}

void Journey::writeSettings(std::string_view name, const platform::PropertyDictionary& values) const {
    home.write("config/heedbanner/" + std::string(name),
               platform::writeXmlPropertyList(platform::PropertyValue(values)));
}

std::string oneEvent(std::string_view title, std::string_view start, std::string_view end,
                     std::string_view lines) {
    std::string text = "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//heedbanner tests//EN\r\nBEGIN:VEVENT\r\n";
    text += "UID:" + std::string(title) + "@tests.invalid\r\nDTSTAMP:20260101T000000Z\r\n";
    text += "SUMMARY:" + std::string(title) + "\r\n";
    if (!start.empty()) text += "DTSTART:" + std::string(start) + "\r\n";
    if (!end.empty()) text += "DTEND:" + std::string(end) + "\r\n";
    return text + std::string(lines) + "END:VEVENT\r\nEND:VCALENDAR\r\n";
}

}  // namespace test
