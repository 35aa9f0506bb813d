#include "HostCommandLine.h"

#include <CommandLine/CommandParts.h>
#include <CommandLine/HelpStyle.h>
#include <TimeAndText/NearestName.h>
#include <CLI/CLI.hpp>

#include <algorithm>
#include <utility>

namespace hbr {

namespace {

using Task = HostRequest::Task;

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

HostCommandLine wrongUsage(const std::string& text) {
    return {.request = std::nullopt, .status = ExitStatus::wrongUsage, .text = text + "; see --help"};
}

/// The options of the program, and the request that they write to.
class HostOptions {
  public:
    explicit HostOptions(std::string_view version) {
        platform::setHelpStyle(app_);
        app_.footer(examples);
        app_.add_option("WIDGET:FAMILY", request_.widgets,
                        "Widgets to show; else those that are placed, else the gallery");
        addPlacing();
        addRunning();
        addGeneral(version);
        for (const auto& [one, task] : tasks_) {
            for (const auto& [other, otherTask] : tasks_) {
                if (one != other) one->excludes(other);
            }
        }
    }

    HostCommandLine read(const std::vector<std::string>& arguments) {
        try {
            // CLI11 takes the words from the back.
            app_.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
        } catch (const CLI::CallForVersion& text) {
            return {.request = std::nullopt, .text = text.what() + std::string("\n")};
        } catch (const CLI::CallForHelp&) {
            return {.request = std::nullopt, .text = app_.help()};
        } catch (const CLI::ParseError& error) {
            return wrongUsage(unknownOption(app_, arguments).value_or(error.what()));
        }
        for (const auto& [option, task] : tasks_) {
            if (option->count() > 0) request_.task = task;
        }
        if (request_.task == Task::add) {
            if (!request_.widgets.empty()) return wrongUsage("--add takes one widget");
            request_.widgets = {added_};
        } else if (request_.task != Task::show && !request_.widgets.empty()) {
            return wrongUsage("\"" + request_.widgets.front() + "\" does not belong to " + arguments.front());
        }
        if (request_.wantsJson && request_.task != Task::list) return wrongUsage("--json belongs to --list");
        return {.request = std::move(request_), .text = {}};
    }

  private:
    void addPlacing() {
        constexpr const char* group = "Placing widgets";
        addTask(Task::gallery, addFlag("--gallery", "Show all widgets to choose from"), group);
        addTask(Task::list, addFlag("--list", "List the widgets that are placed"), group);
        app_.add_flag("--json", request_.wantsJson, "With --list: answer in JSON")->group(group);
        auto* add = addTask(Task::add, app_.add_option("--add", added_, "Place a widget"), group);
        add->type_name("WIDGET:FAMILY");
        app_.add_option("--at", request_.corner, "With --add: top-start, top-end, bottom-start or bottom-end")
            ->group(group)
            ->type_name("CORNER")
            ->needs(add)
            ->check(CLI::IsMember({"top-start", "top-end", "bottom-start", "bottom-end"}));
        app_.add_option("--output", request_.output, "With --add: the screen, as the desktop names it")
            ->group(group)
            ->type_name("NAME")
            ->needs(add);
        addTask(
            Task::remove,
            app_.add_option("--remove", request_.removed, "Take a widget of the list away, or all of them"),
            group)
            ->type_name("N|all");
    }

    void addRunning() {
        constexpr const char* group = "To the one that runs";
        addTask(Task::focus,
                app_.add_option("--focus", request_.focused,
                                "Lift the widgets with the keyboard until Escape, WIDGET first"),
                group)
            ->type_name("WIDGET")
            ->expected(0, 1);
        addTask(Task::quit, addFlag("--quit", "End it"), group);
    }

    void addGeneral(std::string_view version) {
        const char* group = platform::generalOptions;
        app_.set_version_flag("-V,--version", "heedbanner-desktop " + std::string(version))
            ->description("Show the version")
            ->group(group);
        app_.add_flag("-v,--verbose", request_.isVerbose, "Say everything on standard error")->group(group);
        addFlag("--no-color", "Plain text")->group(group);
        app_.add_option("--log", request_.log, "Write a log to FILE, - for standard error")
            ->group(group)
            ->type_name("FILE");
        // For the session bus's service file only; a group without a name is left out of the help.
        app_.add_flag("--service", request_.isService)->group("");
    }

    CLI::Option* addFlag(const std::string& name, const std::string& description) {
        return app_.add_flag(name, description)->disable_flag_override();
    }

    /// The tasks exclude each other.
    CLI::Option* addTask(Task task, CLI::Option* option, const char* group) {
        tasks_.emplace_back(option, task);
        return option->group(group);
    }

    CLI::App app_{"Puts the Heedbanner widgets on the desktop and reminds you of your events in time.",
                  "heedbanner-desktop"};
    HostRequest request_;
    std::string added_;
    std::vector<std::pair<CLI::Option*, Task>> tasks_;
};

}  // namespace

HostCommandLine readHostCommandLine(const std::vector<std::string>& arguments, std::string_view version) {
    return HostOptions(version).read(arguments);
}

}  // namespace hbr
