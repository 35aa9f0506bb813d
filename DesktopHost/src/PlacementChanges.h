#pragma once

#include "WidgetCatalogue.h"

#include <DesktopHost/PlacementsFile.h>

#include <string>
#include <vector>

namespace hbr {

// What users do to the list of placed widgets.

PlacementsFile::Change addingWidget(WidgetCatalogue::Choice widget,
                                    platform::Corner corner = platform::Corner::topEnd,
                                    std::string output = {});
/// Those that are not placed yet in that family.
PlacementsFile::Change addingMissingWidgets(std::vector<WidgetCatalogue::Choice> widgets);
/// The one that was added last, if there is one.
PlacementsFile::Change removingLastWidget(WidgetCatalogue::Choice widget);

}  // namespace hbr
