#pragma once

#include "Series.h"

#include <System/Diagnostics.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace platform {

/// The items of one kind in a collection's files, put together by their UIDs. Of items that are the
/// same thing the one with the higher SEQUENCE, then the later change, then the later file name wins.
/// `former`: those of the same collection before a change, made with the same zones; one whose items are all
/// the same objects is taken over, without reporting again what was reported of them.
using SeriesList = std::vector<std::shared_ptr<const Series>>;
SeriesList buildSeries(const std::vector<std::shared_ptr<const ScannedFile>>& files, ScannedItem::Kind kind,
                       const std::string& calendarIdentifier, const TimeZone& userZone,
                       const std::filesystem::path& zoneInfoDirectory, DiagnosticsSink& diagnostics,
                       const SeriesList& former = {});

}  // namespace platform
