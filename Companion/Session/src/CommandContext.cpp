#include <Session/CommandContext.h>

#include <Words/CompanionText.h>

namespace hbr {

CoreServices& CommandContext::core() {
    if (!core_) core_ = std::make_unique<CoreServices>(environment_, coreOptions_);
    return *core_;
}

CompanionRecords& CommandContext::records() {
    if (!records_) records_ = std::make_unique<CompanionRecords>(*environment_);
    return *records_;
}

void CommandContext::requireReadableAccounts() {
    const auto reports = core().aggregatedEventStore().report();
    if (reports.empty() && core().aggregatedEventStore().hasDelegatedAccounts()) {
        throw CommandFailure(ExitCode::nothingThere, companionText(*environment_, "Accounts.onlyDelegated"));
    }
    if (reports.empty()) {
        throw CommandFailure(ExitCode::nothingThere, companionText(*environment_, "Accounts.none"));
    }
    std::string problems;
    for (const auto& report : reports) {
        if (report.readable) return;
        problems += (problems.empty() ? "" : "; ") + report.account.name + ": " + report.problem;
    }
    throw CommandFailure(ExitCode::failed, companionText(*environment_, "Accounts.unreadable", {problems}));
}

}  // namespace hbr
