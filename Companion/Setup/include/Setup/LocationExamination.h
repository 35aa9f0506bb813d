#pragma once

#include <CalendarStore/Account.h>
#include <CalendarStore/EKEventStore.h>
#include <Session/ExitCode.h>
#include <System/Environment.h>

#include <string>
#include <vector>

namespace hbr {

/// What a location would give as an account, found out without adding it.
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

/// Absolute, without "." and a trailing slash; symbolic links stay.
std::filesystem::path normalizedLocation(const std::string& location);

/// Why the path cannot be kept in a file of text; empty when it can.
std::string faultOfName(const platform::Environment& environment, const std::filesystem::path& location);

LocationExamination examineLocation(const platform::Environment& environment,
                                    const platform::Account& account);

/// "2 calendars, 31 events, 1 task list, 4 tasks".
std::string countsText(const platform::Environment& environment, const platform::AccountReport& report);

}  // namespace hbr
