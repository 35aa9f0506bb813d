#include "LocationExamination.h"

#include "Console.h"
#include "TemporaryFolder.h"

#include <Foundation/Files.h>
#include <Foundation/Text.h>
#include <Foundation/TextDecoding.h>

#include <algorithm>

namespace hbr {

namespace {

/// Why the file is no calendar; empty when it is one, if an empty one.
std::string faultOf(const std::filesystem::path& file) {
    std::error_code error;
    const auto content = platform::readRegularFile(file, error);
    if (!content) return error.message();
    const bool isCalendar = platform::lowercased(*content).find("begin:vcalendar") != std::string::npos;
    return isCalendar ? "" : "not an iCalendar file (it has no BEGIN:VCALENDAR)";
}

LocationExamination refused(ExitCode code, std::string reason) {
    LocationExamination result;
    result.refusal = std::move(reason);
    result.refusalCode = code;
    return result;
}

}  // namespace

std::size_t LocationExamination::eventCount() const {
    std::size_t count = 0;
    for (const auto& collection : report.collections)
        count += collection.eventCount;
    return count;
}

std::size_t LocationExamination::reminderCount() const {
    std::size_t count = 0;
    for (const auto& collection : report.collections)
        count += collection.reminderCount;
    return count;
}

std::size_t LocationExamination::skippedCount() const {
    return static_cast<std::size_t>(
        std::count_if(diagnostics.begin(), diagnostics.end(),
                      [](const auto& one) { return one.severity != platform::Diagnostic::Severity::info; }));
}

std::filesystem::path normalizedLocation(const std::string& location) {
    auto path = std::filesystem::absolute(location).lexically_normal();
    return path.has_filename() || !path.has_relative_path() ? path : path.parent_path();
}

std::string faultOfName(const std::filesystem::path& location) {
    if (platform::isWellFormedUtf8(location.native())) return {};
    return onOneLine(location.native()) +
           ": the name is not valid UTF-8, so it cannot be kept in accounts.toml; rename it, or add a "
           "symbolic link to it";
}

LocationExamination examineLocation(const platform::Environment& environment,
                                    const platform::Account& account) {
    if (auto fault = faultOfName(account.location); !fault.empty())
        return refused(ExitCode::failed, std::move(fault));
    const std::string& name = account.location.native();
    std::error_code error;
    const auto status = std::filesystem::status(account.location, error);
    if (status.type() == std::filesystem::file_type::not_found) {
        return refused(ExitCode::failed, name + ": no such file or folder");
    }
    if (status.type() == std::filesystem::file_type::none)
        return refused(ExitCode::failed, name + ": " + error.message());
    const bool isFolder = std::filesystem::is_directory(status);
    if (!isFolder && !std::filesystem::is_regular_file(status)) {
        return refused(ExitCode::failed, name + ": neither a file nor a folder");
    }

    const TemporaryFolder folder;
    const auto diagnostics = std::make_shared<platform::CollectedDiagnostics>();
    auto trial = std::make_shared<platform::Environment>(environment);
    trial->configDirectory = folder.path();
    trial->cacheDirectory = folder.path() / "cache";
    trial->diagnostics = diagnostics;
    platform::Account alone = account;
    alone.isDelegate = false;
    platform::AccountsFile(trial).update(
        [&](std::vector<platform::Account>& accounts) { accounts = {alone}; });
    platform::NotificationCenter center;
    const platform::EKEventStore store(trial, center);

    LocationExamination result;
    const auto reports = store.report();
    if (!reports.empty()) result.report = reports.front();
    result.diagnostics = diagnostics->all();
    const bool hasFiles = std::any_of(result.report.collections.begin(), result.report.collections.end(),
                                      [](const auto& collection) { return collection.files > 0; });
    if (!isFolder && result.eventCount() + result.reminderCount() == 0) {
        const std::string fault = faultOf(account.location);
        if (!fault.empty()) return refused(ExitCode::failed, name + ": " + fault);
    }
    if (!result.report.readable) {
        const std::string& problem = result.report.problem;
        return refused(ExitCode::failed, name + ": " + (problem.empty() ? "cannot be read" : problem));
    }
    if (isFolder && !hasFiles) {
        return refused(ExitCode::nothingThere, name + ": no .ics files in this folder or its subfolders");
    }
    return result;
}

std::string counted(std::size_t count, const std::string& noun) {
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

std::string countsText(const platform::AccountReport& report) {
    std::size_t calendars = 0;
    std::size_t lists = 0;
    std::size_t events = 0;
    std::size_t reminders = 0;
    for (const auto& collection : report.collections) {
        if (collection.events) ++calendars;
        if (collection.reminders) ++lists;
        events += collection.eventCount;
        reminders += collection.reminderCount;
    }
    std::string text = counted(calendars, "calendar") + ", " + counted(events, "event");
    if (lists > 0) text += ", " + counted(lists, "task list") + ", " + counted(reminders, "task");
    return text;
}

}  // namespace hbr
