#include "Agenda/AgendaText.h"
#include "Framework/Command.h"

#include <Session/CommandContext.h>
#include <Setup/CollectionChoices.h>
#include <Words/CompanionText.h>
#include <CLI/App.hpp>

#include <HbrCore/Events/EventJson.h>
#include <algorithm>

namespace hbr {

namespace {

/// Lists current and upcoming events, as in the widgets.
class AgendaCommand final : public Command {
  public:
    std::string_view name() const override { return "agenda"; }
    std::string_view group() const override { return commandGroup::everyDay; }
    std::string_view summary() const override { return "What is under way and what comes next"; }
    std::string_view examples() const override {
        return "  heedbanner agenda             as many days as the settings say\n"
               "  heedbanner agenda --days 0    the rest of today\n"
               "  heedbanner agenda --json      for other programs";
    }

    void declare(CLI::App& app) override {
        constexpr SettingKind days = SettingsTable::upcomingEventsDaysFilter.kind;
        app.add_option("--days", days_, "Up to the end of the day that many days after today")
            ->type_name("N")
            ->check(CLI::Range(days.first, days.last));
        app.add_flag("--ids", ids_, "Show the id of each event");
        app.add_flag("--json", json_, "As JSON");
    }

    ExitCode run(CommandContext& context) override {
        context.requireReadableAccounts();
        const auto agenda = agendaEvents(context, days_);
        const Console& console = context.console();
        if (json_) {
            console.out() << json(agenda) << "\n";
        } else if (agenda.empty()) {
            console.err() << companionText(*context.environment(), "Agenda.empty") << "\n";
        } else {
            console.out() << agendaText(context, agenda, ids_);
        }
        console.out().flush();
        reportWhatIsNew(context);
        return ExitCode::done;
    }

  private:
    static std::string json(const std::vector<AgendaEvent>& agenda) {
        auto array = platform::JsonValue::array();
        for (const auto& one : agenda) {
            auto object = platform::JsonValue::object();
            object.set("state", rawValue(one.state));
            const platform::JsonValue event = eventJson(*one.event);
            for (const auto& [key, value] : *event.asObject())
                object.set(key, value);
            array.append(std::move(object));
        }
        return writeJson(array, 2);
    }

    static void reportWhatIsNew(CommandContext& context) {
        reportWhatIsNew(context, platform::EKEntityType::event, "Agenda.newCalendars");
        reportWhatIsNew(context, platform::EKEntityType::reminder, "Agenda.newTaskLists");
    }

    static void reportWhatIsNew(CommandContext& context, platform::EKEntityType type, std::string_view key) {
        const auto choices = collectionChoices(context, type);
        const std::int64_t count = std::ranges::count_if(choices, &CollectionChoice::isNew);
        if (count > 0) context.addRemark(companionText(*context.environment(), key, {count}));
    }

    std::optional<int> days_;
    bool ids_ = false;
    bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> makeAgendaCommand() {
    return std::make_unique<AgendaCommand>();
}

}  // namespace hbr
