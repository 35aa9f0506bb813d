#pragma once

#include <CalendarStore/Account.h>
#include <CalendarStore/EKEventStore.h>
#include <Session/ExitCode.h>
#include <System/Environment.h>

#include <string>
#include <vector>

namespace hbr {

/// What a location contains as an account, examined without adding it.
struct LocationExamination {
    platform::AccountReport report;
    std::vector<platform::Diagnostic> diagnostics;
    /// Why it cannot be an account; empty when it can.
    std::string refusal;
    ExitCode refusalCode = ExitCode::done;

    std::size_t eventCount() const;
    std::size_t reminderCount() const;
    /// Items and files that were skipped.
    std::size_t skippedCount() const;
};

/// Absolute, without "." and trailing slash; symbolic links are kept.
std::filesystem::path normalizedLocation(const std::string& location);

/// Why the path cannot be stored in accounts.toml; empty when it can.
std::string faultOfName(const platform::Environment& environment, const std::filesystem::path& location);

LocationExamination examineLocation(const platform::Environment& environment,
                                    const platform::Account& account);

/// "2 calendars, 31 events, 1 task list, 4 tasks".
std::string countsText(const platform::Environment& environment, const platform::AccountReport& report);

}  // namespace hbr
