#pragma once

#include "ScannedItem.h"
#include "ZonePool.h"

#include <System/Diagnostics.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace platform {

/// What one calendar file holds, in the file's order.
struct ScannedFile {
    std::filesystem::path path;
    std::vector<ScannedItem> items;
    std::vector<ZoneDefinitionRef> zones;
    /// X-WR-CALNAME or NAME.
    std::optional<std::string> calendarName;
    /// X-APPLE-CALENDAR-COLOR, else COLOR, as written.
    std::optional<std::string> color;
};

/// Finds the items of a file's bytes without looking at their texts. Bad items are left out alone, each with
/// a diagnostic that names file, line and reason. Zone definitions are those of the pool.
ScannedFile scanItems(std::filesystem::path path, std::string bytes, DiagnosticsSink& diagnostics,
                      ZonePool& zones);

}  // namespace platform
