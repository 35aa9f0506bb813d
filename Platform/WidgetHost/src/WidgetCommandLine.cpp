#include <WidgetHost/WidgetCommandLine.h>

#include <CommandLine/HelpStyle.h>
#include <TimeAndText/NearestName.h>
#include <Values/JsonText.h>
#include <CLI/CLI.hpp>

#include <algorithm>
#include <charconv>
#include <optional>
#include <ostream>
#include <utility>

#include "CommandFailure.h"
#include "RenderCommand.h"
#include "WidgetSession.h"

namespace platform {

namespace {

struct Arguments {
    bool isVerbose = false;
    bool isWithoutColor = false;
    std::optional<std::string> now;
    bool wantsJson = false;
    std::string widget;
    RenderOptions render;
};

JsonValue familiesJson(const StaticConfiguration& widget) {
    JsonValue json = JsonValue::array();
    for (WidgetFamily family : widget.families())
        json.append(nameOf(family));
    return json;
}

void writeDocument(std::ostream& out, const JsonValue& json) {
    out << writeJson(json, 2) << '\n';
}

void gallery(const WidgetSession& session, bool wantsJson, std::ostream& out) {
    const WidgetBundle& bundle = session.bundle();
    JsonValue json = JsonValue::array();
    for (const StaticConfiguration& widget : session.widgets()) {
        const std::string name = bundle.localizedText(widget.displayNameKey());
        const std::string description = bundle.localizedText(widget.descriptionKey());
        JsonValue object = JsonValue::object();
        object.set("kind", widget.kind())
            .set("name", name)
            .set("description", description)
            .set("families", familiesJson(widget));
        json.append(std::move(object));
        if (wantsJson) continue;
        out << bundle.shortName(widget.kind()) << ": " << name << ". " << description << " (";
        const char* separator = "";
        for (WidgetFamily family : widget.families())
            out << std::exchange(separator, ", ") << nameOf(family);
        out << ")\n";
    }
    if (wantsJson) writeDocument(out, json);
}

void writeEntry(const WidgetSession& session, const StaticConfiguration& widget, const WidgetEntry& entry,
                bool wantsJson, std::ostream& out) {
    if (!wantsJson) {
        out << entry.text(*session.environment()) << '\n';
        return;
    }
    JsonValue json = JsonValue::object();
    json.set("kind", widget.kind()).set("entry", entry.json());
    writeDocument(out, json);
}

void timeline(const WidgetSession& session, const StaticConfiguration& widget, bool wantsJson,
              std::ostream& out) {
    const WidgetTimeline timeline = session.timeline(widget, WidgetFamily::systemMedium);
    if (!wantsJson) {
        for (const WidgetEntry& entry : timeline.entries)
            out << entry.text(*session.environment()) << '\n';
        out << "next: " << formatRfc3339(timeline.policy.date) << '\n';
        return;
    }
    JsonValue entries = JsonValue::array();
    for (const WidgetEntry& entry : timeline.entries)
        entries.append(entry.json());
    JsonValue policy = JsonValue::object();
    policy.set("after", formatRfc3339(timeline.policy.date));
    JsonValue json = JsonValue::object();
    json.set("kind", widget.kind()).set("entries", std::move(entries)).set("policy", std::move(policy));
    writeDocument(out, json);
}

EnvironmentRef withClock(const EnvironmentRef& environment, const std::optional<std::string>& now) {
    if (!now) return environment;
    const auto moment = parseRfc3339(*now);
    if (!moment) {
        throw CommandFailure(exitStatus::wrongUsage,
                             "--now: \"" + *now + "\" is not a time like 2026-03-04T09:30:00+01:00");
    }
    auto frozen = std::make_shared<Environment>(*environment);
    frozen->clock = [moment = *moment] { return moment; };
    return frozen;
}

/// What is wrong with it. Rejects "nan", which passes range comparisons.
std::string wrongScale(const std::string& text) {
    double scale = 0;
    const char* end = text.data() + text.size();
    const auto [last, error] = std::from_chars(text.data(), end, scale);
    if (error == std::errc() && last == end && scale >= 0.5 && scale <= 4) return {};
    return text + " is not a number from 0.5 to 4";
}

void addRenderOptions(CLI::App& command, RenderOptions& options) {
    command.add_option("--family", options.family, "small, medium or large")
        ->type_name("FAMILY")
        ->capture_default_str();
    command.add_option("--entry", options.entry, "Which entry of the timeline")
        ->type_name("N")
        ->capture_default_str();
    command.add_option("--scale", options.scale, "Pixels a point, 0.5 to 4")
        ->type_name("S")
        ->check(wrongScale)
        ->capture_default_str();
    command.add_option("--appearance", options.appearance, "light or dark")
        ->type_name("WORD")
        ->check(CLI::IsMember({"light", "dark"}))
        ->capture_default_str();
    command.add_option("--contrast", options.contrast, "normal or high")
        ->type_name("WORD")
        ->check(CLI::IsMember({"normal", "high"}))
        ->capture_default_str();
    command.add_flag("--demo", options.isDemonstration, "Draw demonstration events; touch no setting");
    command
        .add_option("--format", options.format,
                    "png, svg, pdf, json or text; else by FILE's ending, else png")
        ->type_name("FORMAT")
        ->check(CLI::IsMember({"png", "svg", "pdf", "json", "text"}));
    command.add_option("-o,--output", options.output, "Write to FILE instead of standard output")
        ->type_name("FILE");
}

std::string footer(const WidgetCommandLine::Program& program) {
    std::string text = "Examples:\n";
    for (const auto& [line, effect] : program.examples)
        text += "  " + line + "\n      " + effect + "\n";
    return text;
}

void addGeneralOptions(CLI::App& app, const WidgetCommandLine::Program& program, Arguments& arguments) {
    setHelpStyle(app);
    app.footer(footer(program));
    app.require_subcommand(1);
    app.fallthrough();
    app.set_version_flag("-V,--version", program.name + " " + program.version)
        ->description("Show the version")
        ->group(generalOptions);
    app.add_flag("-v,--verbose", arguments.isVerbose, "Say everything on standard error")
        ->group(generalOptions);
    app.add_flag("--no-color", arguments.isWithoutColor, "Plain text")->group(generalOptions);
    app.add_option("--now", arguments.now, "Take this time (RFC 3339) for the clock's")
        ->type_name("TIME")
        ->group(generalOptions);
}

void addCommands(CLI::App& app, Arguments& arguments) {
    CLI::App* gallery = app.add_subcommand("gallery", "The widgets that there are");
    CLI::App* placeholder = app.add_subcommand("placeholder", "What a widget shows while nothing is known");
    CLI::App* snapshot = app.add_subcommand("snapshot", "What a widget shows now");
    CLI::App* timeline = app.add_subcommand("timeline", "What a widget shows from now on, and until when");
    CLI::App* render = app.add_subcommand("render", "Draw one entry of a widget's timeline");
    for (CLI::App* command : {placeholder, snapshot, timeline, render})
        command->add_option("WIDGET", arguments.widget, "Short name of a widget, or its kind")->required();
    for (CLI::App* command : {gallery, placeholder, snapshot, timeline})
        command->add_flag("--json", arguments.wantsJson, "Answer in JSON");
    addRenderOptions(*render, arguments.render);
}

void runCommand(const CLI::App& app, const WidgetSession& session, const Arguments& given,
                std::ostream& out) {
    if (app.got_subcommand("gallery")) return gallery(session, given.wantsJson, out);
    const StaticConfiguration widget = session.widget(given.widget);
    if (app.got_subcommand("placeholder"))
        return writeEntry(session, widget, session.placeholder(widget), given.wantsJson, out);
    if (app.got_subcommand("snapshot"))
        return writeEntry(session, widget, session.snapshot(widget), given.wantsJson, out);
    if (app.got_subcommand("timeline")) return timeline(session, widget, given.wantsJson, out);
    render(session, widget, given.render, out);
}

std::vector<std::string> commandNames(const CLI::App& app) {
    std::vector<std::string> names;
    for (const CLI::App* command : app.get_subcommands({}))
        names.push_back(command->get_name());
    return names;
}

/// What to say of a first word that is not a command.
std::optional<std::string> unknownCommand(const CLI::App& app, const std::vector<std::string>& arguments) {
    const auto names = commandNames(app);
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& word = arguments[i];
        if (word == "--now") {
            ++i;
        } else if (!word.starts_with('-')) {
            if (std::ranges::find(names, word) != names.end()) break;
            return "unknown command \"" + word + "\"" + proposal(word, names);
        }
    }
    return std::nullopt;
}

void writeDiagnostics(const Environment& environment, bool isVerbose, std::ostream& err) {
    const auto* collected = dynamic_cast<const CollectedDiagnostics*>(environment.diagnostics.get());
    if (!collected) return;
    for (const Diagnostic& diagnostic : collected->all()) {
        if (!isVerbose && diagnostic.severity == Diagnostic::Severity::info) continue;
        err << environment.programName << ": " << describe(diagnostic) << '\n';
    }
}

}  // namespace

WidgetCommandLine::WidgetCommandLine(Program program, std::shared_ptr<const Environment> environment,
                                     std::ostream& out, std::ostream& err)
    : program_(std::move(program)), environment_(std::move(environment)), out_(out), err_(err) {}

int WidgetCommandLine::run(const std::vector<std::string>& arguments) {
    const auto complain = [this](const std::string& message) {
        err_ << program_.name << ": " << message << '\n';
    };
    Arguments given;
    CLI::App app(program_.summary, program_.name);
    addGeneralOptions(app, program_, given);
    addCommands(app, given);
    for (CLI::App* part : app.get_subcommands({}))
        part->footer(footer(program_));
    try {
        // CLI11 takes the words from the back.
        app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
    } catch (const CLI::CallForVersion& version) {
        out_ << version.what() << '\n';
        return exitStatus::done;
    } catch (const CLI::CallForHelp&) {
        out_ << app.help();
        return exitStatus::done;
    } catch (const CLI::ParseError& error) {
        complain(unknownCommand(app, arguments).value_or(error.what()) + "; see --help");
        return exitStatus::wrongUsage;
    }

    int status = exitStatus::done;
    try {
        const WidgetSession session(program_, withClock(environment_, given.now),
                                    given.render.isDemonstration);
        runCommand(app, session, given, out_);
        out_.flush();
        if (!out_) throw CommandFailure(exitStatus::failed, "standard output cannot be written");
    } catch (const CommandFailure& failure) {
        complain(failure.what());
        status = failure.status();
    } catch (const std::exception& problem) {
        complain(problem.what());
        status = exitStatus::failed;
    }
    writeDiagnostics(*environment_, given.isVerbose, err_);
    return status;
}

}  // namespace platform
