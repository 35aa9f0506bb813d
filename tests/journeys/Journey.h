#pragma once

#include <Foundation/Json.h>
#include <Foundation/PropertyValue.h>
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
    /// Added to the environment, or replacing parts of it.
    std::map<std::string, std::string> variables = {{"TZ", "Europe/Berlin"}};

  private:
    int count_ = 0;
};

inline const std::string sharedSettings = "group.com.quietlark.hbr.plist";
inline const std::string standardSettings = "com.quietlark.hbr.plist";

/// A calendar of one event; `lines` are added to it.
std::string oneEvent(std::string_view title, std::string_view start, std::string_view end,
                     std::string_view lines = {});

}  // namespace test
