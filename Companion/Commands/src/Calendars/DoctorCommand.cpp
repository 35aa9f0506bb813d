#include "Calendars/AccountJson.h"
#include "Framework/Command.h"
#include "Framework/ProgramDiagnostics.h"
#include "Settings/SettingCatalogue.h"

#include <Session/CommandContext.h>
#include <Setup/CollectionChoices.h>
#include <Setup/LocationExamination.h>
#include <System/MainQueue.h>
#include <Values/JsonText.h>
#include <Words/CompanionText.h>
#include <Words/OneLine.h>
#include <CLI/App.hpp>

#include <HbrCore/ConferenceLinks/ConferenceServicesFile.h>
#include <algorithm>
#include <atomic>

namespace hbr {

namespace {

platform::JsonValue findingJson(const platform::Diagnostic& finding) {
    auto object = platform::JsonValue::object();
    object.set("severity", severityName(finding.severity));
    if (!finding.file.empty()) object.set("file", finding.file.string());
    object.setIfPresent("line", finding.line);
    if (!finding.field.empty()) object.set("field", finding.field);
    object.set("reason", finding.text);
    return object;
}

bool isFault(const platform::Diagnostic& finding) {
    return finding.severity != platform::Diagnostic::Severity::info;
}

/// What was read, what was skipped and why.
class DoctorCommand final : public Command {
  public:
    std::string_view name() const override { return "doctor"; }
    std::string_view group() const override { return commandGroup::trouble; }
    std::string_view summary() const override { return "What was read, what was skipped, and why"; }
    std::string_view examples() const override {
        return "  heedbanner doctor            accounts, then everything that was found wrong\n"
               "  heedbanner doctor --json\n"
               "  heedbanner doctor || echo \"something is wrong\"";
    }

    void declare(CLI::App& app) override { app.add_flag("--json", json_, "As JSON"); }

    ExitCode run(CommandContext& context) override {
        CoreServices& core = context.core();
        readEverything(context);
        core.contactCards().examinePictures();
        const auto reports = core.aggregatedEventStore().report();
        const auto unreadable = unreadableSettings(core.settings(), *context.environment());
        for (const auto& diagnostic : unreadable)
            context.environment()->diagnostics->report(diagnostic);
        if (const auto missing = missingServices(context))
            context.environment()->diagnostics->report(*missing);
        const auto fresh = newCollections(context);
        const auto findings =
            std::static_pointer_cast<ProgramDiagnostics>(context.environment()->diagnostics)->all();

        json_ ? writeAsJson(context, reports, findings, fresh)
              : writeAsText(context, reports, findings, fresh);
        const bool isWrong =
            std::ranges::any_of(findings, &isFault) ||
            std::any_of(reports.begin(), reports.end(), [](const auto& one) { return !one.readable; });
        return isWrong ? ExitCode::failed : ExitCode::done;
    }

  private:
    /// Items are parsed when a query touches them; two years around now cover what matters.
    static void readEverything(CommandContext& context) {
        const AggregatedEventStore& store = context.core().aggregatedEventStore();
        const platform::Calendar& calendar = context.environment()->calendar;
        const platform::Date from = calendar.addingDays(context.now(), -366);
        const platform::Date to = calendar.addingDays(context.now(), 366);
        store.events(from, to);
        // Shared with the completion handler, which outlives this call after a timeout.
        const auto isDone = std::make_shared<std::atomic<bool>>(false);
        store.reminders(from, to, [isDone](const auto&) {
            platform::MainQueue::shared().async([isDone] { isDone->store(true); });
        });
        constexpr double patience = 60;
        platform::MainQueue::shared().runUntil([&] { return isDone->load(); }, patience);
    }

    /// The user's copy is never replaced, so services of an update must be mentioned. A note only, because
    /// the user may have removed them.
    static std::optional<platform::Diagnostic> missingServices(CommandContext& context) {
        const auto missing = servicesMissingFromCopy(*context.environment());
        if (missing.empty()) return std::nullopt;
        std::string names;
        constexpr std::size_t mostNamed = 8;
        for (std::size_t i = 0; i < missing.size() && i < mostNamed; ++i)
            names += (i > 0 ? ", " : "") + missing[i].id;
        if (missing.size() > mostNamed) names += ", …";
        const auto file = context.environment()->dataDirectory / servicesFileName;
        return platform::Diagnostic{
            platform::Diagnostic::Severity::info, file, std::nullopt, "",
            std::to_string(missing.size()) + " conference " + (missing.size() == 1 ? "service" : "services") +
                " of the shipped list " + (missing.size() == 1 ? "is" : "are") + " not in this copy: " +
                names + "; to get the whole shipped list, move this file away; it is then copied again"};
    }

    static std::vector<CollectionChoice> newCollections(CommandContext& context) {
        std::vector<CollectionChoice> fresh;
        for (const auto type : {platform::EKEntityType::event, platform::EKEntityType::reminder}) {
            for (const auto& choice : collectionChoices(context, type)) {
                if (choice.isNew) fresh.push_back(choice);
            }
        }
        return fresh;
    }

    static void writeAsJson(CommandContext& context, const std::vector<platform::AccountReport>& reports,
                            const std::vector<platform::Diagnostic>& findings,
                            const std::vector<CollectionChoice>& fresh) {
        auto accounts = platform::JsonValue::array();
        for (const auto& report : reports)
            accounts.append(accountJson(report));
        auto list = platform::JsonValue::array();
        for (const auto& finding : findings)
            list.append(findingJson(finding));
        auto unwatched = platform::JsonValue::array();
        for (const auto& choice : fresh)
            unwatched.append(choice.qualifiedName());
        auto answer = platform::JsonValue::object();
        answer.set("accounts", std::move(accounts)).set("findings", std::move(list));
        answer.set("new", std::move(unwatched));
        answer.set("contacts", contactsJson(context.core().contactCards().report()));
        context.console().out() << writeJson(answer, 2) << "\n";
    }

    static void writeAsText(CommandContext& context, const std::vector<platform::AccountReport>& reports,
                            const std::vector<platform::Diagnostic>& findings,
                            const std::vector<CollectionChoice>& fresh) {
        const Console& console = context.console();
        const platform::Environment& environment = *context.environment();
        std::ostream& out = console.out();
        if (reports.empty()) out << companionText(environment, "Doctor.noAccounts") << "\n";
        for (const auto& report : reports) {
            out << console.bold(onOneLine(report.account.name)) << "  "
                << onOneLine(report.account.location.string()) << "\n";
            if (!report.readable) {
                out << "  "
                    << companionText(environment, "Accounts.cannotBeRead", {onOneLine(report.problem)})
                    << "\n";
                continue;
            }
            for (const auto& collection : report.collections)
                out << "  " << collectionLine(environment, collection) << "\n";
        }
        for (const auto& report : context.core().contactCards().report()) {
            out << console.bold(onOneLine(report.source.name)) << "  "
                << onOneLine(report.source.location.string()) << "\n  "
                << (report.readable
                        ? companionCount(environment, "Count.contacts", report.cards)
                        : companionText(environment, "Accounts.cannotBeRead", {onOneLine(report.problem)}))
                << "\n";
        }
        for (const auto& choice : fresh) {
            out << companionText(environment, "Doctor.new", {onOneLine(choice.qualifiedName())}) << "\n";
        }
        if (!findings.empty()) out << "\n";
        for (const auto& finding : findings) {
            out << companionText(environment,
                                 "Doctor.severity." + std::string(severityName(finding.severity)))
                << ": " << onOneLine(describe(finding)) << "\n";
        }
        const bool isWhole = std::ranges::none_of(findings, &isFault);
        if (isWhole && !reports.empty()) out << companionText(environment, "Doctor.nothingSkipped") << "\n";
    }

    static std::string collectionLine(const platform::Environment& environment,
                                      const platform::CollectionReport& collection) {
        const auto& titled = collection.events ? collection.events : collection.reminders;
        return onOneLine(titled ? titled->title : collection.location.filename().string()) + ": " +
               companionCount(environment, "Count.files", collection.files) + ", " +
               companionCount(environment, "Count.events", collection.eventCount) + ", " +
               companionCount(environment, "Count.tasks", collection.reminderCount);
    }

    bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> makeDoctorCommand() {
    return std::make_unique<DoctorCommand>();
}

}  // namespace hbr
