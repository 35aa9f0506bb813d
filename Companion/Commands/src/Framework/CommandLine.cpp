#include "Framework/CommandLine.h"

#include <CommandLine/CommandParts.h>
#include <CommandLine/HelpStyle.h>
#include <TimeAndText/NearestName.h>
#include <When/MomentText.h>
#include <CLI/CLI.hpp>

#include <iostream>

namespace hbr {

namespace {

using platform::commandsOf;
using platform::generalOptions;
using platform::optionsOf;

/// General options are declared on every command, so that they are accepted before and after its name and an
/// argument is never mistaken for a command.
void declareGeneral(CLI::App& app, GeneralOptions& general) {
    app.set_help_flag("-h,--help", "Show this text")->group(generalOptions);
    app.add_flag_callback(
           "-V,--version", [] { throw CLI::CallForVersion("heedbanner " HEEDBANNER_VERSION, 0); },
           "Show the version")
        ->group(generalOptions);
    app.add_flag("-v,--verbose", general.verbose, "Show every diagnostic on standard error")
        ->group(generalOptions);
    app.add_flag("--no-color", general.noColor, "No colours (also NO_COLOR)")->group(generalOptions);
    app.add_option_function<std::string>(
           "--now",
           [&general](const std::string& text) {
               general.now = platform::parseRfc3339(text);
               if (!general.now) {
                   throw CLI::ValidationError(
                       "--now", "\"" + text + "\" is not an RFC 3339 time (such as 2026-03-04T09:41:00Z)");
               }
           },
           "The moment to take for now (RFC 3339)")
        ->type_name("TIME")
        ->group(generalOptions);
    app.add_option("--log", general.log, "Write the log to a file, or to standard error with -")
        ->type_name("FILE")
        ->group(generalOptions);
    app.add_flag("-y,--yes", general.assumeYes, "Take the proposed answer to every question")
        ->group(generalOptions);
    app.add_flag("-n,--no-input", general.noInput, "Ask nothing")->group(generalOptions);
}

void declareGeneralBelow(CLI::App& app, GeneralOptions& general) {
    declareGeneral(app, general);
    for (CLI::App* below :
         app.get_subcommands([](const CLI::App* one) { return !one->get_name().empty(); })) {
        declareGeneralBelow(*below, general);
    }
}

const CLI::App& deepest(const CLI::App& app) {
    for (const CLI::App* below : commandsOf(app)) {
        if (below->parsed()) return deepest(*below);
    }
    return app;
}

std::vector<std::string> commandNames(const CLI::App& app) {
    std::vector<std::string> names;
    for (const CLI::App* below : commandsOf(app)) {
        names.push_back(below->get_name());
    }
    return names;
}

std::vector<std::string> optionNames(const CLI::App& app) {
    std::vector<std::string> names;
    for (const CLI::Option* option : optionsOf(app)) {
        for (const auto& name : option->get_lnames())
            names.push_back("--" + name);
        for (const auto& name : option->get_snames())
            names.push_back("-" + name);
    }
    return names;
}

std::string describe(const CLI::App& root, const CLI::ParseError& error) {
    const CLI::App& place = deepest(root);
    const std::string where = &place == &root ? "" : place.get_name() + ": ";
    const auto extras = root.remaining(true);
    if (!dynamic_cast<const CLI::ExtrasError*>(&error) || extras.empty()) return where + error.what();
    const std::string& extra = extras.front();
    if (extra.size() > 1 && extra.front() == '-') {
        const std::string name = extra.substr(0, extra.find('='));
        return where + "unknown option \"" + name + "\"" + platform::proposal(name, optionNames(place));
    }
    const auto names = commandNames(place);
    if (!names.empty()) return where + "unknown command \"" + extra + "\"" + platform::proposal(extra, names);
    return where + "\"" + extra + "\" is one argument too many";
}

void declare(CLI::App& root, Command& command, CommandLine& result) {
    CLI::App* app = root.add_subcommand(std::string(command.name()), std::string(command.summary()));
    app->group(std::string(command.group()));
    app->footer("Examples:\n" + std::string(command.examples()));
    command.declare(*app);
    declareGeneralBelow(*app, result.general);
    app->parse_complete_callback([&result, &command] { result.command = &command; });
}

}  // namespace

void declareCommands(CLI::App& root, CommandLine& result,
                     const std::vector<std::unique_ptr<Command>>& commands) {
    root.name("heedbanner");
    root.description(
        "Your next meetings, from the calendars on this computer: shows them, chooses which calendars\n"
        "the widgets watch, and explains what is wrong when something is missing.");
    platform::setHelpStyle(root);
    declareGeneral(root, result.general);
    root.require_subcommand(0, 1);
    root.footer(
        "Examples:\n"
        "  heedbanner setup ~/.calendars --email me@example.org\n"
        "  heedbanner agenda --days 2\n"
        "  heedbanner doctor\n\n"
        "heedbanner COMMAND --help describes one command.");
    for (const auto& command : commands)
        declare(root, *command, result);
}

CommandLine readCommandLine(int argc, char** argv, const std::vector<std::unique_ptr<Command>>& commands) {
    CommandLine result;
    CLI::App root;
    declareCommands(root, result, commands);

    try {
        root.parse(argc, argv);
        if (!result.command) {
            std::cerr << root.help();
            result.exitCode = ExitCode::wrongUsage;
        }
    } catch (const CLI::CallForHelp&) {
        std::cout << root.help();
        result.command = nullptr;
    } catch (const CLI::CallForVersion& version) {
        std::cout << version.what() << "\n";
        result.command = nullptr;
    } catch (const CLI::ParseError& error) {
        std::cerr << "heedbanner: " << describe(root, error) << "\n";
        result.command = nullptr;
        result.exitCode = ExitCode::wrongUsage;
    }
    return result;
}

}  // namespace hbr
