#include "Alerts/ReminderText.h"
#include "Framework/Command.h"
#include "Status/StatusFollower.h"

#include <Session/CommandContext.h>
#include <Words/CompanionText.h>
#include <Words/NameProposal.h>
#include <Words/OneLine.h>
#include <Words/TextColumns.h>
#include <CLI/App.hpp>
#include <CLI/Validators.hpp>

#include <map>

namespace hbr {

namespace {

/// One line for the bar of a desktop.
class StatusCommand final : public Command {
  public:
    std::string_view name() const override { return "status"; }
    std::string_view group() const override { return commandGroup::everyDay; }
    std::string_view summary() const override {
        return "One line for a bar: what is about to begin, under way, or next";
    }
    std::string_view examples() const override { return examples_; }

    bool asksForAccess() const override { return false; }

    void declare(CLI::App& app) override {
        app.add_option_function<std::string>(
               "--format", [this](const std::string& name) { options_.format = formats().at(name); },
               "plain (if not given), waybar, i3blocks or json")
            ->type_name("FORMAT")
            ->check(CLI::IsMember(&formats()));
        app.add_option("--template", template_, "The line, with placeholders (below)")->type_name("TEXT");
        app.add_option("--within", within_, "Print nothing about events that begin later than that (30m, 2h)")
            ->type_name("DURATION");
        app.add_option("--max-length", options_.maxLength,
                       "Shorten the title so that the line has that many characters")
            ->type_name("N")
            ->check(CLI::Range(1, 1000));
        app.add_flag("--follow", options_.follows, "Keep running, and print the line whenever it changes");
    }

    bool isLongLived() const override { return options_.follows; }

    ExitCode run(CommandContext& context) override {
        if (!template_.empty()) readTemplate(*context.environment());
        std::optional<double> within;
        if (!within_.empty())
            within =
                static_cast<double>(secondsOfOption("status: --within", within_, *context.environment()));
        if (options_.follows) {
            followStatus(context, options_, within);
        } else {
            reloadAndWait(context.core());
            const Status status = currentStatus(context.core(), within);
            context.console().out() << statusOutput(status, options_, context.core()) << "\n";
        }
        return ExitCode::done;
    }

  private:
    static const std::map<std::string, StatusFormat>& formats() {
        static const std::map<std::string, StatusFormat> all = {{"plain", StatusFormat::plain},
                                                                {"waybar", StatusFormat::waybar},
                                                                {"i3blocks", StatusFormat::i3blocks},
                                                                {"json", StatusFormat::json}};
        return all;
    }

    static std::string exampleText() {
        std::string text =
            "  heedbanner status                               \"Standup · in 9 m\", or an empty line\n"
            "  heedbanner status --format waybar --follow\n"
            "  heedbanner status --template \"{start} {title}\" --max-length 30\n\n"
            "Placeholders of --template ({{ is a brace):\n";
        for (const auto& one : StatusTemplate::placeholders()) {
            text += "  " + padded("{" + std::string(one.name) + "}", 13) + std::string(one.meaning) + "\n";
        }
        text.pop_back();
        return text;
    }

    void readTemplate(const platform::Environment& environment) {
        try {
            options_.line = StatusTemplate(onOneLine(template_));
        } catch (const TemplateError& error) {
            const bool isUnclosed = error.kind == TemplateError::Kind::unclosedBrace;
            const char* key = isUnclosed ? "Status.template.unclosed" : "Status.template.unknown";
            std::vector<std::string> names;
            for (const auto& one : StatusTemplate::placeholders())
                names.emplace_back(one.name);
            throw CommandFailure(ExitCode::wrongUsage,
                                 companionText(environment, key, {error.text}) +
                                     (isUnclosed ? "" : nameProposal(environment, error.text, names)));
        }
    }

    const std::string examples_ = exampleText();
    StatusOptions options_;
    std::string template_;
    std::string within_;
};

}  // namespace

std::unique_ptr<Command> makeStatusCommand() {
    return std::make_unique<StatusCommand>();
}

}  // namespace hbr
