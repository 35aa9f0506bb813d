#include "Journey.h"

#include <Values/JsonText.h>
#include <Values/PropertyList.h>

#include <gmock/gmock.h>
#include <support/desktop/ChildProcess.h>

#include <fcntl.h>
#include <csignal>

namespace test {

namespace {

/// The value at the path, as JSON writes it but a string bare; "none" where there is nothing.
std::string textOf(const platform::JsonValue* value) {
    if (!value) return "none";
    return value->asString() ? *value->asString() : writeJson(*value);
}

}  // namespace

std::string Journey::valueAt(const platform::JsonValue& json, std::string_view path) {
    const auto slash = path.find('/');
    const std::string step(path.substr(0, slash));
    const platform::JsonValue* next = json.find(step);
    if (const auto* list = json.asArray()) {
        const auto index = step == "last" ? list->size() - 1 : std::stoul(step);
        next = index < list->size() ? &(*list)[index] : nullptr;
    }
    if (!next || slash == std::string_view::npos) return textOf(next);
    return valueAt(*next, path.substr(slash + 1));
}

std::vector<std::string> Journey::valuesAt(const platform::JsonValue& json, std::string_view path) {
    std::vector<std::string> values;
    for (const auto& one : *json.asArray())
        values.push_back(valueAt(one, path));
    return values;
}

Journey::Arguments Journey::words(std::string_view command) const {
    Arguments words;
    for (std::size_t at = 0; (at = command.find_first_not_of(' ', at)) != std::string_view::npos;) {
        const bool isQuoted = command[at] == '\'';
        const auto end = command.find(isQuoted ? '\'' : ' ', at + 1);
        std::string word(command.substr(at, end - at));
        if (isQuoted) word.erase(0, 1);
        if (word.starts_with("~/")) word.replace(0, 1, home.path().string());
        words.push_back(std::move(word));
        if (end == std::string_view::npos) break;
        at = end + 1;
    }
    return words;
}

Outcome Journey::type(std::string_view command) {
    auto arguments = words(command);
    std::string program = "heedbanner";
    if (!arguments.empty() && arguments.front().starts_with("heedbanner-")) {
        program = arguments.front();
        arguments.erase(arguments.begin());
    }
    if (!currentTime.empty() && command.find("--now ") == std::string_view::npos)
        arguments.insert(std::ranges::find(arguments, "--"), {"--now", currentTime});
    return run(program, arguments);
}

Outcome Journey::expect(std::string_view command, int exitCode, const std::vector<std::string>& texts) {
    SCOPED_TRACE(command);
    const Outcome outcome = type(command);
    EXPECT_EQ(outcome.exitCode, exitCode) << outcome.out << outcome.err;
    if (exitCode > 1) {
        EXPECT_EQ(outcome.out, "");
        EXPECT_THAT(outcome.err, testing::StartsWith("heedbanner"));
    }
    const std::string said = outcome.out + outcome.err;
    for (const auto& text : texts) {
        if (text.starts_with('=')) {
            EXPECT_EQ(said, text.substr(1));
        } else if (text.starts_with('!')) {
            EXPECT_THAT(said, testing::Not(testing::HasSubstr(text.substr(1))));
        } else {
            EXPECT_THAT(said, testing::HasSubstr(text));
        }
    }
    return outcome;
}

void Journey::expectEach(const std::vector<Step>& steps) {
    for (const auto& [command, exitCode, texts] : steps)
        expect(command, exitCode, texts);
}

Journey::Started Journey::start(const std::string& program, const Arguments& arguments) {
    const std::string number = std::to_string(++count_);
    Started started{-1, home / ("out-" + number), home / ("err-" + number)};

    Variables values = variablesFor(home);
    for (const auto& [name, value] : variables)
        values[name] = value;
    std::vector<std::string> command = {(std::filesystem::path(PROGRAMS) / program).string()};
    command.insert(command.end(), arguments.begin(), arguments.end());

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, 1, started.out.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    posix_spawn_file_actions_addopen(&actions, 2, started.err.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    const auto process = spawned(command, values, actions);
    posix_spawn_file_actions_destroy(&actions);
    if (!process) ADD_FAILURE() << command[0] << " could not be started";
    started.process = process.value_or(-1);
    return started;
}

Outcome Journey::finish(const Started& started) {
    if (started.process < 0) return {};
    auto status = statusOf(started.process, ChildProcess::patience);
    if (!status) {
        kill(started.process, SIGKILL);
        ADD_FAILURE() << "a program did not end";
        status = statusOf(started.process, ChildProcess::patience);
    }
    return {status.value_or(-1), readFile(started.out), readFile(started.err)};
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
