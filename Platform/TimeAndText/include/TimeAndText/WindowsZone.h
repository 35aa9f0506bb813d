#pragma once

#include <TimeAndText/TimeZone.h>

#include <filesystem>
#include <optional>
#include <string_view>

namespace platform {

/// The zone below `directory` that Windows calls by this name, for the world as a whole: "W. Europe Standard
/// Time" → "Europe/Berlin". Some servers write such names as TZID. Letter case ignored; nothing for any other
/// name. Safe from any thread.
std::optional<TimeZone> zoneOfWindowsName(std::string_view name, const std::filesystem::path& directory);

}  // namespace platform
