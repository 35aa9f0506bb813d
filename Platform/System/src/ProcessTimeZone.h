#pragma once

#include <System/Diagnostics.h>
#include <TimeAndText/TimeZone.h>

#include <filesystem>
#include <optional>
#include <string>

namespace platform {

/// The zone that TZ names (":Europe/Berlin", a path, a POSIX rule), else the one `localtime` links to below a
/// folder "zoneinfo", else the zone file `localtime` itself, else UTC with a diagnostic. An empty TZ means
/// UTC.
TimeZone processTimeZone(const std::optional<std::string>& tz, const std::filesystem::path& zoneInfo,
                         const std::filesystem::path& localtime, DiagnosticsSink& diagnostics);

}  // namespace platform
