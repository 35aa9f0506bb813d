#pragma once

#include "Framework/Command.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace CLI {
class App;
}

namespace hbr {

/// A possible completion of a word.
struct Candidate {
    std::string word;
    std::string meaning;
};

/// The values that an argument takes, by the command's name and the argument's name in the help ("EVENT").
using ArgumentValues =
    std::function<std::vector<Candidate>(std::string_view command, std::string_view argument)>;

/// Completions of the last of `words` (the words after the program's name): commands, options or values that
/// begin like it. None where a file or free text is expected.
std::vector<Candidate> completions(const CLI::App& root, const std::vector<std::string>& words,
                                   const ArgumentValues& values);

/// Prints the candidates, one per line: the word, a tab, its meaning.
ExitCode printCompletions(const std::vector<std::string>& words,
                          const std::vector<std::unique_ptr<Command>>& commands, const char* program);

}  // namespace hbr
