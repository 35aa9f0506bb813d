#include <CommandLine/HelpStyle.h>

#include <CommandLine/CommandParts.h>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <memory>
#include <string>

namespace platform {

namespace {

/// More would not fit a line.
constexpr std::ptrdiff_t mostOptionsInUsage = 6;

bool isShownInUsage(const CLI::Option& option) {
    const std::string& group = option.get_group();
    return option.nonpositional() && group != generalOptions && !group.empty();
}

class HelpText : public CLI::Formatter {
  public:
    HelpText() {
        column_width(34);
        label("REQUIRED", "");
    }

    std::string make_help(const CLI::App* app, std::string name, CLI::AppFormatMode mode) const override {
        // Of one among a list of commands; none of ours is shown whole there.
        if (mode == CLI::AppFormatMode::Sub) return make_expanded(app);
        std::string text = make_description(app) + make_usage(app, std::move(name)) + make_positionals(app) +
                           make_subcommands(app, mode) + groupsOf(app) + "\n" + make_footer(app);
        // CLI11 sets groups apart by two empty lines.
        for (auto at = text.find("\n\n\n"); at != std::string::npos; at = text.find("\n\n\n", at))
            text.erase(at, 1);
        return text;
    }

    std::string make_usage(const CLI::App* app, std::string name) const override {
        std::string usage = "Usage: " + name;
        const auto options = optionsOf(*app);
        const auto isShown = [](const CLI::Option* option) { return isShownInUsage(*option); };
        if (std::ranges::count_if(options, isShown) > mostOptionsInUsage) {
            usage += " [OPTION ...]";
        } else {
            for (const CLI::Option* option : options) {
                if (isShown(option)) usage += " [" + option->get_name() + optionArgument(*option) + "]";
            }
        }
        for (const CLI::Option* option : options) {
            if (!option->get_positional()) continue;
            const std::string shown =
                option->get_name(true) + (option->get_items_expected_max() > 1 ? " ..." : "");
            usage += option->get_required() ? " " + shown : " [" + shown + "]";
        }
        if (!commandsOf(*app).empty()) usage += " COMMAND ...";
        return usage + "\n";
    }

    std::string make_option_opts(const CLI::Option* option) const override { return optionArgument(*option); }

    std::string make_option_desc(const CLI::Option* option) const override {
        const std::string usual = option->get_default_str();
        return option->get_description() + (usual.empty() ? "" : "; " + usual + " unless given");
    }

  private:
    std::string groupsOf(const CLI::App* app) const {
        std::string text, general;
        auto groups = app->get_groups();
        if (!std::ranges::count(groups, generalOptions)) groups.emplace_back(generalOptions);
        for (const std::string& group : groups) {
            const auto options = app->get_options([&](const CLI::Option* option) {
                // CLI11 hands the flag on to the commands, its group not.
                const bool isHelp = option == app->get_help_ptr();
                return option->nonpositional() && group == (isHelp ? generalOptions : option->get_group());
            });
            if (group.empty() || options.empty()) continue;
            (group == generalOptions ? general : text) += make_group(group, false, options);
        }
        return text + general;
    }

    static std::string optionArgument(const CLI::Option& option) {
        if (option.get_items_expected_max() == 0 || option.get_positional()) return "";
        // Without what CLI11 adds about bounds; the descriptions say it in words.
        std::string type = option.get_type_name();
        for (const char* bounds : {":{", ":INT in "})
            type = type.substr(0, type.find(bounds));
        if (option.get_items_expected_min() == 0 && !type.empty()) type = "[" + type + "]";
        return (type.empty() ? "" : " " + type) + (option.get_items_expected_max() > 1 ? " ..." : "");
    }
};

}  // namespace

void setHelpStyle(CLI::App& program) {
    program.formatter(std::make_shared<HelpText>());
    program.group("Commands");
    program.get_formatter()->label("Positionals", "Arguments");
    program.set_help_flag("-h,--help", "Show this text")->group(generalOptions);
}

}  // namespace platform
