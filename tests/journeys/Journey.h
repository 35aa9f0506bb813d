#pragma once

#include <Values/JsonValue.h>
#include <Values/PropertyValue.h>
#include <gtest/gtest.h>
#include <support/TemporaryDirectory.h>

#include <sys/types.h>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace test {

struct Outcome {
    int exitCode = -1;
    std::string out;
    std::string err;
};

/// Starts the built programs as a user does, in a home of its own. A program that has not ended after a
/// minute is killed and fails the test.
class Journey : public ::testing::Test {
  protected:
    using Arguments = std::vector<std::string>;

    /// Runs to the end. Standard input is empty.
    Outcome run(const std::string& program, const Arguments& arguments);
    Outcome companion(const Arguments& arguments) { return run("heedbanner", arguments); }
    Outcome widgets(const Arguments& arguments) { return run("heedbanner-widgets", arguments); }
    /// Runs a command line as it is typed: blanks part the words, 'quotes' keep them together, "~/" is the
    /// home, and the program is `heedbanner` where no other one is named. `currentTime` is its clock.
    Outcome type(std::string_view command);
    /// Types it and looks for each text in what it prints; after "!" for what must not be there, after "="
    /// for all of it. A refusal (exit code above 1) prints messages only.
    Outcome expect(std::string_view command, int exitCode, const std::vector<std::string>& texts = {});
    Outcome expect(std::string_view command, const std::vector<std::string>& texts = {}) {
        return expect(command, 0, texts);
    }
    struct Step {
        std::string command;
        int exitCode = 0;
        std::vector<std::string> texts = {};
    };
    void expectEach(const std::vector<Step>& steps);
    /// What it prints, as JSON.
    platform::JsonValue ask(std::string_view command) { return json(type(std::string(command) + " --json")); }
    /// Runs several at the same time.
    std::vector<Outcome> runTogether(const std::vector<std::pair<std::string, Arguments>>& programs);

    struct Started {
        pid_t process = -1;
        std::filesystem::path out;
        std::filesystem::path err;
    };
    Started start(const std::string& program, const Arguments& arguments);
    /// Waits for its end.
    Outcome finish(const Started& started);

    /// The answer as JSON; fails the test when it is none.
    platform::JsonValue json(const Outcome& outcome);

    /// The value at a path such as "0/event/title" ("last" for the last of a list): a string bare, anything
    /// else as JSON, "none" where there is nothing.
    static std::string valueAt(const platform::JsonValue& json, std::string_view path);
    /// That of each in a list.
    static std::vector<std::string> valuesAt(const platform::JsonValue& json, std::string_view path);

    /// The calendars that the project ships, and those written for these journeys.
    static std::string examples();
    static std::string calendars();
    static std::string edgeCases();
    static std::string documents();
    /// The folder of the built programs.
    static std::string programs();

    std::filesystem::path configFile(std::string_view name) const {
        return home / ("config/heedbanner/" + std::string(name));
    }
    platform::PropertyDictionary readSettings(std::string_view name) const;
    void writeSettings(std::string_view name, const platform::PropertyDictionary& values) const;

    TemporaryDirectory home;
    /// RFC 3339; without it the clock of the machine.
    std::string currentTime;
    /// Added to the environment, or replacing parts of it.
    std::map<std::string, std::string> variables = {{"TZ", "Europe/Berlin"}};

  private:
    Arguments words(std::string_view command) const;

    int count_ = 0;
};

inline const std::string sharedSettings = "group.com.quietlark.hbr.plist";
inline const std::string standardSettings = "com.quietlark.hbr.plist";

/// A calendar of one event; `lines` are added to it.
std::string oneEvent(std::string_view title, std::string_view start, std::string_view end,
                     std::string_view lines = {});

}  // namespace test
