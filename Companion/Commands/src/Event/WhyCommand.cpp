#include "Event/EventChoice.h"
#include "Event/EventExplanations.h"
#include "Event/ExplanationText.h"
#include "Framework/Command.h"

#include <Session/CommandContext.h>
#include <When/MomentText.h>
#include <Words/CompanionText.h>
#include <Words/EventMatch.h>
#include <Words/OneLine.h>
#include <Words/ReasonText.h>
#include <CLI/App.hpp>

#include <algorithm>

namespace hbr {

namespace {

/// Why something is not shown, and what would change that.
class WhyCommand final : public Command {
  public:
    std::string_view name() const override { return "why"; }
    std::string_view group() const override { return commandGroup::trouble; }
    std::string_view summary() const override {
        return "Why an event is not shown, and the command that changes it";
    }
    std::string_view examples() const override {
        return "  heedbanner why                      all of today that is not shown\n"
               "  heedbanner why \"design review\"      rule by rule, for one event\n"
               "  heedbanner why --day 2026-03-09     all of that day";
    }

    void declare(CLI::App& app) override {
        app.add_option("EVENT", wanted_, eventArgumentMeaning)->type_name("");
        app.add_option("--day", day_,
                       "A day (2026-03-04, today, tomorrow): all of it, or an event's occurrence")
            ->type_name("DATE");
        app.add_flag("--json", json_, "As JSON");
    }

    ExitCode run(CommandContext& context) override {
        const platform::Calendar& calendar = context.environment()->calendar;
        std::optional<platform::Date> day;
        if (day_) {
            const auto moment = momentOf(*day_, calendar, context.now());
            if (!moment) {
                throw CommandFailure(ExitCode::wrongUsage,
                                     companionText(*context.environment(), "Why.noDay", {*day_}));
            }
            day = calendar.startOfDay(*moment);
        }
        context.requireReadableAccounts();
        if (wanted_.empty()) {
            explainDay(context, day.value_or(calendar.startOfDay(context.now())));
        } else {
            const auto explanation = chosenExplanation(context, wanted_, day);
            if (json_) {
                context.console().out() << writeJson(json(context, explanation), 2) << "\n";
            } else {
                context.console().out() << explanationText(context, explanation);
            }
        }
        return ExitCode::done;
    }

  private:
    static platform::JsonValue json(CommandContext& context, const EventExplanation& explanation) {
        return explanationJson(explanation, [&](const Reason& reason) {
            return englishReasonText(reason, context.core().formatters(), context.now());
        });
    }

    void explainDay(CommandContext& context, platform::Date day) const {
        const Console& console = context.console();
        const DayExplanations explained = dayExplanations(context, day);
        if (json_) {
            auto array = platform::JsonValue::array();
            for (const auto& one : explained.notShown)
                array.append(json(context, one));
            console.out() << writeJson(array, 2) << "\n";
            return;
        }
        const std::string heading = explained.heading(context, day);
        if (explained.notShown.empty()) {
            console.err() << heading << "\n";
        } else {
            console.out() << console.bold(heading) << "\n" << explanationsText(context, explained.notShown);
        }
        console.out().flush();
        for (const auto& account : explained.delegatedAccounts) {
            console.err() << companionText(*context.environment(), "Why.delegatedAccount",
                                           {onOneLine(account)})
                          << "\n";
        }
    }

    std::string wanted_;
    std::optional<std::string> day_;
    bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> makeWhyCommand() {
    return std::make_unique<WhyCommand>();
}

}  // namespace hbr
