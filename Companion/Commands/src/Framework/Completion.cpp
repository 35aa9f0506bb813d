#include "Framework/Completion.h"

#include "Framework/ArgumentCandidates.h"
#include "Framework/CommandLine.h"

#include <CommandLine/CommandParts.h>
#include <CLI/CLI.hpp>

#include <iostream>

namespace hbr {

namespace {

using platform::commandsOf;
using platform::optionsOf;

const CLI::App* subcommand(const CLI::App& app, const std::string& name) {
    for (const CLI::App* below : commandsOf(app)) {
        if (below->get_name() == name) return below;
    }
    return nullptr;
}

const CLI::Option* optionNamed(const CLI::App& app, const std::string& word) {
    for (const CLI::Option* option : optionsOf(app)) {
        if (option->nonpositional() && option->check_name(word)) return option;
    }
    return nullptr;
}

/// The words of a type that lists its values: "{a,b}".
std::vector<Candidate> listedValues(const CLI::Option& option) {
    const std::string type = option.get_type_name();
    const auto open = type.find('{');
    const auto close = type.rfind('}');
    std::vector<Candidate> values;
    if (open == std::string::npos || close == std::string::npos || close < open) return values;
    for (auto& value : CLI::detail::split(type.substr(open + 1, close - open - 1), ','))
        values.push_back({std::move(value), ""});
    return values;
}

/// The role of the last word: its command, and whether it is an option's value or the n-th plain argument.
struct Place {
    const CLI::App* app;
    std::string command;
    const CLI::Option* valueOf = nullptr;
    std::size_t argument = 0;
};

Place placeOfLast(const CLI::App& root, const std::vector<std::string>& words) {
    Place place{&root, "", nullptr, 0};
    for (std::size_t index = 0; index + 1 < words.size(); ++index) {
        const std::string& word = words[index];
        if (place.valueOf) {
            place.valueOf = nullptr;
        } else if (word.size() > 1 && word.front() == '-') {
            const CLI::Option* option = optionNamed(*place.app, word);
            if (option && option->get_items_expected_max() > 0) place.valueOf = option;
        } else if (const CLI::App* below = subcommand(*place.app, word)) {
            if (place.command.empty()) place.command = word;
            place.app = below;
        } else {
            ++place.argument;
        }
    }
    return place;
}

const CLI::Option* positional(const CLI::App& app, std::size_t number) {
    const CLI::Option* last = nullptr;
    for (const CLI::Option* option : optionsOf(app)) {
        if (!option->get_positional()) continue;
        last = option;
        if (number-- == 0) return option;
    }
    return last && last->get_items_expected_max() > 1 ? last : nullptr;
}

std::vector<Candidate> optionCandidates(const CLI::App& app) {
    std::vector<Candidate> all;
    for (const CLI::Option* option : optionsOf(app)) {
        for (const auto& name : option->get_lnames())
            all.push_back({"--" + name, option->get_description()});
    }
    return all;
}

}  // namespace

std::vector<Candidate> completions(const CLI::App& root, const std::vector<std::string>& words,
                                   const ArgumentValues& values) {
    const std::string begun = words.empty() ? "" : words.back();
    const Place place = placeOfLast(root, words);
    std::vector<Candidate> candidates;
    if (place.valueOf) {
        candidates = listedValues(*place.valueOf);
    } else if (begun.starts_with('-')) {
        candidates = optionCandidates(*place.app);
    } else {
        for (const CLI::App* below : commandsOf(*place.app))
            candidates.push_back({below->get_name(), below->get_description()});
        if (const CLI::Option* argument = positional(*place.app, place.argument)) {
            for (auto& value : values(place.command, argument->get_name(true)))
                candidates.push_back(std::move(value));
        }
    }
    std::erase_if(candidates, [&](const Candidate& one) { return !one.word.starts_with(begun); });
    return candidates;
}

ExitCode printCompletions(const std::vector<std::string>& words,
                          const std::vector<std::unique_ptr<Command>>& commands, const char* program) {
    CommandLine line;
    CLI::App root;
    declareCommands(root, line, commands);
    const ArgumentCandidates arguments(program);
    for (const auto& one : completions(root, words, [&](std::string_view command, std::string_view argument) {
             return arguments.of(command, argument);
         })) {
        std::cout << one.word << '\t' << one.meaning << '\n';
    }
    return ExitCode::done;
}

}  // namespace hbr
