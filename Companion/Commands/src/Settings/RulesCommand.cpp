#include "Alerts/ReminderText.h"
#include "Framework/CommandWithActions.h"
#include "Settings/RuleText.h"
#include "Settings/WatchedTasks.h"

#include <Session/CommandContext.h>
#include <Words/CompanionText.h>
#include <Words/EventName.h>
#include <Words/OneLine.h>
#include <CLI/App.hpp>

#include <HbrCore/Events/EventJson.h>
#include <HbrCore/Events/EventTexts.h>
#include <HbrCore/Events/FilterRuleMatcher.h>
#include <algorithm>

namespace hbr {

namespace {

/// The exclude rules.
class RulesCommand final : public CommandWithActions<RulesCommand> {
  public:
    RulesCommand() : CommandWithActions(&RulesCommand::list) {}

    std::string_view name() const override { return "rules"; }
    std::string_view group() const override { return commandGroup::choices; }
    std::string_view summary() const override { return "Rules that leave events and tasks out"; }
    std::string_view examples() const override {
        return "  heedbanner rules add title contains Lunch\n"
               "  heedbanner rules add date isOnDayOfWeek sat,sun\n"
               "  heedbanner rules test title matches \"*1:1*\"       what this one would leave out";
    }

    bool readsCalendars() const override { return does(&RulesCommand::test); }

    void declare(CLI::App& app) override {
        constexpr SettingKind days = SettingsTable::upcomingEventsDaysFilter.kind;
        app.require_subcommand(0, 1);
        auto* listing = add(app, "list", "All rules, with their numbers and ids", &RulesCommand::list);
        listing->add_flag("--json", json_, "As JSON");
        auto* adding = add(app, "add",
                           "Add a rule: FIELD (title, notes, location, date), COMPARISON (contains, "
                           "beginsWith, endsWith, equals, matches; isOnDayOfWeek for date), VALUE",
                           &RulesCommand::addRule);
        adding->add_option("RULE", words_, "FIELD COMPARISON VALUE")->type_name("")->required();
        adding->add_flag("--ignore-case", ignoresCase_, "Letters need not match in case");
        auto* removing = add(app, "remove", "Remove rules", &RulesCommand::remove);
        removing->add_option("RULE", words_, "Numbers, ids, or beginnings of ids")->type_name("");
        removing->add_flag("--all", all_, "Every rule");
        auto* testing = add(app, "test",
                            "Which future events and tasks a rule would leave out (events under way or in "
                            "their alert period are always shown)",
                            &RulesCommand::test);
        testing
            ->add_option("RULE", words_, "A rule's number or id, or FIELD COMPARISON VALUE; else all rules")
            ->type_name("");
        testing->add_flag("--ignore-case", ignoresCase_, "Letters need not match in case");
        testing->add_option("--days", days_, "Up to the end of the day that many days after today")
            ->type_name("N")
            ->check(CLI::Range(days.first, days.last));
        testing->add_flag("--json", json_, "As JSON");
    }

  private:
    ExitCode list(CommandContext& context) {
        requireReadable(context);
        const auto rules = storedRules(context);
        const Console& console = context.console();
        if (json_) {
            console.out() << writeJson(JsonCoding<std::vector<FilterRule>>::encode(rules), 2) << "\n";
            return ExitCode::done;
        }
        for (std::size_t i = 0; i < rules.size(); ++i) {
            console.out() << i + 1 << ". " << ruleText(rules[i], *context.environment())
                          << console.faint("  " + rules[i].id.uuidString()) << "\n";
        }
        if (rules.empty()) console.err() << companionText(*context.environment(), "Rules.none") << "\n";
        return ExitCode::done;
    }

    ExitCode addRule(CommandContext& context) {
        const FilterRule rule = typedRule(words_, !ignoresCase_, *context.environment());
        requireReadable(context);
        bool isThere = false;
        const bool isStored =
            context.core().settings().updateExcludeRules([&](std::vector<FilterRule>& rules) {
                isThere = std::ranges::any_of(rules, [&](FilterRule other) {
                    other.id = rule.id;
                    return other == rule;
                });
                if (!isThere) rules.push_back(rule);
            });
        requireStored(isStored, context);
        const char* outcome = isThere ? "Rules.wasThere" : "Rules.added";
        context.console().out() << ruleText(rule, *context.environment()) << ": "
                                << companionText(*context.environment(), outcome) << "\n";
        return ExitCode::done;
    }

    ExitCode remove(CommandContext& context) {
        if (words_.empty() != all_) {
            throw CommandFailure(ExitCode::wrongUsage,
                                 companionText(*context.environment(), "Rules.nameSome"));
        }
        requireReadable(context);
        const auto before = storedRules(context);
        std::vector<FilterRule> doomed = all_ ? before : std::vector<FilterRule>{};
        for (const auto& word : words_)
            doomed.push_back(chosenRule(word, before, *context.environment()));
        const bool isStored =
            context.core().settings().updateExcludeRules([&](std::vector<FilterRule>& rules) {
                std::erase_if(rules, [&](const FilterRule& rule) {
                    return std::ranges::any_of(doomed, [&](const auto& one) { return one.id == rule.id; });
                });
            });
        requireStored(isStored, context);
        for (const auto& rule : doomed)
            context.console().out() << ruleText(rule, *context.environment()) << ": "
                                    << companionText(*context.environment(), "Rules.removed") << "\n";
        if (doomed.empty())
            context.console().err() << companionText(*context.environment(), "Rules.noneToRemove") << "\n";
        return ExitCode::done;
    }

    ExitCode test(CommandContext& context) {
        const auto rules = rulesToTest(context);
        context.requireReadableAccounts();
        CoreServices& core = context.core();
        const platform::Calendar& calendar = context.environment()->calendar;
        ReloadSettings settings = *core.manager().reloadSettings();
        if (days_) settings.days = *days_;
        const ReloadWindow window = settings.window(calendar, context.now());
        const auto events = core.aggregatedEventStore().events(window.start, window.end);
        const auto tasks = watchedTasks(context, window.start, window.end);

        std::vector<Event> leftOut;
        for (const auto& event : filteredApplyingRules(events, rules, false, calendar))
            leftOut.push_back(Event::fromCalendarEvent(*event, core.parser()));
        for (const auto& task : filteredApplyingRules(tasks, rules, false, calendar)) {
            if (auto event = Event::fromAppleReminder(*task, calendar)) leftOut.push_back(*std::move(event));
        }
        std::ranges::stable_sort(
            leftOut, {}, [](const Event& event) { return event.startDate.timeIntervalSinceReferenceDate(); });
        json_ ? printJson(context, leftOut) : printText(context, leftOut, events.size() + tasks.size());
        return ExitCode::done;
    }

    std::vector<FilterRule> rulesToTest(CommandContext& context) const {
        if (words_.size() > 1 || (words_.size() == 1 && isFieldName(words_.front()))) {
            return {typedRule(words_, !ignoresCase_, *context.environment())};
        }
        requireReadable(context);
        const auto stored = storedRules(context);
        if (words_.empty()) return stored;
        return {chosenRule(words_.front(), stored, *context.environment())};
    }

    static void printJson(CommandContext& context, const std::vector<Event>& leftOut) {
        auto array = platform::JsonValue::array();
        for (const auto& event : leftOut)
            array.append(eventJson(event));
        context.console().out() << writeJson(array, 2) << "\n";
    }

    static void printText(CommandContext& context, const std::vector<Event>& leftOut, std::size_t count) {
        const Console& console = context.console();
        for (const auto& event : leftOut) {
            console.out() << formattedStartTimeAndDate(event, context.core().formatters(), context.now())
                          << "  " << titleOf(event, *context.environment())
                          << console.faint("  [" + onOneLine(event.calendarName.value_or("")) + "]") << "\n";
        }
        console.out().flush();
        console.err() << companionText(
                             *context.environment(), "Rules.wouldLeaveOut",
                             {static_cast<std::int64_t>(leftOut.size()), static_cast<std::int64_t>(count)})
                      << "\n";
    }

    static std::vector<FilterRule> storedRules(CommandContext& context) {
        const UserSettingsStore& settings = context.core().settings();
        return settings.hasExcludeRules() ? settings.excludeRules() : std::vector<FilterRule>{};
    }

    /// A list that cannot be read is treated as empty, and a change would replace it.
    static void requireReadable(CommandContext& context) {
        const auto stored = context.core().sharedDomain()->value(SettingsTable::excludeRules.key);
        if (!stored || JsonDataCoding<SettingsTable::Rules>::decode(*stored)) return;
        throw CommandFailure(ExitCode::failed, context.core().sharedDomain()->file().string() + ": " +
                                                   companionText(*context.environment(), "Rules.unreadable"));
    }

    std::vector<std::string> words_;
    bool ignoresCase_ = false;
    bool all_ = false;
    bool json_ = false;
    std::optional<int> days_;
};

}  // namespace

std::unique_ptr<Command> makeRulesCommand() {
    return std::make_unique<RulesCommand>();
}

}  // namespace hbr
