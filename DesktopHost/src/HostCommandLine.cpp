#include "HostCommandLine.h"

#include <CommandLine/CommandParts.h>
#include <CommandLine/HelpStyle.h>
#include <TimeAndText/NearestName.h>
#include <CLI/CLI.hpp>

#include <algorithm>

namespace hbr {

namespace {

constexpr const char* examples =
    "WIDGET is countdown, upcoming or current; FAMILY is small, medium or large.\n\n"
    "Examples:\n"
    "  heedbanner-desktop upcoming:large\n"
    "      puts the upcoming events on the desktop, unless they are there, and shows all widgets\n"
    "  heedbanner-desktop --add countdown:small --at bottom-end\n"
    "      adds a widget, also while another heedbanner-desktop runs\n"
    "  heedbanner-desktop --focus upcoming\n"
    "      lifts the widgets with the keyboard until Escape, for a key of your desktop\n";

/// An option that the program does not have, by what CLI11 left over.
std::optional<std::string> unknownOption(const CLI::App& app, const std::vector<std::string>& arguments) {
    std::vector<std::string> names;
    for (const CLI::Option* option : platform::optionsOf(app)) {
        for (const std::string& name : option->get_lnames())
            names.push_back("--" + name);
    }
    for (const std::string& argument : arguments) {
        if (!argument.starts_with("--")) continue;
        const std::string name = argument.substr(0, argument.find('='));
        if (std::ranges::find(names, name) == names.end())
            return "unknown option " + name + platform::proposal(name, names);
    }
    return std::nullopt;
}

}  // namespace

HostCommandLine readHostCommandLine(const std::vector<std::string>& arguments, std::string_view version) {
    HostRequest request;
    bool isWithoutColor = false;
    bool wantsGallery = false;
    bool wantsList = false;
    bool wantsQuit = false;
    std::string added;

    CLI::App app("Puts the Heedbanner widgets on the desktop and tells of your events in time.",
                 "heedbanner-desktop");
    platform::setHelpStyle(app);
    app.footer(examples);
    app.add_option("WIDGET:FAMILY", request.widgets,
                   "Widgets to show; else those that are placed, else the gallery");
    const auto inGroup = [&](const char* group, CLI::Option* option) { return option->group(group); };

    constexpr const char* placing = "Placing widgets";
    auto* gallery =
        inGroup(placing, app.add_flag("--gallery", wantsGallery, "Show all widgets to choose from"));
    auto* list = inGroup(placing, app.add_flag("--list", wantsList, "List the widgets that are placed"));
    inGroup(placing, app.add_flag("--json", request.wantsJson, "With --list: answer in JSON"));
    auto* add =
        inGroup(placing, app.add_option("--add", added, "Place a widget"))->type_name("WIDGET:FAMILY");
    inGroup(placing, app.add_option("--at", request.corner,
                                    "With --add: top-start, top-end, bottom-start or bottom-end"))
        ->type_name("CORNER")
        ->needs(add)
        ->check(CLI::IsMember({"top-start", "top-end", "bottom-start", "bottom-end"}));
    inGroup(placing,
            app.add_option("--output", request.output, "With --add: the screen, as the desktop names it"))
        ->type_name("NAME")
        ->needs(add);
    auto* remove = inGroup(placing, app.add_option("--remove", request.removed,
                                                   "Take a widget of the list away, or all of them"))
                       ->type_name("N|all");

    constexpr const char* running = "To the one that runs";
    auto* focus =
        inGroup(running, app.add_option("--focus", request.focused,
                                        "Lift the widgets with the keyboard until Escape, WIDGET first"))
            ->type_name("WIDGET")
            ->expected(0, 1);
    auto* quit = inGroup(running, app.add_flag("--quit", wantsQuit, "End it"));
    const std::vector<CLI::Option*> tasks = {gallery, list, add, remove, focus, quit};
    for (CLI::Option* one : tasks) {
        for (CLI::Option* other : tasks) {
            if (one != other) one->excludes(other);
        }
    }

    app.set_version_flag("-V,--version", "heedbanner-desktop " + std::string(version))
        ->description("Show the version")
        ->group(platform::generalOptions);
    inGroup(platform::generalOptions,
            app.add_flag("-v,--verbose", request.isVerbose, "Say everything on standard error"));
    inGroup(platform::generalOptions, app.add_flag("--no-color", isWithoutColor, "Plain text"));
    inGroup(platform::generalOptions,
            app.add_option("--log", request.log, "Write a log to FILE, - for standard error"))
        ->type_name("FILE");
    // For the session bus's service file only; a group without a name is left out of the help.
    inGroup("", app.add_flag("--service", request.isService));

    try {
        // CLI11 takes the words from the back.
        app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
    } catch (const CLI::CallForVersion& text) {
        return {.request = std::nullopt, .text = text.what() + std::string("\n")};
    } catch (const CLI::CallForHelp&) {
        return {.request = std::nullopt, .text = app.help()};
    } catch (const CLI::ParseError& error) {
        const auto option = unknownOption(app, arguments);
        return {.request = std::nullopt,
                .status = ExitStatus::wrongUsage,
                .text = option.value_or(error.what()) + "; see --help"};
    }

    using Task = HostRequest::Task;
    if (wantsGallery) request.task = Task::gallery;
    if (wantsList) request.task = Task::list;
    if (wantsQuit) request.task = Task::quit;
    if (remove->count() > 0) request.task = Task::remove;
    if (focus->count() > 0) request.task = Task::focus;
    const auto refuse = [](std::string text) {
        return HostCommandLine{.request = std::nullopt,
                               .status = ExitStatus::wrongUsage,
                               .text = std::move(text) + "; see --help"};
    };
    if (request.task != Task::show && !request.widgets.empty())
        return refuse("\"" + request.widgets.front() + "\" does not belong to " + arguments.front());
    if (add->count() > 0) {
        if (!request.widgets.empty()) return refuse("--add takes one widget");
        request.task = Task::add;
        request.widgets = {added};
    }
    if (request.wantsJson && request.task != Task::list) return refuse("--json belongs to --list");
    return {.request = std::move(request), .text = {}};
}

}  // namespace hbr
