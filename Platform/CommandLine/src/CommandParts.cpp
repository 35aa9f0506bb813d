#include <CommandLine/CommandParts.h>

#include <CLI/App.hpp>

namespace platform {

namespace {

std::vector<const CLI::App*> below(const CLI::App& app, bool areCommands) {
    return app.get_subcommands(
        [areCommands](const CLI::App* one) { return one->get_name().empty() != areCommands; });
}

}  // namespace

std::vector<const CLI::Option*> optionsOf(const CLI::App& app) {
    std::vector<const CLI::Option*> options = app.get_options();
    for (const CLI::App* group : below(app, false)) {
        const auto more = optionsOf(*group);
        options.insert(options.end(), more.begin(), more.end());
    }
    return options;
}

std::vector<const CLI::App*> commandsOf(const CLI::App& app) {
    return below(app, true);
}

}  // namespace platform
