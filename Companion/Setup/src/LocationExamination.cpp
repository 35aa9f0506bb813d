#include <Setup/LocationExamination.h>

#include <CalendarStore/LocationSources.h>
#include <System/Files.h>
#include <TimeAndText/Text.h>
#include <Words/CompanionText.h>
#include <Words/OneLine.h>

#include <algorithm>

namespace hbr {

namespace {

/// Why the file is not a calendar; empty when it is one, even without items.
std::string faultOf(const platform::Environment& environment, const std::filesystem::path& file) {
    std::error_code error;
    const auto content = platform::readRegularFile(file, error);
    if (!content) return error.message();
    const bool isCalendar = platform::lowercased(*content).find("begin:vcalendar") != std::string::npos;
    return isCalendar ? "" : companionText(environment, "Location.noCalendar");
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

std::string faultOfName(const platform::Environment& environment, const std::filesystem::path& location) {
    if (platform::isWellFormedUtf8(location.native())) return {};
    return onOneLine(location.native()) + ": " + companionText(environment, "Location.notUtf8");
}

LocationExamination examineLocation(const platform::Environment& environment,
                                    const platform::Account& account) {
    if (auto fault = faultOfName(environment, account.location); !fault.empty())
        return refused(ExitCode::failed, std::move(fault));
    const std::string& name = account.location.native();
    std::error_code error;
    const auto status = std::filesystem::status(account.location, error);
    if (status.type() == std::filesystem::file_type::not_found) {
        return refused(ExitCode::failed, name + ": " + companionText(environment, "Location.missing"));
    }
    if (status.type() == std::filesystem::file_type::none)
        return refused(ExitCode::failed, name + ": " + error.message());
    const bool isFolder = std::filesystem::is_directory(status);
    if (!isFolder && !std::filesystem::is_regular_file(status)) {
        return refused(ExitCode::failed, name + ": " + companionText(environment, "Location.neither"));
    }

    const auto diagnostics = std::make_shared<platform::CollectedDiagnostics>();
    auto trial = std::make_shared<platform::Environment>(environment);
    trial->diagnostics = diagnostics;
    platform::Account alone = account;
    alone.isDelegate = false;
    platform::NotificationCenter center;
    const platform::EKEventStore store(
        trial, center, std::make_shared<platform::LocationSources>(std::vector{alone}, diagnostics));

    LocationExamination result;
    const auto reports = store.report();
    if (!reports.empty()) result.report = reports.front();
    result.diagnostics = diagnostics->all();
    const bool hasFiles = std::any_of(result.report.collections.begin(), result.report.collections.end(),
                                      [](const auto& collection) { return collection.files > 0; });
    if (!isFolder && result.eventCount() + result.reminderCount() == 0) {
        const std::string fault = faultOf(environment, account.location);
        if (!fault.empty()) return refused(ExitCode::failed, name + ": " + fault);
    }
    if (!result.report.readable) {
        const std::string& problem = result.report.problem;
        return refused(
            ExitCode::failed,
            name + ": " + (problem.empty() ? companionText(environment, "Location.unreadable") : problem));
    }
    if (isFolder && !hasFiles) {
        return refused(ExitCode::nothingThere, name + ": " + companionText(environment, "Location.noFiles"));
    }
    return result;
}

std::string countsText(const platform::Environment& environment, const platform::AccountReport& report) {
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
    const auto counted = [&](const char* key, std::size_t count) {
        return companionCount(environment, key, count);
    };
    std::string text = counted("Count.calendars", calendars) + ", " + counted("Count.events", events);
    if (lists > 0)
        text += ", " + counted("Count.taskLists", lists) + ", " + counted("Count.tasks", reminders);
    return text;
}

}  // namespace hbr
