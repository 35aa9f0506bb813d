#pragma once

#include "HostCommandLine.h"
#include "WidgetCatalogue.h"

#include <DesktopHost/PlacementsFile.h>

#include <ostream>

namespace hbr {

// The commands that work on the file of placements; a running host sees their changes there. Each throws
// HostFailure.

void listWidgets(const PlacementsFile& file, bool wantsJson, std::ostream& out);
void addWidget(const PlacementsFile& file, const WidgetCatalogue& catalogue, const HostRequest& request);
void removeWidgets(const PlacementsFile& file, const std::string& which);
/// Adds those that are not placed yet in that family.
void placeMissing(const PlacementsFile& file, const std::vector<WidgetCatalogue::Choice>& widgets);

}  // namespace hbr
