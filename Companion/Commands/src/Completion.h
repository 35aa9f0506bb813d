#pragma once

#include "Command.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace CLI {
class App;
}

namespace hbr {

/// What a shell may put in a word's place.
struct Candidate {
    std::string word;
    std::string meaning;
};

/// The values that an argument takes, by the command's name and the argument's name in the help ("EVENT").
using ArgumentValues =
    std::function<std::vector<Candidate>(std::string_view command, std::string_view argument)>;

/// What may stand for the last of `words`, the ones after the program's name: commands, options, or values.
/// Only what begins like it; nothing where a file or free text is meant.
std::vector<Candidate> completions(const CLI::App& root, const std::vector<std::string>& words,
                                   const ArgumentValues& values);

/// Prints the candidates, one a line: the word, a tab, its meaning.
ExitCode printCompletions(const std::vector<std::string>& words,
                          const std::vector<std::unique_ptr<Command>>& commands, const char* program);

}  // namespace hbr
