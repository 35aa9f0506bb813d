#include "Framework/CommandWithActions.h"
#include "Framework/ProgramDiagnostics.h"
#include "Settings/SettingCatalogue.h"

#include <Session/CommandContext.h>
#include <System/Files.h>
#include <Values/JsonText.h>
#include <Words/CompanionText.h>
#include <Words/OneLine.h>
#include <CLI/App.hpp>

#include <algorithm>
#include <iostream>
#include <iterator>

namespace hbr {

namespace {

std::string shown(const platform::JsonValue& value) {
    const auto* list = value.asArray();
    const bool isPlainList =
        list && std::none_of(list->begin(), list->end(), [](const auto& one) { return one.asObject(); });
    if (!isPlainList) return value.asString() ? *value.asString() : writeJson(value);
    std::string text;
    for (const auto& one : *list)
        text += (text.empty() ? "" : ",") + shown(one);
    return text;
}

/// Every setting by its property name.
class SettingsCommand final : public CommandWithActions<SettingsCommand> {
  public:
    SettingsCommand() : CommandWithActions(&SettingsCommand::list) {}

    std::string_view name() const override { return "settings"; }
    std::string_view group() const override { return commandGroup::choices; }
    std::string_view summary() const override { return "Look at and change every setting"; }
    std::string_view examples() const override {
        return "  heedbanner settings list                       all settings and what they mean\n"
               "  heedbanner settings set timeOffsetSeconds 5m   alert five minutes before the start\n"
               "  heedbanner settings export settings.json       and later: settings import settings.json";
    }

    bool readsCalendars() const override { return false; }

    void declare(CLI::App& app) override {
        app.require_subcommand(0, 1);
        app.add_subcommand("list", "All settings, their values and what they mean");
        auto* get = add(app, "get", "Print one value", &SettingsCommand::get);
        get->add_option("NAME", name_, "The setting's name")->type_name("")->required();
        auto* set = add(app, "set", "Change one value", &SettingsCommand::set);
        set->add_option("NAME", name_, "The setting's name")->type_name("")->required();
        set->add_option("VALUE", value_, "Its new value; seconds also as 90s or 5m")
            ->type_name("")
            ->required();
        auto* reset = add(app, "reset", "Back to the default", &SettingsCommand::reset);
        reset->add_option("NAME", names_, "The settings' names")->type_name("");
        reset->add_flag("--all", all_, "Every setting");
        auto* exporting = add(app, "export", "Write all settings as JSON", &SettingsCommand::exportAll);
        exporting->add_option("FILE", file_, "Where to, standard output when left out")->type_name("");
        auto* importing = add(app, "import", "Import settings from such JSON: all of them, or none",
                              &SettingsCommand::importAll);
        importing->add_option("FILE", file_, "Where from, standard input when left out")->type_name("");
    }

    ExitCode run(CommandContext& context) override {
        try {
            return CommandWithActions::run(context);
        } catch (const SettingRefusal& refusal) {
            throw CommandFailure(ExitCode::wrongUsage, refusal.text(*context.environment()));
        }
    }

  private:
    ExitCode list(CommandContext& context) {
        const Console& console = context.console();
        const platform::Environment& environment = *context.environment();
        const UserSettingsStore& settings = context.core().settings();
        for (const auto& entry : settingCatalogue()) {
            console.out() << console.bold(entry.name) << " = " << onOneLine(shown(entry.read(settings)))
                          << (entry.isStored(settings)
                                  ? ""
                                  : console.faint("  " + companionText(environment, "Settings.default")))
                          << "\n"
                          << console.faint("    " + entry.meaning(environment) + ": " +
                                           entry.takes(environment))
                          << "\n";
        }
        reportUnreadable(context);
        return ExitCode::done;
    }

    ExitCode get(CommandContext& context) {
        const SettingEntry& entry = settingNamed(name_, *context.environment());
        context.console().out() << shown(entry.read(context.core().settings())) << "\n";
        reportUnreadable(context);
        return ExitCode::done;
    }

    ExitCode set(CommandContext& context) {
        const SettingEntry& entry = settingNamed(name_, *context.environment());
        const auto value = entry.parse(value_);
        entry.check(value);
        const SettingChanges changes = {{&entry, value}};
        apply(context, changes);
        const UserSettingsStore& settings = context.core().settings();
        context.console().out() << entry.name << " = " << onOneLine(shown(entry.read(settings))) << "\n";
        warnAboutLongLead(context, changes);
        return ExitCode::done;
    }

    ExitCode reset(CommandContext& context) {
        if (names_.empty() != all_) {
            throw CommandFailure(
                ExitCode::wrongUsage,
                companionText(*context.environment(), "Collections.giveNames", {"settings reset"}));
        }
        SettingChanges changes;
        for (const auto& name : names_)
            changes.emplace_back(&settingNamed(name, *context.environment()), std::nullopt);
        for (const auto& entry : settingCatalogue()) {
            if (all_) changes.emplace_back(&entry, std::nullopt);
        }
        const UserSettingsStore& settings = context.core().settings();
        const bool watchedAny = !settings.activeCalendarIdentifiers().empty();
        apply(context, changes);
        for (const auto& [entry, value] : changes) {
            context.console().out() << entry->name << " = " << onOneLine(shown(entry->read(settings)))
                                    << "\n";
        }
        if (watchedAny && settings.activeCalendarIdentifiers().empty()) {
            context.console().out().flush();
            context.console().complain(companionText(*context.environment(), "Settings.noneWatched"));
        }
        return ExitCode::done;
    }

    ExitCode exportAll(CommandContext& context) {
        const UserSettingsStore& settings = context.core().settings();
        auto all = platform::JsonValue::object();
        for (const auto& entry : settingCatalogue())
            all.set(entry.name, entry.read(settings));
        reportUnreadable(context);
        const std::string text = writeJson(all, 2) + "\n";
        if (file_ == "-") {
            context.console().out() << text;
            return ExitCode::done;
        }
        std::error_code error;
        if (!platform::writeFileAtomically(file_, text, 0600, error)) {
            throw CommandFailure(ExitCode::failed, file_ + ": " + error.message());
        }
        return ExitCode::done;
    }

    ExitCode importAll(CommandContext& context) {
        const platform::Environment& environment = *context.environment();
        const std::string place = file_ == "-" ? companionText(environment, "Settings.standardInput") : file_;
        const auto all = platform::parseJson(readInput());
        if (!all || !all->asObject())
            throw CommandFailure(ExitCode::failed,
                                 place + ": " + companionText(environment, "Settings.noObject"));
        SettingChanges changes;
        for (const auto& [name, value] : *all->asObject()) {
            try {
                const SettingEntry& entry = settingNamed(name, environment);
                entry.check(value);
                changes.emplace_back(&entry, value);
            } catch (const SettingRefusal& refusal) {
                refuseImport(environment, place, refusal.text(environment));
            } catch (const std::exception& failure) {
                refuseImport(environment, place, failure.what());
            }
        }
        apply(context, changes);
        context.console().out() << companionText(environment, "Settings.imported",
                                                 {static_cast<std::int64_t>(changes.size()), place})
                                << "\n";
        warnAboutLongLead(context, changes);
        return ExitCode::done;
    }

    [[noreturn]] static void refuseImport(const platform::Environment& environment, const std::string& place,
                                          const std::string& reason) {
        throw CommandFailure(ExitCode::failed,
                             companionText(environment, "Settings.importRefused", {place, reason}));
    }

    std::string readInput() const {
        if (file_ == "-") return {std::istreambuf_iterator<char>(std::cin), {}};
        std::error_code error;
        auto text = platform::readRegularFile(file_, error);
        if (!text) throw CommandFailure(ExitCode::failed, file_ + ": " + error.message());
        return *std::move(text);
    }

    static void apply(CommandContext& context, const SettingChanges& changes) {
        if (applyChanges(context.core().settings(), changes)) return;
        const auto folder = context.core().sharedDomain()->file().parent_path();
        std::string reason =
            folder.string() + ": " + companionText(*context.environment(), "Accounts.notWritten");
        const auto& sink = context.environment()->diagnostics;
        for (const auto& diagnostic : std::static_pointer_cast<ProgramDiagnostics>(sink)->all()) {
            if (diagnostic.file.parent_path() == folder) reason = describe(diagnostic);
        }
        throw CommandFailure(ExitCode::failed, reason);
    }

    /// Only events within the next hour can be pending.
    static void warnAboutLongLead(CommandContext& context, const SettingChanges& changes) {
        const bool setsLead = std::ranges::any_of(changes, [](const auto& change) {
            return change.first->name == SettingsTable::timeOffsetSeconds.name;
        });
        if (!setsLead) return;
        const UserSettingsStore& settings = context.core().settings();
        if (static_cast<double>(settings.timeOffsetSeconds()) <= AggregatedEventStore::pendingWindow) return;
        context.console().complain(companionText(*context.environment(), "Settings.longLead"));
    }

    static void reportUnreadable(CommandContext& context) {
        for (const auto& diagnostic : unreadableSettings(context.core().settings(), *context.environment())) {
            context.environment()->diagnostics->report(diagnostic);
        }
    }

    std::string name_;
    std::string value_;
    std::vector<std::string> names_;
    std::string file_ = "-";
    bool all_ = false;
};

}  // namespace

std::unique_ptr<Command> makeSettingsCommand() {
    return std::make_unique<SettingsCommand>();
}

}  // namespace hbr
